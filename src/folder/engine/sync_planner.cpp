#include "folder/engine/sync_planner.h"

#include "folder/engine/pair_decisions.h"

#include <algorithm>

namespace velmora {

namespace {

/// Which of two changed files wins where the newer one does.
SyncAction actionByTime(const FolderDiffItem &item, SyncAction whenEqual, bool ignoresHours)
{
    const qint64 left = item.leftTime.toMSecsSinceEpoch();
    const qint64 right = item.rightTime.toMSecsSinceEpoch();
    if (left == right || (ignoresHours && areWholeHoursApart(left, right)))
        return whenEqual;
    return left > right ? SyncAction::CopyToRight : SyncAction::CopyToLeft;
}

/// What happens with entries of each status but `Same`, by mode.
struct ModeRule {
    SyncAction leftOnly;
    SyncAction rightOnly;
    SyncAction different; ///< whatever the times are, in the modes that do not ask
};

constexpr ModeRule ruleOf(SyncMode mode)
{
    switch (mode) {
    case SyncMode::LeftToRight:
        break;
    case SyncMode::RightToLeft:
        return {SyncAction::DeleteLeft, SyncAction::CopyToLeft, SyncAction::CopyToLeft};
    case SyncMode::Mirror:
        return {SyncAction::CopyToRight, SyncAction::CopyToLeft, SyncAction::CopyToLeft};
    case SyncMode::UpdateNewer:
        return {SyncAction::CopyToRight, SyncAction::CopyToLeft, SyncAction::Skip};
    }
    return {SyncAction::CopyToRight, SyncAction::DeleteRight, SyncAction::CopyToRight};
}

constexpr bool asksForTimes(SyncMode mode)
{
    return mode == SyncMode::Mirror || mode == SyncMode::UpdateNewer;
}

} // namespace

SyncMode syncModeOf(qint32 number)
{
    return number >= qint32(SyncMode::LeftToRight) && number <= qint32(SyncMode::UpdateNewer) ? SyncMode(number)
                                                                                              : SyncMode::LeftToRight;
}

SyncAction syncActionFor(const FolderDiffItem &item, const SyncRules &rules)
{
    const ModeRule rule = ruleOf(rules.mode);
    switch (item.diffStatus()) {
    case FolderDiffStatus::LeftOnly:
        return rule.leftOnly;
    case FolderDiffStatus::RightOnly:
        return rule.rightOnly;
    case FolderDiffStatus::Different:
        return asksForTimes(rules.mode) ? actionByTime(item, rule.different, rules.ignoresHours) : rule.different;
    case FolderDiffStatus::Same:
        break;
    }
    return SyncAction::Skip;
}

QList<SyncPlanItem> planSync(const QList<FolderDiffItem> &items, const SyncRules &rules)
{
    const auto differs = [](const FolderDiffItem &item) { return item.diffStatus() != FolderDiffStatus::Same; };
    QList<SyncPlanItem> plan;
    plan.reserve(std::count_if(items.begin(), items.end(), differs));
    for (const FolderDiffItem &item : items) {
        if (differs(item))
            plan.append({item.name,
                         item.leftPath,
                         item.rightPath,
                         qint32(syncActionFor(item, rules)),
                         item.isDir,
                         item.leftSize,
                         item.rightSize,
                         item.leftTime,
                         item.rightTime,
                         item.status,
                         {}});
    }
    return plan;
}

qint64 countWholeHours(const QList<FolderDiffItem> &items)
{
    return std::count_if(items.begin(), items.end(), [](const FolderDiffItem &item) {
        return !item.isDir && !item.leftPath.isEmpty() && !item.rightPath.isEmpty() &&
               areWholeHoursApart(item.leftTime.toMSecsSinceEpoch(), item.rightTime.toMSecsSinceEpoch());
    });
}

bool isPossible(const SyncPlanItem &item, SyncAction action)
{
    switch (action) {
    case SyncAction::Skip:
        break;
    case SyncAction::CopyToRight:
        return !item.leftPath.isEmpty();
    case SyncAction::CopyToLeft:
        return !item.rightPath.isEmpty();
    case SyncAction::DeleteRight:
        return item.leftPath.isEmpty();
    case SyncAction::DeleteLeft:
        return item.rightPath.isEmpty();
    case SyncAction::MoveOnRight:
        return item.rightPath.isEmpty() && !item.movedFrom.isEmpty();
    case SyncAction::MoveOnLeft:
        return item.leftPath.isEmpty() && !item.movedFrom.isEmpty();
    }
    return true;
}

bool isStep(const SyncPlanItem &item)
{
    const bool isFolderOfBoth = item.isDir && !item.leftPath.isEmpty() && !item.rightPath.isEmpty();
    return item.syncAction() != SyncAction::Skip && isPossible(item, item.syncAction()) && !isFolderOfBoth;
}

void addTo(SyncCounts &counts, const SyncPlanItem &item)
{
    ++counts.total;
    switch (item.syncAction()) {
    case SyncAction::Skip:
        ++counts.skipped;
        break;
    case SyncAction::CopyToRight:
        ++counts.copyToRight;
        break;
    case SyncAction::CopyToLeft:
        ++counts.copyToLeft;
        break;
    case SyncAction::DeleteRight:
    case SyncAction::DeleteLeft:
        ++counts.deletions;
        break;
    case SyncAction::MoveOnRight:
    case SyncAction::MoveOnLeft:
        ++counts.moves;
        break;
    }
}

SyncCounts countSync(const QList<SyncPlanItem> &plan)
{
    SyncCounts counts;
    for (const SyncPlanItem &item : plan)
        addTo(counts, item);
    return counts;
}

Sides<SyncLoss> lossesOf(const QList<FolderDiffItem> &items, const QList<SyncPlanItem> &plan)
{
    Sides<SyncLoss> losses;
    for (const FolderDiffItem &item : items) {
        for (const Side side : bothSides)
            losses[side].present += pathOn(item, side).isEmpty() ? 0 : 1;
    }
    for (const SyncPlanItem &item : plan) {
        // A folder that both sides have stays, whatever becomes of what is in it.
        losses.left.deleted += item.syncAction() == SyncAction::DeleteLeft && item.rightPath.isEmpty() ? 1 : 0;
        losses.right.deleted += item.syncAction() == SyncAction::DeleteRight && item.leftPath.isEmpty() ? 1 : 0;
    }
    losses.left.otherIsEmpty = losses.right.present == 0;
    losses.right.otherIsEmpty = losses.left.present == 0;
    return losses;
}

} // namespace velmora
