#include "folder/git/git_row_delegate.h"

#include "folder/git/git_rows.h"
#include "session/diff_colours.h"
#include "session/list/row_pictures.h"
#include "session/list/tree_model.h"
#include "session/theme.h"

#include <QPainter>

namespace velmora {

GitRowDelegate::GitRowDelegate(const TreeModel &model, QObject *parent) : TreeDelegate(model, parent), m_rows(model) {}

bool GitRowDelegate::hasTree(int column) const
{
    return column == GitRowTree::LeftName || column == GitRowTree::RightName;
}

void GitRowDelegate::paintCell(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (hasTree(index.column()))
        paintName(painter, option, index);
    else
        TreeDelegate::paintCell(painter, option, index);
}

void GitRowDelegate::paintName(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const qint32 node = m_rows.nodeAt(index.row());
    const QPen ink = painter.pen();
    if (index.column() == GitRowTree::LeftName) {
        paintLines(painter, option.rect, index.row());
        paintBranch(painter, option.rect, index.row());
    }
    if (index.data().toString().isEmpty())
        return; // it is on the other side only
    const int x = option.rect.left() + indentOf(node, option.rect.width());
    const QRect box(x, option.rect.center().y() - picture / 2 + 1, picture, picture);
    const QColor muted = diffColour(DiffColour::MutedText);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_rows.rowTree().picture(node) == RowPicture::Folder) {
        painter.fillPath(folderShape(QRectF(box).adjusted(0.5, 1.5, -0.5, -2.5)),
                         blended(muted, diffColour(DiffColour::Background), 0.55));
    } else {
        painter.setPen(QPen(muted, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(fileShape(QRectF(box).adjusted(2.5, 1.5, -3.5, -1.5)));
    }
    painter.setPen(ink);
    const int textX = x + picture + gap;
    paintText(painter, {textX, option.rect.top(), option.rect.right() - margin - textX + 1, option.rect.height()},
              index, Qt::ElideMiddle);
}

} // namespace velmora
