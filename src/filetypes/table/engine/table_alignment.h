#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "core/sides.h"
#include "filetypes/table/engine/table_columns.h"
#include "filetypes/table/engine/table_compare.h"
#include "filetypes/table/engine/table_text.h"

#include <QList>

#include <vector>

namespace velmora {

/// What a comparison of tables goes by.
struct TableOptions {
    bool hasHeader = true;
    bool columnsByName = false; ///< with a header: cells are compared in columns of the same name
    QList<qint32> keys = {};    ///< columns of the result; with none that there is, rows are aligned in their order
};

/// One row of a result. Indices as in `TableRowDiff`.
struct AlignedTableRow {
    qint32 left = -1;
    qint32 right = -1;
    TableRowStatus status = TableRowStatus::Same;

    [[nodiscard]] qint32 row(Side side) const noexcept { return side == Side::Left ? left : right; }

    friend bool operator==(const AlignedTableRow &, const AlignedTableRow &) = default;
};

struct TableCounts {
    qint64 same = 0;
    qint64 modified = 0;
    qint64 leftOnly = 0;
    qint64 rightOnly = 0;

    [[nodiscard]] qint64 differences() const noexcept { return modified + leftOnly + rightOnly; }
};

/// The rows of two tables side by side; the values stay in the tables.
struct TableAlignment {
    Sides<TableText> tables;
    TableColumns columns;
    std::vector<AlignedTableRow> rows; ///< in display order
    TableCounts counts;
    /// The rows of each table that are not in the result, since a later one has the same key, in rising order.
    Sides<std::vector<qint32>> replaced;
};

/// What the phases of the progress of `alignTables` count.
enum TablePhase { ReadingRows = 0, MatchingRows = 1, ComparingRows = 2 };

/// Compares two tables as `compareTables` does, row for row the same, without a string for each cell: about linear in
/// the bytes, and 12 bytes for a row of the result. The rows are not all there when `cancel` is set. Precondition: both
/// were cut at the same delimiter.
[[nodiscard]] TableAlignment alignTables(const TableText &left, const TableText &right, const TableOptions &options,
                                         const CancelFlag &cancel, Progress &progress);

/// Walks over the cells of one row of a result, column by column.
class CellCursor {
public:
    /// `alignment` outlives the cursor, which stands before the first column.
    CellCursor(const TableAlignment &alignment, const AlignedTableRow &row);

    /// Moves on; false behind the last column of the result.
    bool next();
    [[nodiscard]] TableCellStatus status() const noexcept { return m_status; }
    /// What the cell of a side means; empty where there is none. Valid until the next step.
    [[nodiscard]] std::string_view value(Side side);
    /// The same as it stands in the table (see `fieldValue`); valid as long as the table.
    [[nodiscard]] std::string_view field(Side side) const noexcept { return m_fields[side]; }

private:
    void step();

    const TableColumns &m_columns;
    FieldCursor m_left;
    FieldCursor m_right;
    std::vector<std::string_view> m_rightFields; ///< by column, where columns are paired by name
    qint32 m_column = -1;
    Sides<std::string_view> m_fields;
    TableRowStatus m_row;
    TableCellStatus m_status = TableCellStatus::Same;
    Sides<std::string> m_buffers;
};

/// The result with a string for each cell.
[[nodiscard]] TableDiffResult withCells(const TableAlignment &alignment);

} // namespace velmora
