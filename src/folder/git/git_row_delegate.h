#pragma once

#include "session/list/tree_delegate.h"

namespace velmora {

/// Draws the rows of a Git comparison: the names of both sides as trees, the signs that open folders at the left.
class GitRowDelegate final : public TreeDelegate {
    Q_OBJECT
public:
    explicit GitRowDelegate(const TreeModel &model, QObject *parent = nullptr);

protected:
    [[nodiscard]] bool hasTree(int column) const override;
    void paintCell(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    void paintName(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const;

    const TreeModel &m_rows;
};

} // namespace velmora
