#include "session/list/tree_rows.h"

#include "session/list/row_tree.h"
#include "session/list/tree_filter.h"

#include <algorithm>

namespace velmora {

namespace {

class RowsMaker {
public:
    RowsMaker(const RowTree &tree, const TreeFilter &filter, TreeOrder order)
        : m_tree(tree), m_filter(filter), m_order(order)
    {}

    [[nodiscard]] std::vector<TreeRow> rows() const
    {
        std::vector<TreeRow> rows;
        if (m_order.column < 0)
            appendInOrder(rows);
        else
            appendSorted(rows);
        addLines(rows);
        return rows;
    }

private:
    [[nodiscard]] bool isShown(qint32 node) const
    {
        return m_tree.isShown(node) && (!m_filter.isActive() || m_filter.isShown(node));
    }

    [[nodiscard]] bool isOpen(qint32 node) const
    {
        return m_filter.isActive() ? m_filter.isExpanded(node) : m_tree.isExpanded(node);
    }

    void appendInOrder(std::vector<TreeRow> &rows) const
    {
        const qint32 end = m_tree.count();
        for (qint32 node = 0; node < end;) {
            const bool shown = isShown(node);
            if (shown)
                rows.push_back({node, 0});
            node = shown && isOpen(node) ? node + 1 : m_tree.end(node);
        }
    }

    void appendSorted(std::vector<TreeRow> &rows) const
    {
        std::vector<qint32> waiting; // the next one last
        pushChildren(waiting, 0, m_tree.count());
        while (!waiting.empty()) {
            const qint32 node = waiting.back();
            waiting.pop_back();
            rows.push_back({node, 0});
            if (isOpen(node))
                pushChildren(waiting, node + 1, m_tree.end(node));
        }
    }

    void pushChildren(std::vector<qint32> &waiting, qint32 from, qint32 end) const
    {
        const auto first = qsizetype(waiting.size());
        for (qint32 node = from; node < end; node = m_tree.end(node)) {
            if (isShown(node))
                waiting.push_back(node);
        }
        const bool ascending = m_order.direction == Qt::AscendingOrder;
        std::stable_sort(waiting.begin() + first, waiting.end(), [&](qint32 one, qint32 other) {
            return ascending ? m_tree.isBefore(one, other, m_order.column)
                             : m_tree.isBefore(other, one, m_order.column);
        });
        std::reverse(waiting.begin() + first, waiting.end());
    }

    void addLines(std::vector<TreeRow> &rows) const
    {
        quint64 open = 0;
        for (std::size_t i = rows.size(); i-- > 0;) {
            const auto depth = unsigned(m_tree.depth(rows[i].node));
            constexpr unsigned depths = 64;
            if (depth >= depths) {
                rows[i].lines = open;
                continue;
            }
            const quint64 bit = quint64(1) << depth;
            open &= (bit << 1) - 1; // what is deeper than this row belongs to others; all bits stay at depth 63
            rows[i].lines = open;
            open |= bit;
        }
    }

    const RowTree &m_tree;
    const TreeFilter &m_filter;
    TreeOrder m_order;
};

} // namespace

std::vector<TreeRow> visibleRows(const RowTree &tree, const TreeFilter &filter, TreeOrder order)
{
    return RowsMaker(tree, filter, order).rows();
}

} // namespace velmora
