#pragma once

#include "core/rows_view.h"
#include "core/text_encoding.h"
#include "filetypes/table/column_choices.h"
#include "filetypes/table/engine/duplicate_keys.h"
#include "filetypes/table/engine/table_alignment.h"

#include <optional>

namespace velmora {

/// How the file of one side was read.
struct TableSource {
    TextEncoding encoding;
    bool encodingGuessed = false;
    qint64 undecodable = 0; ///< places shown as U+FFFD
    QString error;          ///< the system's own words, when the file could not be read and counts as empty
};

/// A comparison as it is shown. Made on a worker, then never changed.
struct TableDocument {
    TableAlignment alignment;
    std::vector<qint32> differences; ///< the rows of the result that differ, rising
    std::vector<qint32> same;        ///< the others
    Sides<TableSource> sources;
    QStringList keyNames;       ///< the fields of the first row that keys are chosen from; empty without header
    QList<ColumnRef> keys;      ///< what rows were paired by, none for their order
    bool hasLongerRows = false; ///< fields behind the last column are not compared
    QStringList missingKeys;    ///< names of columns that rows were to be paired by, and that are not there
    QChar delimiterProposal;    ///< one that fits these files, where the one that was chosen does not; null for none
    std::vector<DuplicateKey> duplicates = {}; ///< the first ones of each side
    std::vector<qint32> changedCells = {};     ///< in each column, of the rows that both sides have
    qint32 keyProposal = -1; ///< a column that would be a key, where rows were aligned in their order; -1 for none

    /// The rows of the result that a filter leaves; null for all.
    [[nodiscard]] const std::vector<qint32> *rowsOf(RowsView view) const noexcept
    {
        if (view == RowsView::All)
            return nullptr;
        return view == RowsView::Differences ? &differences : &same;
    }
};

} // namespace velmora
