#include "folder/operations/sync_run.h"

#include <utility>

namespace velmora {

namespace {

EntryAction entryActionOf(SyncAction action)
{
    switch (action) {
    case SyncAction::Skip:
        break;
    case SyncAction::CopyToRight:
        return EntryAction::CopyToRight;
    case SyncAction::CopyToLeft:
        return EntryAction::CopyToLeft;
    case SyncAction::DeleteRight:
        return EntryAction::DeleteRight;
    case SyncAction::DeleteLeft:
        return EntryAction::DeleteLeft;
    case SyncAction::MoveOnRight:
        return EntryAction::MoveOnRight;
    case SyncAction::MoveOnLeft:
        return EntryAction::MoveOnLeft;
    }
    return EntryAction::Nothing;
}

} // namespace

SyncActions actionsOf(const QList<SyncPlanItem> &plan)
{
    SyncActions actions;
    actions.actions.reserve(plan.size());
    for (const SyncPlanItem &item : plan) {
        // Of a folder on both sides with all its contents on one, the plan may say to delete it or to copy it back.
        if (item.syncAction() != SyncAction::Skip && isPossible(item, item.syncAction()))
            actions.actions.insert(item.name, entryActionOf(item.syncAction()));
        if (!item.movedFrom.isEmpty())
            actions.movedFrom.insert(item.name, item.movedFrom);
    }
    return actions;
}

OperationPlan planSyncRun(PlanInput input, const SyncActions &actions, DeleteManner manner)
{
    return planActions(
        std::move(input),
        [&actions](const FolderDiffItem &item) { return actions.actions.value(item.name, EntryAction::Nothing); },
        manner, actions.movedFrom);
}

} // namespace velmora
