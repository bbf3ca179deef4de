#pragma once

#include "filetypes/image/engine/image_levels.h"

#include <QLabel>

#include <memory>

namespace velmora {

/// A picture at a zoom, which the mouse changes and points into. Only what is in sight is scaled, so that neither large
/// pictures nor large zooms cost more.
class ImageLabel : public QLabel {
    Q_OBJECT
public:
    static constexpr double smallestZoom = 0.1;
    static constexpr double largestZoom = 10;

    explicit ImageLabel(QWidget *parent = nullptr);

    /// Null or without an image: nothing is shown.
    void setSource(std::shared_ptr<const ImageLevels> source);
    [[nodiscard]] bool hasImage() const { return m_source && !m_source->image().isNull(); }
    [[nodiscard]] QSize imageSize() const { return hasImage() ? m_source->image().size() : QSize(); }

    /// Takes the zoom next to `factor` that there is.
    void setZoom(double factor);
    [[nodiscard]] double zoom() const { return m_zoom; }

    /// Frames a part of the picture; an empty one frames none.
    void setMark(const QRect &mark);
    /// Where a part of the picture is in the label.
    [[nodiscard]] QRect shownAt(const QRect &part) const { return scaled(part).translated(origin()); }

Q_SIGNALS:
    void zoomChanged(double factor);
    /// The pixel that the mouse is over; (-1, -1) for none.
    void hoveredImagePixel(int x, int y);

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;

    /// The size of the picture at its zoom.
    [[nodiscard]] QSize shownSize() const;
    /// Where the picture begins: in the middle of a label that is larger.
    [[nodiscard]] QPoint origin() const;
    /// Paints what the label shows, as far as it lies in `exposed`, from the picture's origin on; the picture without
    /// more.
    virtual void paintPictures(QPainter &painter, const QRect &exposed);
    /// Paints a picture at the label's zoom.
    void paintLevels(QPainter &painter, const QRect &exposed, const ImageLevels &levels) const;

private:
    void rescale();
    [[nodiscard]] QRect scaled(const QRect &part) const;
    [[nodiscard]] QPoint pixelAt(QPointF position) const;

    std::shared_ptr<const ImageLevels> m_source;
    double m_zoom = 1.0;
    QRect m_mark;
};

} // namespace velmora
