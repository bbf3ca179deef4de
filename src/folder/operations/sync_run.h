#pragma once

#include "folder/engine/sync_planner.h"
#include "folder/operations/plan_builders.h"

#include <QHash>

namespace velmora {

/// What the items of a plan say is done, by the names of the entries. Holds no paths.
struct SyncActions {
    QHash<QString, EntryAction> actions;
    QHash<QString, QString> movedFrom;
};
[[nodiscard]] SyncActions actionsOf(const QList<SyncPlanItem> &plan);

/// The steps that carry out the items of a plan, whose actions may have been changed by hand; `input` has the entries
/// that the plan was made from.
///
/// An item of a folder makes that folder, or removes it once it is empty, and no more: what is in it has items of its
/// own. So nothing newer in it is written over, nothing skipped in it is touched, and a folder that both sides have is
/// never deleted. Where an item goes against what is there (a copy of what the side has not, a deletion of what the
/// other side has, too) nothing is done.
[[nodiscard]] OperationPlan planSyncRun(PlanInput input, const SyncActions &actions, DeleteManner manner);

} // namespace velmora
