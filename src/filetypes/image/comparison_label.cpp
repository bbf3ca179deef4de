#include "filetypes/image/comparison_label.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <chrono>

namespace velmora {

ComparisonLabel::ComparisonLabel(QWidget *parent) : ImageLabel(parent)
{
    // Slow enough for eyes that must not see faster flicker: less than three changes a second.
    constexpr auto blinkTime = std::chrono::milliseconds(600);
    m_blink.setInterval(blinkTime);
    connect(&m_blink, &QTimer::timeout, this, [this] {
        m_showsRight = !m_showsRight;
        update();
    });
}

void ComparisonLabel::setSides(std::shared_ptr<const ImageLevels> left, std::shared_ptr<const ImageLevels> right)
{
    m_left = std::move(left);
    m_right = std::move(right);
    update();
}

void ComparisonLabel::setView(ComparisonView view)
{
    m_view = view;
    m_showsRight = false;
    view == ComparisonView::Blink ? m_blink.start() : m_blink.stop();
    setCursor(view == ComparisonView::Swipe ? Qt::SplitHCursor : Qt::ArrowCursor);
    update();
}

void ComparisonLabel::setShare(double share)
{
    m_share = std::clamp(share, 0.0, 1.0);
    update();
}

void ComparisonLabel::paintSide(QPainter &painter, const QRect &exposed, const std::shared_ptr<const ImageLevels> &side)
{
    if (side && !side->image().isNull())
        paintLevels(painter, exposed, *side);
}

void ComparisonLabel::paintPictures(QPainter &painter, const QRect &exposed)
{
    if (m_view == ComparisonView::Map) {
        ImageLabel::paintPictures(painter, exposed);
        return;
    }
    if (m_view == ComparisonView::Blink) {
        paintSide(painter, exposed, m_showsRight ? m_right : m_left);
        return;
    }
    if (m_view == ComparisonView::Overlay) {
        paintSide(painter, exposed, m_left);
        painter.setOpacity(m_share);
        paintSide(painter, exposed, m_right);
        painter.setOpacity(1);
        return;
    }
    const QSize size = shownSize();
    const int line = int(m_share * size.width());
    paintSide(painter, exposed & QRect(0, 0, line, size.height()), m_left);
    paintSide(painter, exposed & QRect(line, 0, size.width() - line, size.height()), m_right);
    painter.fillRect(line - 1, 0, 3, size.height(), Qt::white);
    painter.fillRect(line, 0, 1, size.height(), Qt::black);
}

void ComparisonLabel::takeShareAt(double x)
{
    setShare((x - origin().x()) / std::max(shownSize().width(), 1));
    Q_EMIT shareChanged(m_share);
}

void ComparisonLabel::mousePressEvent(QMouseEvent *event)
{
    if (m_view == ComparisonView::Swipe && event->button() == Qt::LeftButton)
        takeShareAt(event->position().x());
    ImageLabel::mousePressEvent(event);
}

void ComparisonLabel::mouseMoveEvent(QMouseEvent *event)
{
    if (m_view == ComparisonView::Swipe && event->buttons().testFlag(Qt::LeftButton))
        takeShareAt(event->position().x());
    ImageLabel::mouseMoveEvent(event);
}

void ComparisonLabel::hideEvent(QHideEvent *event)
{
    m_blink.stop();
    ImageLabel::hideEvent(event);
}

void ComparisonLabel::showEvent(QShowEvent *event)
{
    ImageLabel::showEvent(event);
    if (m_view == ComparisonView::Blink)
        m_blink.start();
}

} // namespace velmora
