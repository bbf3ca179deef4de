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
    }
    return EntryAction::Nothing;
}

/// Of a folder on both sides a copy would make nothing new; of one that only the target has there is nothing to copy.
bool isPossible(const FolderDiffItem &item, EntryAction action)
{
    if (action == EntryAction::CopyToRight)
        return !item.leftPath.isEmpty();
    return action != EntryAction::CopyToLeft || !item.rightPath.isEmpty();
}

} // namespace

OperationPlan planSyncRun(const PlanInput &input, const QList<SyncPlanItem> &plan, DeleteManner manner)
{
    QHash<QString, EntryAction> actions;
    actions.reserve(plan.size());
    for (const SyncPlanItem &item : plan) {
        if (item.syncAction() != SyncAction::Skip)
            actions.insert(item.name, entryActionOf(item.syncAction()));
    }
    return planActions(
        input,
        [&actions](const FolderDiffItem &item) {
            const EntryAction action = actions.value(item.name, EntryAction::Nothing);
            return isPossible(item, action) ? action : EntryAction::Nothing;
        },
        manner);
}

} // namespace velmora
