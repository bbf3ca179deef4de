#include "filetypes/image/image_label.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

/// What is seen through transparent pixels.
QBrush chequered()
{
    constexpr int side = 8;
    QPixmap tile(2 * side, 2 * side);
    tile.fill(QColor(0xff, 0xff, 0xff));
    QPainter painter(&tile);
    for (const QPoint corner : {QPoint(0, 0), QPoint(side, side)})
        painter.fillRect(QRect(corner, QSize(side, side)), QColor(0xdd, 0xdd, 0xdd));
    return {tile};
}

void paintMark(QPainter &painter, const QRect &place)
{
    painter.setBrush(Qt::NoBrush);
    const QRect frame = place.adjusted(-4, -4, 3, 3);
    // Two colours, so that it stands out from whatever is below it.
    painter.setPen(QPen(Qt::white, 4, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(frame);
    painter.setPen(QPen(QColor(0x0b, 0x61, 0xc4), 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(frame);
}

} // namespace

ImageLabel::ImageLabel(QWidget *parent) : QLabel(parent)
{
    setMouseTracking(true);
    setMinimumSize(120, 80);
    setAlignment(Qt::AlignCenter);
    rescale();
}

void ImageLabel::setSource(std::shared_ptr<const ImageLevels> source)
{
    m_source = std::move(source);
    rescale();
}

void ImageLabel::setZoom(double factor)
{
    constexpr double sameZoom = 0.000001;
    factor = std::clamp(factor, smallestZoom, largestZoom);
    if (std::abs(factor - m_zoom) < sameZoom)
        return;
    m_zoom = factor;
    rescale();
    Q_EMIT zoomChanged(factor);
}

void ImageLabel::rescale()
{
    resize(shownSize());
    update();
}

QSize ImageLabel::shownSize() const
{
    if (!hasImage())
        return {0, 0};
    const auto length = [this](int pixels) { return std::max(1, int(std::floor(pixels * m_zoom))); };
    return {length(m_source->image().width()), length(m_source->image().height())};
}

QPoint ImageLabel::origin() const
{
    const QSize room = (size() - shownSize()).expandedTo({0, 0});
    return {room.width() / 2, room.height() / 2};
}

void ImageLabel::setMark(const QRect &mark)
{
    m_mark = mark;
    update();
}

QRect ImageLabel::scaled(const QRect &part) const
{
    return QRectF(part.x() * m_zoom, part.y() * m_zoom, part.width() * m_zoom, part.height() * m_zoom).toAlignedRect();
}

void ImageLabel::paintEvent(QPaintEvent *event)
{
    if (!hasImage())
        return;
    QPainter painter(this);
    painter.translate(origin());
    paintPictures(painter, event->rect().translated(-origin()));
    if (!m_mark.isEmpty())
        paintMark(painter, scaled(m_mark));
}

void ImageLabel::paintPictures(QPainter &painter, const QRect &exposed)
{
    paintLevels(painter, exposed, *m_source);
}

void ImageLabel::paintLevels(QPainter &painter, const QRect &exposed, const ImageLevels &levels) const
{
    const QImage &whole = levels.image();
    const QImage &level = levels.levelFor(m_zoom);
    const QSize shown(std::max(1, int(whole.width() * m_zoom)), std::max(1, int(whole.height() * m_zoom)));
    const double acrossX = double(shown.width()) / level.width();
    const double acrossY = double(shown.height()) / level.height();
    const QRect seen = exposed & QRect(QPoint(0, 0), shown);
    if (seen.isEmpty())
        return;
    // Whole pixels of the picture, with a neighbour more for the smoothing: parts that are painted one by one fit.
    const QRect source = QRectF(seen.x() / acrossX, seen.y() / acrossY, seen.width() / acrossX, seen.height() / acrossY)
                             .toAlignedRect()
                             .adjusted(-1, -1, 1, 1) &
                         level.rect();
    const QRectF target(source.x() * acrossX, source.y() * acrossY, source.width() * acrossX,
                        source.height() * acrossY);
    painter.save();
    painter.setClipRect(seen, Qt::IntersectClip);
    if (levels.hasAlpha())
        painter.fillRect(seen, chequered());
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_zoom != 1.0);
    painter.drawImage(target, level, source);
    painter.restore();
}

void ImageLabel::wheelEvent(QWheelEvent *event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QLabel::wheelEvent(event);
        return;
    }
    constexpr double nearer = 1.1;
    constexpr double farther = 0.9;
    setZoom(m_zoom * (event->angleDelta().y() >= 1 ? nearer : farther));
    event->accept();
}

QPoint ImageLabel::pixelAt(QPointF position) const
{
    position -= origin();
    const QPoint pixel(int(std::floor(position.x() / m_zoom)), int(std::floor(position.y() / m_zoom)));
    return hasImage() && m_source->image().rect().contains(pixel) ? pixel : QPoint(-1, -1);
}

void ImageLabel::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint pixel = pixelAt(event->position());
    Q_EMIT hoveredImagePixel(pixel.x(), pixel.y());
    QLabel::mouseMoveEvent(event);
}

void ImageLabel::leaveEvent(QEvent *event)
{
    Q_EMIT hoveredImagePixel(-1, -1);
    QLabel::leaveEvent(event);
}

} // namespace velmora
