#include "session/list/tree_filter.h"

#include "session/list/row_tree.h"

#include <QElapsedTimer>

#include <algorithm>

namespace velmora {

TreeFilter::TreeFilter(const QString &words, qint32 nodes) : m_words(words.split(u' ', Qt::SkipEmptyParts))
{
    if (isActive())
        m_marks.resize(std::size_t(nodes));
}

bool TreeFilter::proceed(const RowTree &tree, int milliseconds)
{
    if (!isActive())
        return true;
    constexpr int nodesPerLook = 500; // at the clock
    QElapsedTimer clock;
    clock.start();
    while (m_next < qint32(m_marks.size()) && clock.elapsed() < milliseconds) {
        const qint32 stop = std::min(m_next + nodesPerLook, qint32(m_marks.size()));
        for (; m_next < stop; ++m_next)
            look(tree, m_next);
    }
    return m_next == qint32(m_marks.size());
}

void TreeFilter::look(const RowTree &tree, qint32 node)
{
    const qint32 parent = tree.parent(node);
    if (parent >= 0 && (m_marks[std::size_t(parent)] & (Holds | Within)))
        m_marks[std::size_t(node)] |= Within;
    if (!std::all_of(m_words.begin(), m_words.end(), [&](const QString &word) { return tree.holds(node, word); }))
        return;
    m_marks[std::size_t(node)] |= Holds;
    for (qint32 around = parent; around >= 0 && !(m_marks[std::size_t(around)] & Leads); around = tree.parent(around))
        m_marks[std::size_t(around)] |= Leads | Expanded;
}

void TreeFilter::setExpanded(qint32 node, bool expanded)
{
    quint8 &marks = m_marks[std::size_t(node)];
    marks = quint8(expanded ? marks | Expanded : marks & ~Expanded);
}

} // namespace velmora
