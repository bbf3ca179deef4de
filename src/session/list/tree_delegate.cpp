#include "session/list/tree_delegate.h"

#include "session/diff_colours.h"
#include "session/list/row_ground.h"
#include "session/list/row_pictures.h"
#include "session/list/tree_model.h"
#include "session/theme.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>
#include <limits>

namespace velmora {

namespace {

constexpr int step = 16;      ///< per depth; also the room for the sign that opens a node
constexpr int deepest = 24;   ///< deeper rows are not indented further, so that names keep some room
constexpr int leastName = 96; ///< what indenting leaves to a name in a narrow column

int middleOf(const QRect &cell, int margin, int level)
{
    return cell.left() + margin + step * level + step / 2;
}

} // namespace

TreeDelegate::TreeDelegate(const TreeModel &model, QObject *parent) : QStyledItemDelegate(parent), m_model(model) {}

int TreeDelegate::rowHeight(const QFontMetrics &metrics)
{
    return std::max(metrics.height() + 6, picture + 6);
}

int TreeDelegate::levelOf(qint32 node, int width) const
{
    // In a narrow column, of a small window say, deep names would be nothing but dots.
    const int fitting = std::max(1, (width - leastName) / step - 1);
    return std::min({m_model.rowTree().depth(node), deepest, fitting});
}

int TreeDelegate::indentOf(qint32 node, int width) const
{
    return margin + step * (levelOf(node, width) + 1);
}

QSize TreeDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const qint32 node = m_model.nodeAt(index.row());
    int before = margin;
    if (node >= 0 && hasTree(index.column())) {
        before = indentOf(node, std::numeric_limits<int>::max());
        before += checkRect(QRect(0, 0, 1, 1), index).width();
        before += m_model.rowTree().picture(node) == RowPicture::None ? 0 : picture + gap;
    }
    const QString text = index.data().toString();
    return {before + option.fontMetrics.horizontalAdvance(text) + margin + 2, rowHeight(option.fontMetrics)};
}

QRect TreeDelegate::toggleRect(const QRect &cell, const QModelIndex &index) const
{
    const qint32 node = m_model.nodeAt(index.row());
    if (node < 0 || !hasTree(index.column()) || !m_model.rowTree().isExpandable(node))
        return {};
    return {cell.left() + indentOf(node, cell.width()) - step, cell.top(), step, cell.height()};
}

QRect TreeDelegate::checkRect(const QRect &cell, const QModelIndex &index) const
{
    const qint32 node = m_model.nodeAt(index.row());
    if (node < 0 || !hasTree(index.column()) || !index.data(Qt::CheckStateRole).isValid())
        return {};
    return {cell.left() + indentOf(node, cell.width()), cell.top(), picture + gap, cell.height()};
}

// Painting ------------------------------------------------------------------------------------------------------------

void TreeDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (m_model.nodeAt(index.row()) < 0)
        return;
    painter->save();
    painter->setClipRect(option.rect);
    const QVariant font = index.data(Qt::FontRole);
    painter->setFont(font.isValid() ? font.value<QFont>().resolve(option.font) : option.font);
    const QVariant ground = index.data(Qt::BackgroundRole);
    paintBackground(*painter, option,
                    ground.isValid() ? ground.value<QBrush>().color() : option.palette.color(QPalette::Base));
    const QVariant ink = index.data(Qt::ForegroundRole);
    painter->setPen(readableInk(ink.isValid() ? ink.value<QBrush>().color() : option.palette.color(QPalette::Text),
                                painter->background().color()));
    paintCell(*painter, option, index);
    painter->restore();
}

void TreeDelegate::paintBackground(QPainter &painter, const QStyleOptionViewItem &option, const QColor &base)
{
    const QColor ground = rowGround(option, base);
    painter.setBackground(ground);
    painter.fillRect(option.rect, ground);
}

void TreeDelegate::paintCell(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (hasTree(index.column()))
        paintTreeCell(painter, option, index);
    else
        paintText(painter, option.rect.adjusted(margin, 0, -margin, 0), index, Qt::ElideRight);
}

void TreeDelegate::paintText(QPainter &painter, const QRect &box, const QModelIndex &index, Qt::TextElideMode elide)
{
    const QString text = painter.fontMetrics().elidedText(index.data().toString(), elide, box.width());
    painter.drawText(box, index.data(Qt::TextAlignmentRole).toInt() | Qt::TextSingleLine, text);
}

void TreeDelegate::paintTreeCell(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const qint32 node = m_model.nodeAt(index.row());
    const QPen ink = painter.pen();
    paintLines(painter, option.rect, index.row());
    paintBranch(painter, option.rect, index.row());
    int x = option.rect.left() + indentOf(node, option.rect.width());
    if (const QRect tick = checkRect(option.rect, index); !tick.isEmpty()) {
        QStyleOptionViewItem box = option;
        box.rect = QRect(tick.left(), tick.center().y() - picture / 2 + 1, picture, picture);
        const auto state = Qt::CheckState(index.data(Qt::CheckStateRole).toInt());
        box.state.setFlag(QStyle::State_On, state == Qt::Checked);
        box.state.setFlag(QStyle::State_NoChange, state == Qt::PartiallyChecked);
        box.state.setFlag(QStyle::State_Off, state == Qt::Unchecked);
        const QStyle *const style = option.widget ? option.widget->style() : QApplication::style();
        style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, &painter, option.widget);
        x += tick.width();
    }
    if (m_model.rowTree().picture(node) != RowPicture::None) {
        paintPicture(painter, {x, option.rect.center().y() - picture / 2 + 1, picture, picture}, node);
        x += picture + gap;
    }
    painter.setPen(ink);
    paintText(painter, {x, option.rect.top(), option.rect.right() - margin - x + 1, option.rect.height()}, index,
              Qt::ElideMiddle);
}

void TreeDelegate::paintPicture(QPainter &painter, const QRect &box, qint32 node) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = diffColour(DiffColour::MutedText);
    if (m_model.rowTree().picture(node) == RowPicture::Folder) {
        painter.fillPath(folderShape(QRectF(box).adjusted(0.5, 1.5, -0.5, -2.5)),
                         blended(ink, diffColour(DiffColour::Background), 0.55));
        return;
    }
    painter.setPen(QPen(ink, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(fileShape(QRectF(box).adjusted(2.5, 1.5, -3.5, -1.5)));
}

void TreeDelegate::paintLines(QPainter &painter, const QRect &cell, int row) const
{
    const TreeRow &here = m_model.row(row);
    const int depth = levelOf(here.node, cell.width());
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(diffColour(DiffColour::Rule));
    for (int level = 0; level < depth; ++level) {
        // The line of a level hangs below the sign of the node one level up.
        const int x = middleOf(cell, margin, level);
        if ((here.lines >> (level + 1)) & 1)
            painter.drawLine(x, cell.top(), x, cell.bottom());
    }
}

void TreeDelegate::paintBranch(QPainter &painter, const QRect &cell, int row) const
{
    const qint32 node = m_model.nodeAt(row);
    const int depth = levelOf(node, cell.width());
    const int middle = cell.center().y();
    const int sign = middleOf(cell, margin, depth);
    const bool expandable = m_model.rowTree().isExpandable(node);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(diffColour(DiffColour::Rule));
    if (depth > 0) {
        const int x = middleOf(cell, margin, depth - 1);
        painter.drawLine(x, cell.top(), x, middle);
        painter.drawLine(x, middle, sign - (expandable ? step / 2 - 2 : -step / 2 + 2), middle);
    }
    if (!expandable)
        return;
    const bool open = m_model.isExpanded(node);
    if (open)
        painter.drawLine(sign, middle + 5, sign, cell.bottom());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(diffColour(DiffColour::MutedText), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF centre(sign + 0.5, middle + 0.5);
    const QPolygonF shape =
        open ? QPolygonF({centre + QPointF(-3.5, -2), centre + QPointF(0, 1.5), centre + QPointF(3.5, -2)})
             : QPolygonF({centre + QPointF(-1.5, -3.5), centre + QPointF(2, 0), centre + QPointF(-1.5, 3.5)});
    painter.drawPolyline(shape);
}

} // namespace velmora
