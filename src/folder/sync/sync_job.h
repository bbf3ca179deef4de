#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/operations/journal_place.h"
#include "folder/operations/sync_run.h"

namespace velmora {

/// What a sync session has its worker do. All synchronous, for a worker.

/// What is analysed. A value.
struct SyncQuestion {
    Sides<QString> folders; ///< absolute
    SyncMode mode = SyncMode::LeftToRight;
    bool readsContents = false; ///< also of files whose sizes and times agree
};

/// What was found, and the plan that follows.
struct SyncAnalysis {
    PlanInput input;
    QList<SyncPlanItem> plan;
};

/// Compares both trees by size and time, and by content where these leave it open, and plans what the mode says.
[[nodiscard]] SyncAnalysis analyseFolders(const SyncQuestion &question, const CancelFlag &cancel, Progress &progress);

/// What became of one item of a plan.
struct SyncLine {
    SyncAction action = SyncAction::Skip;
    QString path;   ///< native
    QString reason; ///< in words, of what failed
    bool done = false;
};

/// How a run went.
struct SyncRunResult {
    QList<SyncLine> lines; ///< in the order of the plan; what was not reached has none
    qint64 succeeded = 0;
    qint64 failed = 0;
    bool lacksRecycleBin = false;
    QString journalId; ///< empty when nothing was written down
};

/// Carries out a plan of `planSyncRun`, which the journal keeps under `title`. Progress as of `executePlan`.
[[nodiscard]] SyncRunResult runSyncPlan(const OperationPlan &plan, const QString &title, const CancelFlag &cancel,
                                        Progress &progress);

} // namespace velmora
