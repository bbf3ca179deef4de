#pragma once

#include <QStringList>

#include <vector>

namespace velmora {

class RowTree;

/// What a tree shows of itself while words are looked for: the nodes that hold all of them, the nodes around those, and
/// what is in them. Nodes that lead to one stand open until a person closes them. Costs a byte a node.
class TreeFilter {
public:
    /// Nothing is left out.
    TreeFilter() = default;
    TreeFilter(const QString &words, qint32 nodes);

    /// Looks through further nodes of the tree, for so long; true when it is done and the filter may be used.
    bool proceed(const RowTree &tree, int milliseconds);

    [[nodiscard]] bool isActive() const noexcept { return !m_words.isEmpty(); }
    [[nodiscard]] bool isShown(qint32 node) const { return m_marks[std::size_t(node)] & (Holds | Within | Leads); }
    [[nodiscard]] bool isExpanded(qint32 node) const { return m_marks[std::size_t(node)] & Expanded; }
    void setExpanded(qint32 node, bool expanded);

private:
    enum Mark : quint8 { Holds = 1, Within = 2, Leads = 4, Expanded = 8 };

    void look(const RowTree &tree, qint32 node);

    QStringList m_words;
    std::vector<quint8> m_marks;
    qint32 m_next = 0;
};

} // namespace velmora
