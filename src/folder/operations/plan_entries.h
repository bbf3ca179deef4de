#pragma once

#include "core/path_names.h"
#include "folder/operations/plan_builders.h"

#include <vector>

namespace velmora {

/// The root of a plan that stands for a side.
[[nodiscard]] constexpr int rootOf(Side side)
{
    return side == Side::Left ? 0 : 1;
}

/// True when `path` is `folder` or below it, by the text alone.
[[nodiscard]] inline bool isOrIsInside(const QString &path, const QString &folder)
{
    return path == folder || isInside(path, folder);
}

/// What a comparison says of one entry of one side.
struct SideEntry {
    QString relative; ///< where it is below its root, or would be
    bool isThere = false;
};

/// An item with what follows from its place in the list.
struct PlanEntry {
    const FolderDiffItem *item = nullptr;
    Sides<SideEntry> sides;
    int parent = -1;
    bool isHidden = false;
    bool holdsHidden = false;
    bool hasEntries = false;

    [[nodiscard]] const SideEntry &on(Side side) const { return sides[side]; }
    [[nodiscard]] SideEntry &on(Side side) { return sides[side]; }
    [[nodiscard]] bool isOnBoth() const { return sides.left.isThere && sides.right.isThere; }
    /// A comparison goes into folders that are on both sides, and those that differ hold what differs.
    [[nodiscard]] bool isFileAgainstFolder() const
    {
        return item->isDir && isOnBoth() && item->diffStatus() == FolderDiffStatus::Different && !hasEntries;
    }
    [[nodiscard]] bool isFolder() const { return item->isDir && !isFileAgainstFolder(); }
};

/// What the comparison says of an entry; nothing where it does not tell which side is the folder.
[[nodiscard]] SeenEntry seenOn(const PlanEntry &entry, Side side);

/// The filters of `input` for entries that are no items of it.
[[nodiscard]] std::function<bool(const QString &path, const NodeState &node)> unlistedFilter(const PlanInput &input);

/// The items of a comparison as a tree. The input must outlive it.
class PlanEntries {
public:
    explicit PlanEntries(const PlanInput &input);

    [[nodiscard]] const QString &root(Side side) const { return m_input.roots[side].path; }
    [[nodiscard]] const std::vector<PlanEntry> &all() const { return m_entries; }
    [[nodiscard]] const PlanEntry &at(int index) const { return m_entries[std::size_t(index)]; }

    /// For each entry whether the selection covers it; 2 for those that are selected themselves.
    [[nodiscard]] std::vector<char> covered(const PlanSelection &selection) const;

private:
    void place(PlanEntry &entry) const;
    void hide(PlanEntry &entry);

    const PlanInput &m_input;
    std::vector<PlanEntry> m_entries;
};

} // namespace velmora
