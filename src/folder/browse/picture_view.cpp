#include "folder/browse/picture_view.h"

#include "session/diff_colours.h"

#include <QPainter>

namespace velmora {

PictureView::PictureView(QWidget *parent) : QWidget(parent) {}

void PictureView::setPicture(const QImage &picture)
{
    m_picture = picture;
    update();
}

void PictureView::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), diffColour(DiffColour::Background));
    if (m_picture.isNull())
        return;
    constexpr int margin = 8;
    const QRect room = rect().adjusted(margin, margin, -margin, -margin);
    QSize size = m_picture.size();
    if (size.width() > room.width() || size.height() > room.height())
        size.scale(room.size(), Qt::KeepAspectRatio);
    QRect place({}, size);
    place.moveCenter(room.center());
    if (m_picture.hasAlphaChannel()) {
        painter.fillRect(place, diffColour(DiffColour::Filler));
        painter.fillRect(place, QBrush(diffColour(DiffColour::FillerHatch), Qt::Dense4Pattern));
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, m_picture);
    painter.setPen(diffColour(DiffColour::Rule));
    painter.drawRect(place.adjusted(-1, -1, 0, 0));
}

} // namespace velmora
