#pragma once

#include "core/sides.h"
#include "filetypes/image/comparison_label.h"

#include <QWidget>

class QComboBox;
class QGroupBox;
class QScrollArea;
class QSlider;

namespace velmora {

class ElidedLabel;

/// Both images and their difference map, each in a scroll area of its own, at one zoom and one place; and room for one
/// more part, which completes a square.
class ImageViews final : public QWidget {
    Q_OBJECT
public:
    explicit ImageViews(QWidget *detail, QWidget *parent = nullptr);

    void setImages(const Sides<std::shared_ptr<const ImageLevels>> &images);
    void setMap(std::shared_ptr<const ImageLevels> map);
    void setCaptions(const QString &left, const QString &right);

    void setZoom(double factor) { m_left->setZoom(factor); }
    [[nodiscard]] double zoom() const { return m_left->zoom(); }
    /// As large as the left image is shown whole, and stays so when there is more or less room, until zoomed.
    void zoomToFit();

    void setView(ComparisonView view);
    [[nodiscard]] ComparisonView view() const { return m_map->view(); }

    /// Frames a part of all images and scrolls to it; an empty one frames none.
    void showPart(const QRect &part);

Q_SIGNALS:
    void hoveredImagePixel(int x, int y);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QScrollArea *addArea(QGroupBox *box, ImageLabel *label);
    [[nodiscard]] QGroupBox *makeSide(const QString &title, ElidedLabel *caption, ImageLabel *label);
    [[nodiscard]] QGroupBox *makeMap();
    void connectLabels();
    void connectScrolling();
    void takeZoom(double factor);
    void takeScroll(Qt::Orientation orientation, int value);

    ImageLabel *m_left;
    ImageLabel *m_right;
    ComparisonLabel *m_map;
    QGroupBox *m_mapBox;
    ElidedLabel *m_leftCaption;
    ElidedLabel *m_rightCaption;
    QComboBox *m_view;
    QSlider *m_share;
    QList<QScrollArea *> m_areas; ///< of left, right, map
    bool m_isScrolling = false;   ///< the others follow the one that is moved
    bool m_isFitting = false;     ///< the zoom is being set to what fits
    bool m_fits = false;          ///< the zoom is what fits
};

} // namespace velmora
