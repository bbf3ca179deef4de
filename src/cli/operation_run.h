#pragma once

#include "cli/command_line.h"
#include "folder/operations/operation_plan.h"

namespace velmora::cli {

/// How a run on files went.
struct OperationOutcome {
    qint64 succeeded = 0; ///< steps: a file written or removed, a folder made or removed
    qint64 failed = 0;    ///< steps and entries that were left alone, save those that the plan leaves out by wish
    QString journalId;    ///< by which it can be undone; empty when nothing was done
};

/// Carries out a plan, which the journal keeps under `title`, and tells what went wrong on the error stream.
[[nodiscard]] OperationOutcome runOperation(OperationPlan plan, const QString &title, const Streams &streams);

} // namespace velmora::cli
