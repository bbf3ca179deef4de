#pragma once

#include "cli/command_line.h"
#include "folder/operations/operation_plan.h"

namespace velmora::cli {

/// How a synchronisation went.
struct SyncOutcome {
    qint64 succeeded = 0; ///< steps: a file written or removed, a folder made or removed
    qint64 failed = 0;    ///< steps and entries that were left alone, save those that the plan skips
    QString journalId;    ///< by which it can be undone; empty when nothing was done
};

/// Carries out `plan` and tells what went wrong on the error stream.
[[nodiscard]] SyncOutcome runSync(const OperationPlan &plan, const Streams &streams);

} // namespace velmora::cli
