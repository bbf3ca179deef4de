#pragma once

#include <QGroupBox>
#include <QImage>

class QCheckBox;
class QLabel;
class QSlider;

namespace velmora {

class PixelGrid;

/// The pixel under the mouse and what is around it in both images, and what counts as a difference.
class PixelDetail final : public QGroupBox {
    Q_OBJECT
public:
    explicit PixelDetail(QWidget *parent = nullptr);

    void setImages(const QImage &left, const QImage &right);
    void setTolerance(int tolerance);
    [[nodiscard]] int tolerance() const;
    void setIgnoresAntiAliasing(bool ignores);
    [[nodiscard]] bool ignoresAntiAliasing() const;

public Q_SLOTS:
    /// Shows the pixel at a place of the images; (-1, -1) for none.
    void onPixelHovered(int x, int y);
    void onMagOneToOne();
    void onMagFit();

Q_SIGNALS:
    void toleranceChanged(int value);
    void antiAliasingChanged(bool ignores);

private:
    struct View {
        PixelGrid *grid;
        QLabel *info;
        QImage image;
    };

    [[nodiscard]] static View makeView(const QString &caption, const QString &name);
    void buildLayout();
    [[nodiscard]] QLayout *makeSettings();
    [[nodiscard]] QLayout *makeCellButtons();
    void showPixel(View &view) const;

    View m_left;
    View m_right;
    QSlider *m_tolerance;
    QLabel *m_toleranceValue;
    QCheckBox *m_antiAliasing;
    QPoint m_hovered{-1, -1};
};

} // namespace velmora
