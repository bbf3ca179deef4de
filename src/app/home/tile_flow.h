#pragma once

#include <QPoint>
#include <QSize>

namespace velmora {

/// How tiles of one size flow into rows: the geometry without the widgets. All lengths in device-independent pixels.
struct TileFlow {
    int width = 0; ///< what the flow may take; 0 when that is not known yet
    QSize tile{88, 96};
    QSize spacing{10, 10};
    int fixedColumns = 0; ///< 0 for as many as the width holds
    bool centred = false; ///< centre each row by itself

    /// Between 1 and 12, unless fixed.
    [[nodiscard]] int columns(int tiles) const;
    [[nodiscard]] int rows(int tiles) const;
    /// The top left corner of tile `index` of `tiles`.
    [[nodiscard]] QPoint position(int index, int tiles) const;
    /// The width of a full row and the height of all rows; nothing without tiles.
    [[nodiscard]] QSize extent(int tiles) const;
};

} // namespace velmora
