#include "filetypes/image/pixel_grid.h"

#include "session/translate.h"

#include <QPainter>

#include <algorithm>

namespace velmora {

namespace {

constexpr int cells = 15;
constexpr int margin = 6;

// The grid has one look in both themes: what is around a pixel changes how its colour is seen.
constexpr QColor background(250, 251, 253);
constexpr QColor ink(48, 52, 60);
constexpr QColor outside(230, 233, 239); // no pixel of the image
constexpr QColor gridLine(200, 206, 216);
constexpr QColor frame(170, 178, 190);
constexpr QColor centre(30, 70, 220);
constexpr QColor shadow(0, 0, 0, 20);

} // namespace

PixelGrid::PixelGrid(const QString &caption, QWidget *parent) : QWidget(parent), m_caption(caption)
{
    setMinimumSize(140, 140);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PixelGrid::setImage(const QImage &image)
{
    m_image = image;
    update();
}

void PixelGrid::setHovered(int x, int y)
{
    if (m_hovered == QPoint(x, y))
        return;
    m_hovered = {x, y};
    update();
}

void PixelGrid::setCellMode(CellMode mode)
{
    if (m_mode == mode)
        return;
    m_mode = mode;
    update();
}

QString PixelGrid::captionText() const
{
    if (m_image.isNull() || m_hovered.x() < 0 || m_hovered.y() < 0)
        return Velmora::tr("%1 (not hovering)").arg(m_caption);
    return Velmora::tr("%1  offset (%2, %3)").arg(m_caption).arg(m_hovered.x()).arg(m_hovered.y());
}

void PixelGrid::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), background);
    QFont small = font();
    small.setPointSize(std::max(font().pointSize() - 1, 8));
    painter.setFont(small);
    painter.setPen(ink);
    const int lineHeight = painter.fontMetrics().height();
    const QRect caption(margin, margin / 2, width() - 2 * margin, lineHeight);
    painter.drawText(caption, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(captionText(), Qt::ElideRight, caption.width()));
    paintCells(painter, rect().adjusted(margin, lineHeight + margin, -margin, -margin));
}

void PixelGrid::paintCells(QPainter &painter, const QRect &area) const
{
    constexpr int fixedCell = 16;
    constexpr int smallestCell = 3;
    const int cell =
        m_mode == CellMode::Fixed16 ? fixedCell : std::max(std::min(area.width(), area.height()) / cells, smallestCell);
    const int side = cell * cells;
    const QRect grid(area.x() + (area.width() - side) / 2, area.y() + (area.height() - side) / 2, side, side);
    const bool isHovering = !m_image.isNull() && m_hovered.x() >= 0 && m_hovered.y() >= 0;
    painter.save();
    painter.setClipRect(area.adjusted(-3, -3, 3, 3));
    painter.fillRect(grid.translated(2, 2), shadow);
    for (int row = 0; row < cells; ++row) {
        for (int column = 0; column < cells; ++column) {
            const QPoint pixel = m_hovered + QPoint(column - cells / 2, row - cells / 2);
            const bool isInside = isHovering && m_image.rect().contains(pixel);
            painter.fillRect(grid.x() + column * cell, grid.y() + row * cell, cell, cell,
                             isInside ? QColor::fromRgb(m_image.pixel(pixel)) : outside);
        }
    }
    painter.setPen(gridLine);
    for (int i = 1; i < cells; ++i) {
        painter.drawLine(grid.x() + i * cell, grid.top(), grid.x() + i * cell, grid.bottom());
        painter.drawLine(grid.left(), grid.y() + i * cell, grid.right(), grid.y() + i * cell);
    }
    painter.setPen(frame);
    painter.drawRect(grid.adjusted(-1, -1, 0, 0));
    if (isHovering) {
        painter.setPen(QPen(centre, 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(grid.x() + cells / 2 * cell, grid.y() + cells / 2 * cell, cell, cell);
    }
    painter.restore();
}

} // namespace velmora
