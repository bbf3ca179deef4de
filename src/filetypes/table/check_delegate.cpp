#include "filetypes/table/check_delegate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyle>

namespace velmora {

namespace {

bool isChange(const QEvent &event)
{
    if (event.type() == QEvent::MouseButtonRelease)
        return static_cast<const QMouseEvent &>(event).button() == Qt::LeftButton;
    return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent &>(event).key() == Qt::Key_Space;
}

} // namespace

void CheckDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const bool hasBox = item.features.testFlag(QStyleOptionViewItem::HasCheckIndicator);
    item.features.setFlag(QStyleOptionViewItem::HasCheckIndicator, false);
    const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, option.widget);
    if (!hasBox)
        return;
    const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth), style->pixelMetric(QStyle::PM_IndicatorHeight));
    item.rect = QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
    item.state.setFlag(item.checkState == Qt::Checked ? QStyle::State_On : QStyle::State_Off);
    item.state.setFlag(QStyle::State_HasFocus, false);
    style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &item, painter, option.widget);
}

bool CheckDelegate::editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem & /*option*/,
                                const QModelIndex &index)
{
    const QVariant value = index.data(Qt::CheckStateRole);
    if (!value.isValid() || !isChange(*event))
        return false;
    return model->setData(index, value.toInt() == Qt::Checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

} // namespace velmora
