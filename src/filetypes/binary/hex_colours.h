#pragma once

#include <QColor>

namespace velmora {

/// The letters of bytes that differ, readable on every ground that they may stand on.
[[nodiscard]] QColor differingByteColour(bool dark);

/// The tick at the edge of a row that differs.
[[nodiscard]] QColor differingRowColour(bool dark);

} // namespace velmora
