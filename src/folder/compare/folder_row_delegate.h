#pragma once

#include "core/side.h"

#include <QStyledItemDelegate>

namespace velmora {

class FolderRowsModel;

/// Draws the cells of a folder comparison: the tree with its lines and signs, names in the ink of what they are, and
/// what a time says of its side.
class FolderRowDelegate final : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit FolderRowDelegate(const FolderRowsModel &model, QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// Where a row's sign that opens and closes it is, in the coordinates of its cell; empty for a row without one.
    [[nodiscard]] QRect toggleRect(const QRect &cell, int row) const;

    /// The height of a row for a font.
    [[nodiscard]] static int rowHeight(const QFontMetrics &metrics);

private:
    void paintName(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const;
    void paintTree(QPainter &painter, const QRect &cell, int row, Side side) const;
    void paintPicture(QPainter &painter, const QRect &box, qint32 node, Side side) const;
    void paintSign(QPainter &painter, const QStyleOptionViewItem &option, qint32 node) const;
    void paintDetail(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const;
    [[nodiscard]] QColor ink(qint32 node, Side side) const;
    [[nodiscard]] int indentOf(qint32 node) const;

    const FolderRowsModel &m_model;
};

} // namespace velmora
