#include "app/home/tile_frame.h"

#include "app/home/tile_button.h"
#include "session/theme.h"

#include <QPainter>

namespace velmora {

namespace {

constexpr int corner = 8;

double tintOf(const TileButton &tile, bool isDropTarget)
{
    if (tile.isDown())
        return 0.20;
    if (isDropTarget)
        return 0.16;
    return tile.underMouse() ? 0.08 : 0.0;
}

} // namespace

void paintTileFrame(QPainter &painter, const TileButton &tile, bool isDropTarget)
{
    const QPalette &palette = tile.palette();
    const QColor ink = palette.color(QPalette::WindowText);
    const QColor window = palette.color(QPalette::Window);
    const QColor accent = palette.color(QPalette::Highlight);
    const QColor resting = isDarkTheme() ? blended(ink, window, 0.05) : palette.color(QPalette::Base);
    const bool active = isDropTarget || tile.hasFocus() || tile.isPreferred();

    QPen frame(active || tile.underMouse() ? accent : blended(ink, window, 0.14));
    frame.setWidthF(active ? 2.0 : 1.0);
    if (isDropTarget)
        frame.setDashPattern({3.0, 2.0});
    const double inset = frame.widthF() / 2.0;

    painter.setOpacity(TileButton::opacity(tile));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(frame);
    painter.setBrush(blended(accent, resting, tintOf(tile, isDropTarget)));
    painter.drawRoundedRect(QRectF(tile.rect()).adjusted(inset, inset, -inset, -inset), corner, corner);
    painter.setPen(ink);
}

} // namespace velmora
