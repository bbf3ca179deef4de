#pragma once

#include "filetypes/table/engine/table_compare.h"

#include <QColor>

namespace velmora {

/// What is behind a cell of a table comparison.
enum class TableColour : quint8 {
    Same,
    ChangedCell,
    ChangedRow, ///< a cell that is the same in a row that is not
    LeftOnly,
    RightOnly,
    Absent, ///< the other side of a row that only one has
};

/// The colour in the light or the dark theme. Every text is readable on each of them; signs beside the rows and marks
/// in the cells say the same.
[[nodiscard]] QColor tableColour(TableColour colour, bool dark);
/// The colour in the theme that the application wears.
[[nodiscard]] QColor tableColour(TableColour colour);

/// What is behind a cell of this status, on a side that has the row or not.
[[nodiscard]] TableColour tableColourOf(TableRowStatus row, TableCellStatus cell, bool isPresent);

} // namespace velmora
