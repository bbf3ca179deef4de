#pragma once

#include "core/rows_view.h"
#include "filetypes/registry/engine/registry_compare.h"
#include "session/list/row_tree.h"

#include <memory>

namespace velmora {

/// One key of the tree, whether a side names it or it is only what several others lie in.
struct RegistryKeyNode {
    QString path;           ///< of the first node that of all keys; empty for keys of several roots
    qsizetype firstRow = 0; ///< of the comparison: those of the key and of all that is in it
    qsizetype endRow = 0;
    qsizetype differences = 0; ///< of these
    qsizetype same = 0;        ///< of these, and keys in which neither side has anything
    qint32 pair = -1;          ///< its number among the pairs of keys; -1 for a key that no side names
};

/// The keys of the nodes with how many rows differ in each, and their depths.
struct RegistryKeyNodes {
    std::vector<RegistryKeyNode> nodes;
    std::vector<quint16> depths;
};

[[nodiscard]] RegistryKeyNodes keyNodesOf(const RegistryComparison &comparison);

/// The keys of a comparison as a tree with one root.
class RegistryKeyTree final : public FixedRowTree {
public:
    RegistryKeyTree(std::shared_ptr<const RegistryComparison> comparison, RegistryKeyNodes nodes);

    [[nodiscard]] const RegistryKeyNode &node(qint32 number) const { return m_nodes[std::size_t(number)]; }
    /// The key that all others lie in, as far down as there is only one.
    [[nodiscard]] qint32 firstBranch() const;
    /// Shows only keys in which there is something of these. `TreeModel::update` follows.
    void setView(RowsView view) { m_view = view; }

    [[nodiscard]] bool isShown(qint32 node) const override;
    [[nodiscard]] QStringList headings() const override;
    [[nodiscard]] QString text(qint32 node, int column) const override;
    [[nodiscard]] Qt::Alignment alignment(int column) const override;
    [[nodiscard]] QString hint(qint32 node, int column) const override;
    [[nodiscard]] RowPicture picture(qint32 node) const override;
    [[nodiscard]] QVariant data(qint32 node, int column, int role) const override;
    [[nodiscard]] bool isBefore(qint32 one, qint32 other, int column) const override;

private:
    [[nodiscard]] PairStatus status(qint32 node) const;

    std::shared_ptr<const RegistryComparison> m_comparison;
    std::vector<RegistryKeyNode> m_nodes;
    RowsView m_view = RowsView::All;
};

} // namespace velmora
