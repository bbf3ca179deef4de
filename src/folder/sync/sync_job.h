#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/engine/name_conflicts.h"
#include "folder/engine/sync_moves.h"
#include "folder/operations/sync_run.h"

namespace velmora {

/// What is analysed. A value.
struct SyncQuestion {
    Sides<QString> folders; ///< absolute
    SyncRules rules;
    bool readsContents = false; ///< also of files whose sizes and times agree
    bool findsMoves = false;    ///< reads what may have moved
};

/// A plan with what a person should know of it before it is carried out.
struct SyncProposal {
    QList<SyncPlanItem> items;
    QList<NameConflict> conflicts;
};
[[nodiscard]] SyncProposal proposeSync(const QList<FolderDiffItem> &items, const QList<MovedFile> &moved,
                                       const SyncRules &rules);

/// What was found, and the plan that follows.
struct SyncAnalysis {
    PlanInput input;
    QList<MovedFile> moved; ///< where they were looked for
    SyncProposal proposal;
    qint64 likelyMoves = 0; ///< files that size and time take for moved
    qint64 wholeHours = 0;  ///< files whose times are whole hours apart
};

/// Compares both trees by size and time, and by content where these leave it open, and plans what the mode says. For
/// a worker.
[[nodiscard]] SyncAnalysis analyseFolders(const SyncQuestion &question, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
