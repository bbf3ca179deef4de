#pragma once

#include <QStringList>
#include <QVariant>

#include <vector>

namespace velmora {

/// The picture before a name in a tree.
enum class RowPicture : quint8 { None, Folder, File };

/// Where a node stands, as a pass over many nodes needs it.
struct NodePlace {
    qint32 end = 0; ///< as `RowTree` says it, as what follows
    quint16 depth = 0;
    bool isExpanded = false;
    bool isShown = true;
};

/// What a tree of rows holds: where its nodes stand, and their texts, which are made when they are asked for.
///
/// Nodes are numbered from 0, each before what is in it and siblings in their own order. A session shows such a tree
/// in three steps:
///
///     struct Keys final : FixedRowTree {             // or `RowTree`, when the nodes are kept elsewhere
///         Keys(...) : FixedRowTree(depths) {}        // 0 for the top level, one more for what is in a node
///         QStringList headings() const override;     // the columns; the tree is drawn in the first
///         QString text(qint32 node, int column) const override;
///     };
///     auto *model = new TreeModel(std::make_unique<Keys>(...), this);
///     auto *view = new TreeView(*model, this);
///
/// The view draws lines, signs, pictures and ticks, has the keys and clicks of a tree, finds names that are typed,
/// sorts by a click on a heading, and says by signals what a person wants of a row. `TreeModel::setFilter` leaves what
/// holds some words, `setTree` brings another tree. A change of the tree itself is followed by `TreeModel::update`.
/// What is drawn in a way of its own needs a delegate derived from `TreeDelegate`; its other columns, an ordinary
/// delegate set with `setItemDelegateForColumn`.
class RowTree {
public:
    RowTree() = default;
    Q_DISABLE_COPY_MOVE(RowTree)
    virtual ~RowTree() = default;

    // Where nodes stand. Asked for very often.
    [[nodiscard]] virtual qint32 count() const = 0;
    /// -1 at the top.
    [[nodiscard]] virtual qint32 parent(qint32 node) const = 0;
    /// The node after the last one in this, or after this one when nothing is in it.
    [[nodiscard]] virtual qint32 end(qint32 node) const = 0;
    [[nodiscard]] virtual int depth(qint32 node) const = 0;
    /// Whether there is or may be something to see in it.
    [[nodiscard]] virtual bool isExpandable(qint32 node) const { return end(node) > node + 1; }
    [[nodiscard]] virtual bool isExpanded(qint32 node) const = 0;
    virtual void setExpanded(qint32 node, bool expanded) = 0;
    /// Opens or closes everything in a node and itself, or the whole tree for -1.
    virtual void setAllExpanded(qint32 node, bool expanded);
    /// What is not shown hides what is in it.
    [[nodiscard]] virtual bool isShown(qint32 node) const;
    /// All of this at once. A tree of very many nodes looks for a node only once.
    [[nodiscard]] virtual NodePlace place(qint32 node) const;

    // What they say.
    /// One for each column, translated.
    [[nodiscard]] virtual QStringList headings() const = 0;
    [[nodiscard]] virtual QString text(qint32 node, int column) const = 0;
    [[nodiscard]] virtual Qt::Alignment alignment(int column) const;
    /// A plain text, shown as a tool tip; the text itself unless a tree says more.
    [[nodiscard]] virtual QString hint(qint32 node, int column) const { return text(node, column); }
    [[nodiscard]] virtual RowPicture picture(qint32 node) const;
    /// For other roles: `Qt::ForegroundRole`, `Qt::FontRole`, `Qt::AccessibleTextRole`, roles of a delegate's own, and
    /// `Qt::CheckStateRole` in the first column, for nodes with a tick.
    [[nodiscard]] virtual QVariant data(qint32 node, int column, int role) const;

    /// Whether one sibling stands before the other in the ascending order of a column: by their texts unless a tree
    /// knows better.
    [[nodiscard]] virtual bool isBefore(qint32 one, qint32 other, int column) const;
    /// Whether the node itself holds a word that is looked for; in its first column unless a tree says otherwise.
    [[nodiscard]] virtual bool holds(qint32 node, const QString &word) const;
};

/// A tree whose shape is known when it is made. Costs 11 bytes a node.
class FixedRowTree : public RowTree {
public:
    [[nodiscard]] qint32 count() const override { return qint32(m_parents.size()); }
    [[nodiscard]] qint32 parent(qint32 node) const override { return m_parents[std::size_t(node)]; }
    [[nodiscard]] qint32 end(qint32 node) const override { return m_ends[std::size_t(node)]; }
    [[nodiscard]] int depth(qint32 node) const override { return m_depths[std::size_t(node)]; }
    [[nodiscard]] bool isExpanded(qint32 node) const override { return m_expanded[std::size_t(node)]; }
    void setExpanded(qint32 node, bool expanded) override { m_expanded[std::size_t(node)] = expanded; }
    [[nodiscard]] NodePlace place(qint32 node) const override
    {
        const auto at = std::size_t(node);
        return {m_ends[at], m_depths[at], m_expanded[at], isShown(node)};
    }

protected:
    /// The depths of the nodes in their order: 0 first, and each at most one more than the one before it. Everything is
    /// closed.
    explicit FixedRowTree(std::vector<quint16> depths);

private:
    std::vector<quint16> m_depths;
    std::vector<qint32> m_parents;
    std::vector<qint32> m_ends;
    std::vector<bool> m_expanded;
};

} // namespace velmora
