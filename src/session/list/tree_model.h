#pragma once

#include "session/list/row_tree.h"
#include "session/list/tree_filter.h"
#include "session/list/tree_rows.h"

#include <QAbstractTableModel>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace velmora {

/// The rows of a tree that are visible, as one flat list in which open nodes are followed by what is in them. Nothing
/// is kept for a row but its node and where lines go down beside it.
///
/// What changes without moving other rows is told as rows that come or go; anything else as a reset, over which nodes
/// keep their numbers unless `generation` is another one.
class TreeModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit TreeModel(std::unique_ptr<RowTree> tree, QObject *parent = nullptr);

    /// Shows another tree, in the same order and with the same filter.
    void setTree(std::unique_ptr<RowTree> tree);
    [[nodiscard]] const RowTree &rowTree() const { return *m_tree; }
    /// Counts the trees: numbers of nodes mean the same as long as it does not change.
    [[nodiscard]] quint64 generation() const noexcept { return m_generation; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// The order of siblings; column -1 is that of the tree.
    void sort(int column, Qt::SortOrder order) override;

    [[nodiscard]] const TreeRow &row(int row) const { return m_rows[std::size_t(row)]; }
    /// The node of a row, -1 for no row.
    [[nodiscard]] qint32 nodeAt(int row) const;
    /// The row of a node, or of the nearest one around it that has one; -1 when there is none.
    [[nodiscard]] int rowOf(qint32 node) const;
    /// The rows of those nodes that have one, in ascending order.
    [[nodiscard]] std::vector<int> rowsOf(std::vector<qint32> nodes) const;

    [[nodiscard]] bool isExpanded(qint32 node) const;
    void setExpanded(int row, bool expanded);
    /// With everything in the node, or of the whole tree for -1.
    void setAllExpanded(qint32 node, bool expanded);
    /// Opens all nodes around a node.
    void reveal(qint32 node);

    /// Shows what holds every one of these words, with what is around it and in it; everything for none. Large trees
    /// are looked through between the events of the window, and `filtered` tells when it is done.
    void setFilter(const QString &words);
    [[nodiscard]] bool isFiltered() const { return m_filter.isActive(); }

    /// Works out the rows anew after the tree has changed; `places` has the new number of each old node, -1 for those
    /// that are gone, and is null when no number changed.
    void update(const std::vector<qint32> *places = nullptr);
    /// Shows the same rows anew, in another theme or with other texts.
    void refresh();

Q_SIGNALS:
    /// A node was opened or closed alone.
    void expandedChanged(qint32 node, bool expanded);
    /// The filter that was set last is the one that is seen.
    void filtered();

protected:
    /// To be called when all nodes are others.
    void rebuild();

private:
    [[nodiscard]] std::vector<TreeRow> madeRows() const { return visibleRows(*m_tree, m_filter, m_order); }
    void renumber(const std::vector<qint32> &places);
    void restartFilter();
    void proceedFilter();
    void setOneExpanded(qint32 node, bool expanded);
    [[nodiscard]] int exactRowOf(qint32 node) const;

    std::unique_ptr<RowTree> m_tree;
    QStringList m_headings;
    TreeOrder m_order;
    TreeFilter m_filter; ///< the one that is seen
    std::vector<TreeRow> m_rows;
    std::optional<TreeFilter> m_pending; ///< the one that is being worked out
    QString m_words;
    QTimer m_turns;
    quint64 m_generation = 0;
};

} // namespace velmora
