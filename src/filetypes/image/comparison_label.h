#pragma once

#include "filetypes/image/image_label.h"

#include <QTimer>

namespace velmora {

/// How two pictures are shown in one place.
enum class ComparisonView : quint8 {
    Map,     ///< what differs
    Blink,   ///< one after the other, again and again
    Swipe,   ///< the left one up to a line that the mouse moves, the right one behind it
    Overlay, ///< one through the other
};

/// Two pictures in one place, and their difference map.
class ComparisonLabel final : public ImageLabel {
    Q_OBJECT
public:
    explicit ComparisonLabel(QWidget *parent = nullptr);

    /// The pictures of the two sides; either may be null. The map is the label's source.
    void setSides(std::shared_ptr<const ImageLevels> left, std::shared_ptr<const ImageLevels> right);

    void setView(ComparisonView view);
    [[nodiscard]] ComparisonView view() const { return m_view; }

    /// Stands between the left picture (0) and the right one (1): where a swipe has its line, how an overlay mixes.
    void setShare(double share);
    [[nodiscard]] double share() const { return m_share; }

Q_SIGNALS:
    /// The mouse has moved the line.
    void shareChanged(double share);

protected:
    void paintPictures(QPainter &painter, const QRect &exposed) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void takeShareAt(double x);
    void paintSide(QPainter &painter, const QRect &exposed, const std::shared_ptr<const ImageLevels> &side);

    std::shared_ptr<const ImageLevels> m_left;
    std::shared_ptr<const ImageLevels> m_right;
    ComparisonView m_view = ComparisonView::Map;
    double m_share = 0.5;
    QTimer m_blink;
    bool m_showsRight = false;
};

} // namespace velmora
