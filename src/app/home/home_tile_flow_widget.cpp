#include "app/home/home_tile_flow_widget.h"

#include <QAbstractButton>

namespace velmora {

namespace {

constexpr int textMargin = 24; ///< between the widest text and the tile's edges, both sides together
constexpr int leastHeight = 28;
constexpr int heightWithoutText = 64;

} // namespace

HomeTileFlowWidget::HomeTileFlowWidget(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
}

void HomeTileFlowWidget::addTile(QAbstractButton *tile)
{
    tile->setParent(this);
    tile->setFixedSize(m_flow.tile);
    m_tiles.append(tile);
    relayout();
}

void HomeTileFlowWidget::setTileSize(const QSize &size)
{
    m_flow.tile = size;
    for (QAbstractButton *tile : std::as_const(m_tiles))
        tile->setFixedSize(size);
    relayout();
}

void HomeTileFlowWidget::setFixedColumns(int columns)
{
    m_flow.fixedColumns = columns;
    relayout();
}

void HomeTileFlowWidget::setCentred(bool centred)
{
    m_flow.centred = centred;
    relayout();
}

void HomeTileFlowWidget::fitTileSizeToText()
{
    if (m_tiles.isEmpty())
        return;
    int widest = 0;
    for (const QAbstractButton *tile : std::as_const(m_tiles))
        widest = std::max(widest, tile->fontMetrics().horizontalAdvance(tile->text()));
    const int width = widest + textMargin;
    int highest = 0;
    for (QAbstractButton *tile : std::as_const(m_tiles)) {
        tile->setMinimumSize(width, 0);
        tile->setMaximumSize(width, QWIDGETSIZE_MAX);
        highest = std::max(highest, tile->sizeHint().height());
    }
    setTileSize({width, highest > 0 ? 2 * std::max(highest, leastHeight) : heightWithoutText});
}

void HomeTileFlowWidget::setAvailableWidth(int width)
{
    setMinimumWidth(0);
    resize(width, height());
    relayout();
}

QSize HomeTileFlowWidget::sizeHint() const
{
    return {0, m_flow.extent(tileCount()).height()};
}

QSize HomeTileFlowWidget::minimumSizeHint() const
{
    return m_flow.extent(tileCount());
}

void HomeTileFlowWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    relayout();
}

void HomeTileFlowWidget::relayout()
{
    m_flow.width = width();
    if (m_tiles.isEmpty() || m_flow.tile.width() < 1)
        return;
    for (int i = 0; i < tileCount(); ++i) {
        m_tiles[i]->move(m_flow.position(i, tileCount()));
        m_tiles[i]->show();
    }
    const QSize extent = m_flow.extent(tileCount());
    if (minimumSize() != extent)
        setMinimumSize(extent);
    if (height() != extent.height())
        resize(width(), extent.height());
}

} // namespace velmora
