#include "session/list/row_tree.h"

namespace velmora {

void RowTree::setAllExpanded(qint32 node, bool expanded)
{
    const qint32 last = node < 0 ? count() : end(node);
    for (qint32 at = std::max(node, 0); at < last; ++at)
        setExpanded(at, expanded);
}

bool RowTree::isShown(qint32 /*node*/) const
{
    return true;
}

NodePlace RowTree::place(qint32 node) const
{
    return {end(node), quint16(depth(node)), isExpanded(node), isShown(node)};
}

Qt::Alignment RowTree::alignment(int /*column*/) const
{
    return Qt::AlignLeft | Qt::AlignVCenter;
}

RowPicture RowTree::picture(qint32 /*node*/) const
{
    return RowPicture::None;
}

QVariant RowTree::data(qint32 /*node*/, int /*column*/, int /*role*/) const
{
    return {};
}

bool RowTree::isBefore(qint32 one, qint32 other, int column) const
{
    return QString::localeAwareCompare(text(one, column), text(other, column)) < 0;
}

bool RowTree::holds(qint32 node, const QString &word) const
{
    return text(node, 0).contains(word, Qt::CaseInsensitive);
}

FixedRowTree::FixedRowTree(std::vector<quint16> depths)
    : m_depths(std::move(depths)),
      m_parents(m_depths.size(), -1),
      m_ends(m_depths.size()),
      m_expanded(m_depths.size(), false)
{
    std::vector<qint32> around; // the nodes that the current one is in, by depth
    const auto closeFrom = [&](std::size_t depth, std::size_t node) {
        for (; around.size() > depth; around.pop_back())
            m_ends[std::size_t(around.back())] = qint32(node);
    };
    for (std::size_t node = 0; node < m_depths.size(); ++node) {
        closeFrom(m_depths[node], node);
        Q_ASSERT(around.size() == m_depths[node]);
        if (!around.empty())
            m_parents[node] = around.back();
        around.push_back(qint32(node));
    }
    closeFrom(0, m_depths.size());
}

} // namespace velmora
