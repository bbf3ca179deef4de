#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/operations/sync_run.h"

namespace velmora {

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

/// Compares both trees by size and time, and by content where these leave it open, and plans what the mode says. For
/// a worker.
[[nodiscard]] SyncAnalysis analyseFolders(const SyncQuestion &question, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
