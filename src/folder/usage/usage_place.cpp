#include "folder/usage/usage_place.h"

#include "folder/engine/usage_tree.h"
#include "folder/usage/usage_rows.h"
#include "session/list/tree_view.h"

namespace velmora {

namespace {

/// A path is looked up among siblings one by one; who has opened everything does not miss single folders.
constexpr qsizetype mostOpen = 1000;
/// As many as a selection that is deleted may well have in a row.
constexpr int mostNeighbours = 100;

} // namespace

UsagePlace::UsagePlace(const UsageTree &tree, const TreeModel &rows, const TreeView &view)
{
    for (qint32 node = 0; node < tree.size() && m_open.size() < mostOpen; ++node) {
        if (rows.rowTree().isExpanded(node))
            m_open.append(tree.path(node));
    }
    const QList<qint32> selected = view.selectedNodes();
    const qint32 current = selected.isEmpty() ? view.currentNode() : selected.first();
    if (current < 0)
        return;
    m_current.append(tree.path(current));
    addNeighbours(tree, rows, current);
    for (qint32 around = tree.node(current).parent; around > 0; around = tree.node(around).parent)
        m_current.append(tree.path(around));
}

/// Those that follow in the order that is seen, and the one before.
void UsagePlace::addNeighbours(const UsageTree &tree, const TreeModel &rows, qint32 current)
{
    const int row = rows.rowOf(current);
    const qint32 parent = tree.node(current).parent;
    const auto addFrom = [&](int from, int step, int most) {
        for (int at = from; most > 0 && at >= 0 && at < rows.rowCount(); at += step) {
            const qint32 node = rows.nodeAt(at);
            if (tree.node(node).depth < tree.node(current).depth)
                return;
            if (tree.node(node).parent == parent) {
                m_current.append(tree.path(node));
                --most;
            }
        }
    };
    addFrom(row + 1, 1, mostNeighbours);
    addFrom(row - 1, -1, 1);
}

void UsagePlace::openIn(UsageRows &rows, const UsageTree &tree) const
{
    for (const QString &path : m_open) {
        if (const qint32 node = tree.find(path); node >= 0)
            rows.setExpanded(node, true);
    }
}

qint32 UsagePlace::currentIn(const UsageTree &tree) const
{
    for (const QString &path : m_current) {
        if (const qint32 node = tree.find(path); node >= 0)
            return node;
    }
    return 0;
}

} // namespace velmora
