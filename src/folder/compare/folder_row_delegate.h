#pragma once

#include "core/side.h"
#include "session/list/tree_delegate.h"

namespace velmora {

class FolderRowsModel;

/// Draws the cells of a folder comparison: names in the ink of what they are, and what a time says of its side.
class FolderRowDelegate final : public TreeDelegate {
    Q_OBJECT
public:
    explicit FolderRowDelegate(const FolderRowsModel &model, QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    [[nodiscard]] bool hasTree(int column) const override;

private:
    void paintName(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const;
    void paintPicture(QPainter &painter, const QRect &box, qint32 node, Side side) const;
    void paintSign(QPainter &painter, const QStyleOptionViewItem &option, qint32 node) const;
    void paintDetail(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const;
    [[nodiscard]] QColor ink(qint32 node, Side side) const;

    const FolderRowsModel &m_model;
};

} // namespace velmora
