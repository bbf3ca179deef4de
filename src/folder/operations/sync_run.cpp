#include "folder/operations/sync_run.h"

#include <QHash>

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

OperationPlan planSyncRun(const PlanInput &input, const QList<SyncPlanItem> &plan, DeleteManner manner)
{
    QHash<QString, EntryAction> actions;
    QHash<QString, QString> movedFrom;
    actions.reserve(plan.size());
    for (const SyncPlanItem &item : plan) {
        // Of a folder on both sides with all its contents on one, the plan may say to delete it or to copy it back.
        if (item.syncAction() != SyncAction::Skip && isPossible(item, item.syncAction()))
            actions.insert(item.name, entryActionOf(item.syncAction()));
        if (!item.movedFrom.isEmpty())
            movedFrom.insert(item.name, item.movedFrom);
    }
    return planActions(
        input, [&actions](const FolderDiffItem &item) { return actions.value(item.name, EntryAction::Nothing); },
        manner, movedFrom);
}

} // namespace velmora
