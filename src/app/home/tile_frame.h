#pragma once

class QPainter;

namespace velmora {

class TileButton;

/// Paints the rounded frame and the ground of a button on the home page as its state asks for: at rest, under the
/// mouse, pressed, with the focus, or with a drag above it. Leaves the painter with the pen for texts.
void paintTileFrame(QPainter &painter, const TileButton &tile, bool isDropTarget = false);

} // namespace velmora
