#pragma once

#include "core/cancel_flag.h"
#include "folder/engine/folder_diff_item.h"

#include <vector>

namespace velmora {

struct WalkNode;

/// Statuses that items have only while a run is at work.
enum PendingStatus : qint32 {
    UndecidedFiles = -1,   ///< two regular files whose contents decide
    UndecidedSpecial = -2, ///< the same, but a link to something that is no file is among them
    UndecidedFolder = -3,  ///< a folder on both sides, for its contents to decide
};

/// Items in pre-order, with the index of each item's folder, -1 at the top.
struct ItemList {
    QList<FolderDiffItem> items;
    std::vector<qint32> parents;
};

/// Moves the items out of the nodes under `root` into one list. Ends where the first folder is that was not listed
/// whole; when cancelled, also within 50 ms of the call.
[[nodiscard]] ItemList takeItems(WalkNode &root, const CancelFlag &cancel);

/// Cuts the list before the first pair of files that is undecided.
void cutAtUndecided(ItemList &list);

/// One bit for each status, to tell which of them occur.
[[nodiscard]] constexpr unsigned statusBit(FolderDiffStatus status)
{
    return 1U << unsigned(status);
}

/// The status of a folder in which these occur: `Same` when there is nothing, the common status when all is on the left
/// or all on the right only, `Same` when all is the same, else `Different`.
[[nodiscard]] FolderDiffStatus statusTogether(unsigned bits);

/// Gives each `UndecidedFolder` the status that everything under it has together, and tells of one that is the same
/// whether anything in it is unread. Linear.
void rollUpStatuses(ItemList &list);

/// Makes `time` the later of the two; an invalid one is none.
void takeLater(QDateTime &time, const QDateTime &other);

/// Adds to each folder the sizes of its direct children, and gives it the latest of their times and its own. Since
/// children come first, that makes totals of everything under it. Linear.
void addChildTotals(ItemList &list);

/// The folders of items that stand in pre-order and are named relative to one root.
[[nodiscard]] std::vector<qint32> parentsByName(const QList<FolderDiffItem> &items);

} // namespace velmora
