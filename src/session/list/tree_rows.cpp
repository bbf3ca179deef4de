#include "session/list/tree_rows.h"

#include "session/list/row_tree.h"
#include "session/list/tree_filter.h"

#include <algorithm>

namespace velmora {

namespace {

class RowsMaker {
public:
    RowsMaker(const RowTree &tree, const TreeFilter &filter, TreeOrder order)
        : m_tree(tree), m_filter(filter), m_isFiltered(filter.isActive()), m_order(order)
    {}

    [[nodiscard]] std::vector<TreeRow> rows() const
    {
        std::vector<TreeRow> rows;
        rows.reserve(std::size_t(m_tree.count())); // what is not used is never touched
        if (m_order.column < 0)
            appendInOrder(rows);
        else
            appendSorted(rows);
        addLines(rows);
        return rows;
    }

private:
    /// Of a node in what the filter leaves of the tree.
    [[nodiscard]] NodePlace place(qint32 node) const
    {
        NodePlace place = m_tree.place(node);
        if (m_isFiltered) {
            place.isShown = place.isShown && m_filter.isShown(node);
            place.isExpanded = m_filter.isExpanded(node);
        }
        return place;
    }

    void appendInOrder(std::vector<TreeRow> &rows) const
    {
        const qint32 end = m_tree.count();
        for (qint32 node = 0; node < end;) {
            const NodePlace at = place(node);
            if (at.isShown)
                rows.push_back({node, at.depth, 0});
            node = at.isShown && at.isExpanded ? node + 1 : at.end;
        }
    }

    void appendSorted(std::vector<TreeRow> &rows) const
    {
        std::vector<qint32> waiting; // the next one last
        pushChildren(waiting, 0, m_tree.count());
        while (!waiting.empty()) {
            const qint32 node = waiting.back();
            waiting.pop_back();
            const NodePlace at = place(node);
            rows.push_back({node, at.depth, 0});
            if (at.isExpanded)
                pushChildren(waiting, node + 1, at.end);
        }
    }

    void pushChildren(std::vector<qint32> &waiting, qint32 from, qint32 end) const
    {
        const auto first = qsizetype(waiting.size());
        for (qint32 node = from; node < end;) {
            const NodePlace at = place(node);
            if (at.isShown)
                waiting.push_back(node);
            node = at.end;
        }
        const bool ascending = m_order.direction == Qt::AscendingOrder;
        std::stable_sort(waiting.begin() + first, waiting.end(), [&](qint32 one, qint32 other) {
            return ascending ? m_tree.isBefore(one, other, m_order.column)
                             : m_tree.isBefore(other, one, m_order.column);
        });
        std::reverse(waiting.begin() + first, waiting.end());
    }

    static void addLines(std::vector<TreeRow> &rows)
    {
        quint64 open = 0;
        for (std::size_t i = rows.size(); i-- > 0;) {
            const unsigned depth = rows[i].depth;
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
    const bool m_isFiltered;
    TreeOrder m_order;
};

} // namespace

std::vector<TreeRow> visibleRows(const RowTree &tree, const TreeFilter &filter, TreeOrder order)
{
    return RowsMaker(tree, filter, order).rows();
}

} // namespace velmora
