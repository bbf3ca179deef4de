#pragma once

#include <QImage>
#include <QWidget>

namespace velmora {

/// The pixels around one of a picture, magnified: 15 by 15 cells.
class PixelGrid final : public QWidget {
    Q_OBJECT
public:
    enum class CellMode : quint8 {
        FitToPanel = 0,
        Fixed16 = 1, ///< 16 pixels for each cell
    };

    explicit PixelGrid(const QString &caption, QWidget *parent = nullptr);

    /// Shares the image; a null one shows nothing.
    void setImage(const QImage &image);
    /// (-1, -1) for none.
    void setHovered(int x, int y);
    void setCellMode(CellMode mode);
    [[nodiscard]] CellMode cellMode() const { return m_mode; }

    [[nodiscard]] QSize minimumSizeHint() const override { return {140, 140}; }
    [[nodiscard]] QSize sizeHint() const override { return {220, 220}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QString captionText() const;
    void paintCells(QPainter &painter, const QRect &area) const;

    QString m_caption;
    QImage m_image;
    QPoint m_hovered{-1, -1};
    CellMode m_mode = CellMode::FitToPanel;
};

} // namespace velmora
