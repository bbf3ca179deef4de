#pragma once

#include "core/cancel_flag.h"
#include "folder/engine/folder_diff_item.h"
#include "folder/engine/folder_filter.h"
#include "folder/engine/folder_mark.h"

#include <QList>
#include <QSet>
#include <QString>

#include <memory>
#include <vector>

namespace velmora {

/// How an entry of the view stands: what its item says, or for a folder what it contains of what is shown.
enum class RowState : quint8 {
    Unknown,  ///< nobody has looked yet
    Scanning, ///< somebody is looking
    Same,
    LeftOnly,
    RightOnly,
    Different,
    Filtered, ///< a folder of which filters hide everything
};

/// How many files stand how, and what filters hide.
struct FolderCounts {
    qint64 same = 0;
    qint64 unread = 0; ///< of these, how many by size and time alone
    qint64 leftOnly = 0;
    qint64 rightOnly = 0;
    qint64 different = 0;
    qint64 unknown = 0;
    qint64 folders = 0; ///< shown ones
    qint64 hidden = 0;  ///< files and folders, with what is in them

    [[nodiscard]] qint64 files() const noexcept { return same + leftOnly + rightOnly + different + unknown; }

    friend bool operator==(const FolderCounts &, const FolderCounts &) = default;
};

/// The result of a folder comparison as a tree: the items in display order (folders first, then in natural order, each
/// folder before what is in it), and for each what the view needs to know of its place.
///
/// A value for one thread at a time; a copy costs a list of the nodes. Nodes are numbered from 0 in display order; the
/// numbers change with `apply`, which tells how. Marks and counts are those of the last `rollUp`. Every operation is
/// linear at most.
class FolderTree {
public:
    /// The status of an item that nobody has decided; none that the engine uses.
    static constexpr qint32 unknownStatus = -100;

    struct Node {
        qint32 parent = -1; ///< -1 at the top
        qint32 end = 0;     ///< the node after the last one under this
        qint32 nameStart = 0;
        quint16 depth = 0;
        MarkSet left;
        MarkSet right;
        bool expanded = false;
        bool unloaded = false;   ///< a folder whose contents have not been read
        bool scanning = false;   ///< about to be read or compared
        bool hidden = false;     ///< by a filter
        bool ignored = false;    ///< shown, and no difference whatever it is
        bool unreadable = false; ///< it, or all of what is in it, could not be read
        bool unsure = false;     ///< on one side, and nobody could look for it on the other

        [[nodiscard]] MarkSet on(Side side) const noexcept { return side == Side::Left ? left : right; }
    };

    /// What now stands in place of an entry: nothing, or the entry itself followed by what is in it.
    struct Patch {
        QString name; ///< relative, of the entry
        std::shared_ptr<const FolderTree> branch;
    };

    FolderTree() = default;
    /// From items in pre-order, whatever the order of siblings. Names are relative to one root.
    explicit FolderTree(QList<FolderDiffItem> items);
    /// The same with siblings in the order in which they come: for `judge`, `rollUp` and `shownItems`, not for patches.
    [[nodiscard]] static FolderTree inGivenOrder(QList<FolderDiffItem> items);

    [[nodiscard]] qint32 size() const noexcept { return qint32(m_nodes.size()); }
    [[nodiscard]] bool isEmpty() const noexcept { return m_nodes.empty(); }
    [[nodiscard]] const QList<FolderDiffItem> &items() const noexcept { return m_items; }
    [[nodiscard]] const FolderDiffItem &item(qint32 node) const { return m_items.at(node); }
    [[nodiscard]] const Node &node(qint32 node) const { return m_nodes[std::size_t(node)]; }
    [[nodiscard]] QStringView bareName(qint32 node) const;
    [[nodiscard]] RowState state(qint32 node) const;
    /// The same by size and time alone, or a folder that is the same with such a file in it.
    [[nodiscard]] bool isUnread(qint32 node) const { return item(node).isUnread && state(node) == RowState::Same; }
    /// Whether there is or may be something to see in it.
    [[nodiscard]] bool isExpandable(qint32 node) const;
    [[nodiscard]] const FolderCounts &counts() const noexcept { return m_counts; }

    /// How many entries are directly in a folder.
    [[nodiscard]] qint32 childCount(qint32 folder) const;
    /// The node of a relative name, -1 when there is none.
    [[nodiscard]] qint32 find(const QString &name) const;

    void setExpanded(qint32 node, bool expanded) { at(node).expanded = expanded; }
    void setAllExpanded(bool expanded);
    [[nodiscard]] QSet<QString> expandedNames() const;
    void expand(const QSet<QString> &names);

    void setUnloaded(qint32 node, bool unloaded) { at(node).unloaded = unloaded; }
    void setScanning(qint32 node, bool scanning) { at(node).scanning = scanning; }
    /// Marks what these problems are about: a folder that cannot be read may look empty, and what is on the other side
    /// alone is not known to be missing. Looks at every node when there is a problem.
    void markUnreadable(const QList<FolderProblem> &problems, const Sides<QString> &roots);
    /// `status` is a `FolderDiffStatus` or `unknownStatus`.
    void setStatus(qint32 node, qint32 status);
    /// Replaces what is known of an entry whose kind has not changed.
    void setItem(qint32 node, const FolderDiffItem &item) { m_items[node] = item; }

    /// What a filter says of each item.
    struct Verdicts {
        std::vector<bool> hidden;
        std::vector<bool> ignored;
    };
    /// Asks `filter` about each item; names in `ignoredNames` are bare. Incomplete, and not to be used, when cancelled.
    [[nodiscard]] static Verdicts judge(const QList<FolderDiffItem> &items, const FolderFilter &filter,
                                        const QSet<QString> &ignoredNames, const CancelFlag &cancel = {});
    /// Takes verdicts on exactly these items.
    void setVerdicts(const Verdicts &verdicts);

    /// Puts the branches in place of their entries, or where they belong, and returns the new number of each old node,
    /// -1 for those that are gone. What was expanded stays so. Patches whose folder is not there or not loaded are
    /// dropped, as are those inside another's. Sizes, times and statuses of the folders around follow.
    std::vector<qint32> apply(const std::vector<Patch> &patches);

    /// Works out statuses and marks of folders from what is in them, and the counts.
    void rollUp();

private:
    struct Edit {
        qint32 begin;
        qint32 end;
        qint32 parent;
        const FolderTree *branch; ///< null for nothing
    };

    [[nodiscard]] Node &at(qint32 node) { return m_nodes[std::size_t(node)]; }
    void takeInOrder(QList<FolderDiffItem> items, const std::vector<qint32> &order, const std::vector<qint32> &parents);
    void completeNodes();
    [[nodiscard]] std::vector<Edit> editsFor(const std::vector<Patch> &patches) const;
    [[nodiscard]] qint32 placeFor(const FolderDiffItem &item, qint32 parent) const;
    /// Puts branches of the same shape in the place of single entries; false, and nothing done, when one is not.
    [[nodiscard]] bool overwrite(const std::vector<Edit> &edits);
    void appendBranch(const FolderTree &branch, const Edit &edit, qint32 newParent, FolderTree &result) const;
    /// Adds up these folders and those around them anew.
    void addTotalsAbove(const std::vector<qint32> &touched);
    void addTotals(qint32 folder);
    /// Of what is in a folder, or of everything for -1.
    void markUnsure(qint32 folder, Side missing);
    void markFile(qint32 node);
    void markFolder(qint32 node, bool hasContents);
    void count(qint32 node);

    QList<FolderDiffItem> m_items;
    std::vector<Node> m_nodes; ///< parallel to the items
    FolderCounts m_counts;
};

/// The items that filters do not hide, in the order of the tree; a hidden folder hides what is in it. Folders on both
/// sides have the status of what is shown of their contents; sizes and times stay.
[[nodiscard]] QList<FolderDiffItem> shownItems(const FolderTree &tree);

/// True when entry `left` is listed before its sibling `right`.
[[nodiscard]] bool comesBefore(const FolderDiffItem &left, const FolderDiffItem &right);

} // namespace velmora
