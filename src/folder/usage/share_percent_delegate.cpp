#include "folder/usage/share_percent_delegate.h"

#include "folder/usage/usage_rows.h"
#include "session/diff_colours.h"
#include "session/theme.h"

#include <QPainter>

#include <algorithm>

namespace velmora {

void SharePercentDelegate::paintCell(QPainter &painter, const QStyleOptionViewItem &option,
                                     const QModelIndex &index) const
{
    const double share = std::clamp(index.data(UsageRows::shareRole).toDouble() / 100, 0.0, 1.0);
    const QRectF room = QRectF(option.rect).adjusted(margin, 4, -margin, -4);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QColor ground = option.palette.color(QPalette::Base);
    painter.setBrush(blended(diffColour(DiffColour::MutedText), ground, 0.14));
    constexpr qreal corner = 3;
    painter.drawRoundedRect(room, corner, corner);
    if (share > 0) {
        painter.setBrush(blended(diffColour(DiffColour::Accent), ground, 0.45));
        painter.drawRoundedRect(QRectF(room.left(), room.top(), std::max(2.0, room.width() * share), room.height()),
                                corner, corner);
    }
    painter.setPen(option.palette.color(QPalette::Text));
    painter.drawText(room.adjusted(0, -2, -4, 2), Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                     index.data().toString() + u'%');
}

} // namespace velmora
