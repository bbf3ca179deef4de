#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/operations/operation_plan.h"

#include <QList>
#include <QString>

namespace velmora {

/// What became of one step of a plan, or of an entry that was left out.
struct PlanLine {
    QString path;   ///< of the place that changes, native; empty for the run as a whole
    QString reason; ///< in words, of what failed or is done with a reservation
    bool done = false;
    bool isLeftOut = false;                   ///< no step: what is below means nothing
    OperationKind kind = OperationKind::Copy; ///< what the step was to do
    int root = -1;                            ///< index into the plan's roots
};

/// How the run of a session that shows its own plan went.
struct PlanRunResult {
    QList<PlanLine> lines; ///< in the order of the plan; what was not reached has none
    qint64 succeeded = 0;
    qint64 failed = 0;
    qint64 files = 0;     ///< written, new or over others
    bool isWhole = false; ///< every step was come to, whatever became of it
    QString missingRoot;  ///< in words, when a folder was not there any more, which kept the plan from being done
    bool lacksRecycleBin = false;
    QString journalId; ///< empty when nothing was written down
};

/// Carries out a plan, which the program's journal keeps under `title`. Progress as of `executePlan`. Synchronous, for
/// a worker.
[[nodiscard]] PlanRunResult runPlan(OperationPlan plan, const QString &title, const CancelFlag &cancel,
                                    Progress &progress);

} // namespace velmora
