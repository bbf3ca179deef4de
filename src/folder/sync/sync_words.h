#pragma once

#include "folder/actions/plan_run.h"
#include "folder/engine/name_conflicts.h"
#include "folder/engine/sync_planner.h"

namespace velmora {

/// What a sync session says. Pure but for the language.

/// "Copy to right".
[[nodiscard]] QString syncActionName(SyncAction action);
/// "→ Copy to right", as it stands in the plan.
[[nodiscard]] QString syncActionText(SyncAction action);

/// A line of the log.
[[nodiscard]] QString syncLogLine(const PlanLine &line);

/// "Copy right: %1 | Copy left: %2 | Delete: %3 | Skip: %4 | Total: %5", with the moves behind it when there are any.
[[nodiscard]] QString syncSummary(const SyncCounts &counts);

/// What is wrong with a name, for the log.
[[nodiscard]] QString nameConflictText(const NameConflict &conflict);

/// What is at stake when much of a side goes, in words with numbers; empty when it does not.
[[nodiscard]] QString syncLossText(const Sides<SyncLoss> &losses, const Sides<QString> &folders);

} // namespace velmora
