#include "app/home/tile_button.h"

#include <QKeyEvent>

namespace velmora {

namespace {

/// The nearest place in the next row above or below; in a row, the one whose middle is nearest.
qsizetype inRowBeside(const QList<QRect> &places, qsizetype from, bool below)
{
    const QRect &here = places[from];
    qsizetype best = from;
    for (qsizetype i = 0; i < places.size(); ++i) {
        const QRect &place = places[i];
        const int gap = below ? place.top() - here.bottom() : here.top() - place.bottom();
        if (gap <= 0)
            continue;
        const int bestGap = below ? places[best].top() - here.bottom() : here.top() - places[best].bottom();
        const auto aside = [&here](const QRect &other) { return qAbs(other.center().x() - here.center().x()); };
        if (best == from || gap < bestGap || (gap == bestGap && aside(place) < aside(places[best])))
            best = i;
    }
    return best;
}

} // namespace

TileButton::TileButton(QWidget *parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

void TileButton::setPreferred(bool preferred)
{
    if (std::exchange(m_preferred, preferred) != preferred)
        update();
}

void TileButton::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        click();
        break;
    case Qt::Key_Space:
    case Qt::Key_Select:
        QAbstractButton::keyPressEvent(event);
        break;
    default:
        event->ignore();
    }
}

void TileButton::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void TileButton::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    update();
}

qsizetype placeAfterKey(const QList<QRect> &places, qsizetype from, int key)
{
    if (places.isEmpty())
        return -1;
    const qsizetype last = places.size() - 1;
    switch (key) {
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return last;
    case Qt::Key_Left:
        return std::max(from - 1, qsizetype(0));
    case Qt::Key_Right:
        return from < 0 ? 0 : std::min(from + 1, last);
    case Qt::Key_Up:
    case Qt::Key_Down:
        return from < 0 ? 0 : inRowBeside(places, from, key == Qt::Key_Down);
    default:
        return -1;
    }
}

} // namespace velmora
