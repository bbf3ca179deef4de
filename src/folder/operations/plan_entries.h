#pragma once

#include "folder/operations/plan_builders.h"

#include <array>
#include <vector>

namespace velmora {

inline constexpr std::array<PlanSide, 2> bothSides{PlanSide::Left, PlanSide::Right};

/// The root of a plan that stands for a side.
[[nodiscard]] constexpr int rootOf(PlanSide side)
{
    return side == PlanSide::Left ? 0 : 1;
}

[[nodiscard]] QString joinedPath(const QString &folder, const QString &name);
/// True when `path` is `folder` or below it, by the text alone.
[[nodiscard]] bool pathLiesIn(const QString &path, const QString &folder);
[[nodiscard]] QString bareName(const QString &path);
/// In the form that the paths of entries begin with.
[[nodiscard]] QString cleanRoot(const QString &path);

/// What a comparison says of one entry of one side.
struct SideEntry {
    QString relative; ///< where it is below its root, or would be
    bool isThere = false;
};

/// An item with what follows from its place in the list.
struct PlanEntry {
    const FolderDiffItem *item = nullptr;
    std::array<SideEntry, 2> sides;
    int parent = -1;
    bool isHidden = false;
    bool holdsHidden = false;
    bool hasEntries = false;

    [[nodiscard]] const SideEntry &on(PlanSide side) const { return sides[std::size_t(rootOf(side))]; }
    [[nodiscard]] SideEntry &on(PlanSide side) { return sides[std::size_t(rootOf(side))]; }
    [[nodiscard]] bool isOnBoth() const { return sides[0].isThere && sides[1].isThere; }
    /// A comparison goes into folders that are on both sides, and those that differ hold what differs.
    [[nodiscard]] bool isFileAgainstFolder() const
    {
        return item->isDir && isOnBoth() && item->diffStatus() == FolderDiffStatus::Different && !hasEntries;
    }
    [[nodiscard]] bool isFolder() const { return item->isDir && !isFileAgainstFolder(); }
};

[[nodiscard]] const QString &pathOn(const FolderDiffItem &item, PlanSide side);
/// What the comparison says of an entry; nothing where it does not tell which side is the folder.
[[nodiscard]] SeenEntry seenOn(const PlanEntry &entry, PlanSide side);

/// The filters of `input` for entries that are no items of it.
[[nodiscard]] std::function<bool(const QString &path, const NodeState &node)> unlistedFilter(const PlanInput &input);

/// The items of a comparison as a tree. The input must outlive it.
class PlanEntries {
public:
    explicit PlanEntries(const PlanInput &input);

    [[nodiscard]] const QString &root(PlanSide side) const { return m_roots[std::size_t(rootOf(side))]; }
    [[nodiscard]] const std::vector<PlanEntry> &all() const { return m_entries; }
    [[nodiscard]] const PlanEntry &at(int index) const { return m_entries[std::size_t(index)]; }

    /// For each entry whether the selection covers it; 2 for those that are selected themselves.
    [[nodiscard]] std::vector<char> covered(const PlanSelection &selection) const;

private:
    void place(PlanEntry &entry) const;
    void hide(PlanEntry &entry);

    const PlanInput &m_input;
    std::array<QString, 2> m_roots;
    std::vector<PlanEntry> m_entries;
};

} // namespace velmora
