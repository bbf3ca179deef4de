#pragma once

#include "folder/actions/action_request.h"
#include "folder/actions/problem_list.h"
#include "folder/operations/operation_executor.h"

#include <QDateTime>

namespace velmora {

/// How a command ended, in words.
struct ActionOutcome {
    QStringList logLines;
    QString title;    ///< of the message that tells of failures
    QString headline; ///< its text: of one failure what could not be done, of several how many
    QList<ActionProblem> problems;
    qint64 succeeded = 0; ///< entries
    qint64 failed = 0;
    QStringList touched; ///< names relative to the roots, sorted, each once
    bool cancelled = false;
    bool lacksRecycleBin = false; ///< something could not be deleted for want of a recycle bin
    bool lacksJournal = false;    ///< something was left undone, since what undoing needs could not be written
    QString journalId;
};

/// Words the report of a run. Pure but for the language; costs about a microsecond a step, so it is for the worker.
/// `time` is that of the log lines.
[[nodiscard]] ActionOutcome outcomeOf(const ActionRequest &request, const ExecutionReport &report, const QTime &time);

/// The same for a plan that has no steps: the refusal, or what is left out and why, as problems.
[[nodiscard]] ActionOutcome outcomeOfNothing(const ActionRequest &request, const OperationPlan &plan);

/// "Done: %1 succeeded, %2 failed".
[[nodiscard]] QString doneText(const ActionOutcome &outcome);

/// Whether what a plan leaves out is a failure of the command, and not what a person has been shown or wants.
[[nodiscard]] bool countsAsFailure(const ActionRequest &request, LeftOutReason reason);

} // namespace velmora
