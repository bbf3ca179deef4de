#pragma once

#include "core/rows_view.h"
#include "filetypes/table/table_document.h"
#include "session/pane/text_search.h"

#include <vector>

namespace velmora {

/// A cell in which a query was found, on either side.
struct CellMatch {
    qint32 row = 0; ///< of the result
    qint32 column = 0;

    friend bool operator==(const CellMatch &, const CellMatch &) = default;
};

/// Where is searched.
struct CellRange {
    RowsView rows = RowsView::All;
    std::vector<bool> columns; ///< whether a column is searched, by column; those behind are not
};

/// The cells of a result that a query is found in, row by row, no more than `TextMatches::most`. Usable from any
/// thread; incomplete when cancelled. An invalid or empty query finds nothing.
[[nodiscard]] std::vector<CellMatch> findCells(const TableDocument &document, const SearchQuery &query,
                                               const CellRange &range, const CancelFlag &cancel);

} // namespace velmora
