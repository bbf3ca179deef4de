#pragma once

#include "app/home/tile_flow.h"

#include <QList>
#include <QWidget>

class QAbstractButton;

namespace velmora {

/// Places tile buttons of one size in rows, as many to a row as its width holds, and takes the height that they need.
///
/// Owns its tiles. Its minimum width is that of the rows it has made, so whoever makes it narrower goes through
/// `setAvailableWidth`.
class HomeTileFlowWidget final : public QWidget {
    Q_OBJECT
public:
    explicit HomeTileFlowWidget(QWidget *parent = nullptr);

    void addTile(QAbstractButton *tile);
    void setTileSize(const QSize &size);
    /// 0 for as many columns as there is room for.
    void setFixedColumns(int columns);
    /// Centres each row by itself.
    void setCentred(bool centred);

    /// Makes all tiles as wide as the widest text asks for and twice as high as the highest tile prefers.
    void fitTileSizeToText();

    /// Takes exactly this width, also when the rows of now are wider, and the height that follows.
    void setAvailableWidth(int width);

    [[nodiscard]] const QList<QAbstractButton *> &tiles() const noexcept { return m_tiles; }
    [[nodiscard]] QSize tileSize() const noexcept { return m_flow.tile; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] int tileCount() const { return static_cast<int>(m_tiles.size()); }
    void relayout();

    QList<QAbstractButton *> m_tiles;
    TileFlow m_flow;
};

} // namespace velmora
