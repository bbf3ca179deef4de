#pragma once

#include "core/sides.h"
#include "filetypes/table/engine/field_cursor.h"
#include "filetypes/table/engine/table_alignment.h"
#include "filetypes/table/engine/table_compare.h"

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

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

    [[nodiscard]] TableCellStatus statusOfPair();

    const TableAlignment &m_alignment;
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
