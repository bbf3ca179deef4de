#pragma once

#include <QStyledItemDelegate>

namespace velmora {

/// Paints the check box of an item in the middle of its cell; a click anywhere in the cell changes it.
class CheckDelegate final : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;
};

} // namespace velmora
