#include "folder/compare/folder_row_delegate.h"

#include "core/visible_name.h"
#include "folder/compare/folder_rows_model.h"
#include "session/diff_colours.h"
#include "session/folder_colours.h"
#include "session/list/row_ground.h"
#include "session/list/row_pictures.h"
#include "session/theme.h"

#include <QPainter>
#include <QPainterPath>

namespace velmora {

namespace {

/// The marks of a side from the one that matters most.
constexpr FolderMark byWeight[] = {FolderMark::Newer,   FolderMark::Unique, FolderMark::Older,   FolderMark::Scanning,
                                   FolderMark::Unknown, FolderMark::Same,   FolderMark::Filtered};

FolderMark strongest(MarkSet marks)
{
    for (const FolderMark mark : byWeight) {
        if (marks.has(mark))
            return mark;
    }
    return FolderMark::Same;
}

/// The marks that a folder's picture shows side by side.
QList<FolderMark> shownMarks(MarkSet marks)
{
    QList<FolderMark> shown;
    for (const FolderMark mark : {FolderMark::Newer, FolderMark::Unique, FolderMark::Older}) {
        if (marks.has(mark))
            shown.append(mark);
    }
    return shown.isEmpty() ? QList<FolderMark>{strongest(marks)} : shown;
}

/// The part of `name` in which it is not like `other`: the lengths of the common beginning and end.
std::pair<qsizetype, qsizetype> commonEnds(const QString &name, const QString &other)
{
    const qsizetype both = std::min(name.size(), other.size());
    qsizetype front = 0;
    while (front < both && name.at(front) == other.at(front))
        ++front;
    qsizetype back = 0;
    while (back < both - front && name.at(name.size() - 1 - back) == other.at(other.size() - 1 - back))
        ++back;
    return {front, back};
}

} // namespace

FolderRowDelegate::FolderRowDelegate(const FolderRowsModel &model, QObject *parent)
    : TreeDelegate(model, parent), m_model(model)
{}

bool FolderRowDelegate::hasTree(int column) const
{
    return FolderColumn(column) == FolderColumn::LeftName || FolderColumn(column) == FolderColumn::RightName;
}

QSize FolderRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QSize size = TreeDelegate::sizeHint(option, index);
    const auto column = FolderColumn(index.column());
    if (hasTree(index.column()))
        size.rwidth() += picture + gap;
    if (column == FolderColumn::LeftTime || column == FolderColumn::RightTime) { // the newer one is bold
        QFont bold = option.font;
        bold.setBold(true);
        size.setWidth(QFontMetrics(bold).horizontalAdvance(index.data().toString()) + 2 * margin);
    }
    return size;
}

QColor FolderRowDelegate::ink(qint32 node, Side side) const
{
    if (m_model.tree().node(node).ignored)
        return folderMarkColour(FolderMark::Filtered);
    return folderMarkColour(strongest(m_model.tree().node(node).on(side)));
}

void FolderRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const qint32 node = m_model.nodeAt(index.row());
    if (node < 0)
        return;
    painter->save();
    painter->setFont(option.font);
    painter->setClipRect(option.rect);
    const auto column = FolderColumn(index.column());
    const bool isThere = column == FolderColumn::Sign || !pathOn(m_model.tree().item(node), sideOf(column)).isEmpty();
    paintBackground(*painter, option, isThere ? option.palette.color(QPalette::Base) : diffColour(DiffColour::Gutter));
    if (column == FolderColumn::Sign)
        paintSign(*painter, option, node);
    else if (hasTree(index.column()))
        paintName(*painter, option, index);
    else if (isThere)
        paintDetail(*painter, option, index);
    painter->restore();
}

void FolderRowDelegate::paintPicture(QPainter &painter, const QRect &box, qint32 node, Side side) const
{
    const FolderTree &tree = m_model.tree();
    painter.setRenderHint(QPainter::Antialiasing);
    if (!tree.item(node).isDir) {
        const QColor colour = ink(node, side);
        painter.setPen(QPen(blended(colour, painter.background().color(), 0.85), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(fileShape(QRectF(box).adjusted(2.5, 1.5, -3.5, -1.5)));
        return;
    }
    const QRectF shapeBox = QRectF(box).adjusted(0.5, 1.5, -0.5, -2.5);
    const QPainterPath shape = folderShape(shapeBox);
    const MarkSet marks = tree.node(node).on(side);
    const QList<FolderMark> shown = shownMarks(marks);
    painter.setPen(Qt::NoPen);
    painter.save();
    painter.setClipPath(shape, Qt::IntersectClip);
    const qreal width = shapeBox.width() / qreal(shown.size());
    for (qsizetype i = 0; i < shown.size(); ++i) {
        QColor colour = folderMarkColour(shown.at(i));
        if (shown.at(i) == FolderMark::Same)
            colour = blended(diffColour(DiffColour::MutedText), diffColour(DiffColour::Background), 0.55);
        painter.fillRect(QRectF(shapeBox.left() + qreal(i) * width, shapeBox.top(), width, shapeBox.height()), colour);
    }
    painter.restore();
}

void FolderRowDelegate::paintName(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const int row = index.row();
    const qint32 node = m_model.nodeAt(row);
    const FolderDiffItem &item = m_model.tree().item(node);
    const Side side = sideOf(FolderColumn(index.column()));
    paintLines(painter, option.rect, row);
    if (pathOn(item, side).isEmpty())
        return; // nothing hangs on a line where nothing is
    paintBranch(painter, option.rect, row);

    const int x = option.rect.left() + indentOf(node, option.rect.width());
    paintPicture(painter, {x, option.rect.center().y() - picture / 2 + 1, picture, picture}, node, side);
    QRect textBox = option.rect;
    textBox.setLeft(x + picture + gap);
    textBox.setRight(option.rect.right() - margin);
    const QString name = visibleName(sideName(item, side));
    painter.setPen(readableInk(ink(node, side), painter.background().color()));
    const QString other = isPair(item) ? visibleName(sideName(item, otherSide(side))) : name;
    if (name == other || option.fontMetrics.horizontalAdvance(name) > textBox.width()) {
        const QString shown = option.fontMetrics.elidedText(name, Qt::ElideMiddle, textBox.width());
        painter.drawText(textBox, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
        return;
    }
    // Entries that were aligned by hand: what the two names do not share stands on a ground of its own.
    const auto [front, back] = commonEnds(name, other);
    const int from = option.fontMetrics.horizontalAdvance(name.left(front));
    const int to = option.fontMetrics.horizontalAdvance(name.left(name.size() - back));
    if (to > from) {
        const QRect mark(textBox.left() + from, textBox.top() + 2, to - from, textBox.height() - 4);
        painter.fillRect(mark, diffColour(DiffColour::Modified));
    }
    painter.drawText(textBox, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, name);
}

void FolderRowDelegate::paintSign(QPainter &painter, const QStyleOptionViewItem &option, qint32 node) const
{
    const FolderTree &tree = m_model.tree();
    const RowState state = tree.state(node);
    using enum FolderMark;
    static constexpr FolderMark byState[] = {Unknown, Scanning, Same, Unique, Unique, Newer, Filtered};
    static_assert(std::size(byState) == std::size_t(RowState::Filtered) + 1);
    const FolderMark mark = tree.node(node).ignored ? Filtered : byState[std::size_t(state)];
    QColor colour = folderMarkColour(mark);
    if (state == RowState::Same)
        colour = diffColour(DiffColour::MutedText);
    colour = readableInk(colour, painter.background().color());
    QFont font = option.font;
    font.setBold(state != RowState::Same);
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(option.rect, Qt::AlignCenter, stateSign(tree, node));

    // Beside the sign of files that differ, the way to the newer one.
    const FolderTree::Node &here = tree.node(node);
    const bool leftIsNewer = here.right.has(FolderMark::Older);
    const bool rightIsNewer = here.left.has(FolderMark::Older);
    if (state != RowState::Different || tree.item(node).isDir || leftIsNewer == rightIsNewer)
        return;
    const QPointF middle = QRectF(option.rect).center() + QPointF(leftIsNewer ? -11 : 11, 1);
    const qreal way = leftIsNewer ? -3 : 3;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(
        QPolygonF({middle + QPointF(way, 0), middle + QPointF(-way * 0.6, -3.2), middle + QPointF(-way * 0.6, 3.2)}));
}

void FolderRowDelegate::paintDetail(QPainter &painter, const QStyleOptionViewItem &option,
                                    const QModelIndex &index) const
{
    const auto column = FolderColumn(index.column());
    const qint32 node = m_model.nodeAt(index.row());
    const FolderDiffItem &item = m_model.tree().item(node);
    const Side side = sideOf(column);
    const bool isTime = column == FolderColumn::LeftTime || column == FolderColumn::RightTime;
    QFont font = option.font;
    QColor colour = diffColour(DiffColour::MutedText);
    if (isPair(item) && !item.isDir) {
        const QDateTime &mine = timeOn(item, side);
        const QDateTime &other = timeOn(item, otherSide(side));
        // The newer of two files, even of two that are equal.
        const bool newer = isTime && mine.isValid() && other.isValid() && other < mine;
        const bool differs = m_model.tree().state(node) == RowState::Different;
        font.setBold(newer);
        if (differs && (newer || (!isTime && index.data() != index.siblingAtColumn(int(otherColumn(column))).data())))
            colour = ink(node, side);
        else if (newer)
            colour = option.palette.color(QPalette::Text);
    }
    painter.setFont(font);
    painter.setPen(readableInk(colour, painter.background().color()));
    const QRect box = option.rect.adjusted(margin, 0, -margin, 0);
    const QString text = QFontMetrics(font).elidedText(index.data().toString(), Qt::ElideRight, box.width());
    painter.drawText(box, index.data(Qt::TextAlignmentRole).toInt() | Qt::TextSingleLine, text);
}

} // namespace velmora
