#pragma once

#include "core/sides.h"
#include "folder/engine/folder_diff_item.h"

namespace velmora {

/// Which way two trees are made to agree (the numbers are stored in records).
enum class SyncMode : qint32 {
    LeftToRight = 0, ///< the right side becomes like the left
    RightToLeft = 1, ///< the left side becomes like the right
    Mirror = 2,      ///< both get what the other has; of changed files the newer wins, of equal times the right one
    UpdateNewer = 3, ///< the same, save that changed files of equal times are left alone
};

/// The mode of a stored number; any that means none is `LeftToRight`.
[[nodiscard]] SyncMode syncModeOf(qint32 number);

/// What happens with one entry (the numbers are stored and shown).
enum class SyncAction : qint32 {
    Skip = 0,
    CopyToRight = 1,
    CopyToLeft = 2,
    DeleteRight = 3,
    DeleteLeft = 4,
    MoveOnRight = 5, ///< the right side's file `movedFrom` goes to where the left side has it
    MoveOnLeft = 6,  ///< the mirror case
};

/// One entry that does not agree, and what is to happen with it. Of a folder only the folder itself is meant: what is
/// in it has items of its own, right behind.
struct SyncPlanItem {
    QString name;      ///< relative to both folders, with "/" between the parts
    QString leftPath;  ///< absolute; empty when the left side has none
    QString rightPath; ///< the same for the right side
    qint32 action = 0; ///< a `SyncAction`
    bool isDir = false;
    qint64 leftSize = 0;  ///< bytes; of a folder the total of its contents; 0 when absent
    qint64 rightSize = 0; ///< the same for the right side
    QDateTime leftTime;   ///< last modification; invalid when absent
    QDateTime rightTime;  ///< the same for the right side
    qint32 status = 0;    ///< a `FolderDiffStatus`
    QString movedFrom;    ///< relative; where the side that lacks the file has the same one; empty: nowhere

    [[nodiscard]] SyncAction syncAction() const noexcept { return SyncAction(action); }

    friend bool operator==(const SyncPlanItem &, const SyncPlanItem &) = default;
};

/// How a plan is made. A value.
struct SyncRules {
    SyncMode mode = SyncMode::LeftToRight;
    bool ignoresHours = false; ///< times that are whole hours apart are equal, and neither file is newer
};

/// What the rules do with an entry of a comparison that is not the same on both sides.
[[nodiscard]] SyncAction syncActionFor(const FolderDiffItem &item, const SyncRules &rules);

/// An item for each entry that is not the same, in the order of the entries.
[[nodiscard]] QList<SyncPlanItem> planSync(const QList<FolderDiffItem> &items, const SyncRules &rules);

/// How many files of both sides have times that are whole hours apart: where the clocks were changed, it is all of
/// them.
[[nodiscard]] qint64 countWholeHours(const QList<FolderDiffItem> &items);

/// Whether an item can have an action: what a side has not is not copied from there, and what both have is not deleted.
[[nodiscard]] bool isPossible(const SyncPlanItem &item, SyncAction action);

[[nodiscard]] inline bool isMove(const SyncPlanItem &item)
{
    return item.syncAction() == SyncAction::MoveOnRight || item.syncAction() == SyncAction::MoveOnLeft;
}

/// Whether carrying an item out does anything: a folder that both sides have is neither made nor removed.
[[nodiscard]] bool isStep(const SyncPlanItem &item);

/// How many items have which action.
struct SyncCounts {
    qint64 copyToRight = 0;
    qint64 copyToLeft = 0;
    qint64 deletions = 0;
    qint64 moves = 0;
    qint64 skipped = 0;
    qint64 total = 0;

    [[nodiscard]] qint64 actions() const noexcept { return total - skipped; }
    friend bool operator==(const SyncCounts &, const SyncCounts &) = default;
};
[[nodiscard]] SyncCounts countSync(const QList<SyncPlanItem> &plan);
/// Counts one item more.
void addTo(SyncCounts &counts, const SyncPlanItem &item);

/// What a plan takes from one side, to ask again before much is gone.
struct SyncLoss {
    qint64 deleted = 0;        ///< entries that the plan deletes there
    qint64 present = 0;        ///< entries that are there
    bool otherIsEmpty = false; ///< the side that decides has nothing at all: a drive that is not mounted, perhaps

    /// More than half of what is there goes.
    [[nodiscard]] bool isMostOfIt() const noexcept { return deleted > present - deleted; }
    [[nodiscard]] bool isSuspicious() const noexcept { return deleted > 0 && (otherIsEmpty || isMostOfIt()); }
    friend bool operator==(const SyncLoss &, const SyncLoss &) = default;
};
/// `items`: what the plan was made from.
[[nodiscard]] Sides<SyncLoss> lossesOf(const QList<FolderDiffItem> &items, const QList<SyncPlanItem> &plan);

} // namespace velmora

Q_DECLARE_TYPEINFO(velmora::SyncPlanItem, Q_RELOCATABLE_TYPE);
