#pragma once

#include "core/cancel_flag.h"
#include "folder/engine/folder_diff_item.h"
#include "platform/file_access.h"

#include <atomic>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

namespace velmora {

struct FolderInput;
struct FolderRunReport;
template <typename Item>
class WorkStack;

/// One side of a folder pair on the way down.
struct WalkSide {
    QString path; ///< empty where the side has no such folder, or its contents are not looked at
    std::optional<FileIdentity> identity;

    [[nodiscard]] bool isThere() const noexcept { return !path.isEmpty(); }
};

/// A folder pair whose contents are listed, or are still to be.
struct WalkNode {
    const WalkNode *parent = nullptr;
    QString name; ///< relative name, empty at the root unless it has a prefix
    Sides<WalkSide> sides;

    /// What the visitor made of the contents; `children` are the folders among them, in the same order.
    std::vector<FolderDiffItem> items;
    struct Child {
        std::size_t item;
        WalkNode *node;
    };
    std::vector<Child> children;
    bool complete = false; ///< false when the run was cancelled before all items were there
};

/// A folder that a visitor found and wants to be visited.
struct WalkDescent {
    QString name;
    Sides<const FolderEntry *> entries; ///< null where that side is not to be looked at
    std::size_t item = 0;               ///< the index of its item in the node
};

/// Reads pairs of folders from the root down, on as many threads as are good for it, without recursion.
///
/// The visitor is called once for each pair, on any of these threads, several at a time, with the entries of both
/// sides; it fills `node.items` and says where to go on. Each folder link is followed unless it leads to a folder that
/// it is in.
class FolderWalk {
public:
    using Entries = std::vector<FolderEntry>;
    /// Sets `node.complete` when it was not cancelled.
    using Visitor = std::function<std::vector<WalkDescent>(int worker, WalkNode &node, Sides<Entries> &entries)>;

    /// Of `input`, which outlives the walk, the roots, the prefix and the hidden entries count.
    FolderWalk(const FolderInput &input, int threads, CancelFlag cancel, Visitor visitor);
    FolderWalk(const FolderWalk &) = delete;
    FolderWalk &operator=(const FolderWalk &) = delete;

    /// Walks down and returns the node of the roots, which lives as long as the walk. Call once.
    WalkNode *run(const FolderRunReport &report);

private:
    void process(int worker, WalkNode &node, WorkStack<WalkNode *> &stack);
    [[nodiscard]] Entries read(const WalkNode &node, Side side);
    [[nodiscard]] WalkSide descend(const WalkNode &node, const FolderEntry *entry, Side side);
    [[nodiscard]] bool closesCycle(const WalkNode &node, const WalkSide &next, bool isLink, Side side) const;
    [[nodiscard]] std::optional<FileIdentity> identityOf(const WalkSide &folder, Side side) const;
    void note(FolderProblem::Kind kind, const QString &path, Side side);

    const FolderInput &m_input;
    int m_threads;
    CancelFlag m_cancel;
    Visitor m_visitor;
    std::mutex m_mutex; ///< guards the two below
    std::deque<WalkNode> m_nodes;
    QList<FolderProblem> m_problems;
    std::atomic<qint64> m_entries{0};
};

} // namespace velmora
