#pragma once

#include "core/sides.h"
#include "folder/actions/plan_run.h"
#include "folder/engine/sync_planner.h"

#include <QList>
#include <QString>

namespace velmora {

/// How many actions of a plan have been carried out, and how many not.
struct SyncTally {
    qint64 succeeded = 0;
    qint64 failed = 0; ///< with entries that no item names, such as hidden ones of a new folder

    friend bool operator==(const SyncTally &, const SyncTally &) = default;
};

/// Counts the items of `plan`, as the question before the run does, where the run counts its steps: a folder that goes
/// to the bin with all that is in it is one step, and a folder that both sides have is none. Of a run that did not come
/// to its end only what the run itself says is known. `folders`: what the plan is about.
[[nodiscard]] SyncTally tallySync(const QList<SyncPlanItem> &plan, const Sides<QString> &folders,
                                  const PlanRunResult &result);

} // namespace velmora
