#pragma once

#include "core/rows_view.h"
#include "filetypes/table/table_document.h"

#include <QObject>

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velmora {

/// What both grids of a table comparison show: the result, which of its rows, and their cells, cut when they are first
/// asked for.
///
/// A row or column is one of the result; a place is where it stands among those that are shown.
class TableScene final : public QObject {
    Q_OBJECT
public:
    /// More columns than anyone looks at are not shown: a header remembers something of each.
    static constexpr qint32 columnLimit = 4096;

    using QObject::QObject;

    /// `arrangement` is one of its columns.
    void setDocument(std::shared_ptr<const TableDocument> document, ColumnArrangement arrangement);
    /// Null before the first result.
    [[nodiscard]] const std::shared_ptr<const TableDocument> &document() const noexcept { return m_document; }

    void setFilter(RowsView filter);
    [[nodiscard]] RowsView filter() const noexcept { return m_filter; }

    [[nodiscard]] qint32 placeCount() const noexcept;
    /// As many columns as can be shown, hidden ones among them.
    [[nodiscard]] qint32 columnCount() const noexcept;
    void setArrangement(ColumnArrangement arrangement);
    [[nodiscard]] const ColumnArrangement &arrangement() const noexcept { return m_arrangement; }
    [[nodiscard]] qint32 columnPlaces() const noexcept { return qint32(m_arrangement.shown.size()); }
    [[nodiscard]] qint32 columnAt(qint32 place) const noexcept { return m_arrangement.shown[std::size_t(place)]; }
    /// -1 for a column that is hidden.
    [[nodiscard]] qint32 placeOfColumn(qint32 column) const noexcept;
    [[nodiscard]] qint32 rowAt(qint32 place) const noexcept;
    /// -1 for a row that the filter hides.
    [[nodiscard]] qint32 placeOf(qint32 row) const noexcept;
    [[nodiscard]] const AlignedTableRow &row(qint32 row) const { return m_document->alignment.rows[std::size_t(row)]; }

    struct Cell {
        TableCellStatus status = TableCellStatus::Same;
        Sides<std::string_view> fields; ///< as they stand in the tables, see `fieldValue`
    };
    /// One for each of `columnCount`. Valid until the next call.
    [[nodiscard]] const std::vector<Cell> &cells(qint32 row);

Q_SIGNALS:
    void aboutToChange();
    void changed();

private:
    /// The rows that are shown; null for all.
    [[nodiscard]] const std::vector<qint32> *filtered() const noexcept;

    std::shared_ptr<const TableDocument> m_document;
    ColumnArrangement m_arrangement;
    RowsView m_filter = RowsView::All;
    std::unordered_map<qint32, std::vector<Cell>> m_cells;
    std::size_t m_cellsKept = 0;
};

} // namespace velmora
