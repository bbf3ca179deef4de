#include "folder/sync/sync_job.h"

#include "folder/actions/action_words.h"
#include "folder/engine/folder_engine.h"
#include "vfs/local_folder.h"

#include <algorithm>

namespace velmora {

namespace {

bool isDeletion(const OperationStep &step)
{
    return step.kind == OperationKind::Recycle || step.kind == OperationKind::Delete;
}

/// Where a step changes something.
const Place &changedPlace(const OperationStep &step)
{
    return isDeletion(step) ? step.from : step.to;
}

SyncAction actionOf(const OperationStep &step)
{
    const bool isRight = changedPlace(step).root == 1;
    if (isDeletion(step))
        return isRight ? SyncAction::DeleteRight : SyncAction::DeleteLeft;
    return isRight ? SyncAction::CopyToRight : SyncAction::CopyToLeft;
}

/// The first thing that went wrong with each step, and of those that have none an empty text.
QStringList reasonsOf(const ExecutionReport &report)
{
    QStringList reasons(report.ends.size());
    for (const OperationProblem &problem : report.problems) {
        if (problem.step >= 0 && problem.step < reasons.size() && reasons.at(problem.step).isEmpty())
            reasons[problem.step] = problemText(problem);
    }
    return reasons;
}

/// Not a failure: a person has chosen to hide it.
bool isWanted(LeftOutReason reason)
{
    return reason == LeftOutReason::HiddenByFilter || reason == LeftOutReason::HoldsHiddenEntries;
}

} // namespace

SyncAnalysis analyseFolders(const SyncQuestion &question, const CancelFlag &cancel, Progress &progress)
{
    SyncAnalysis analysis;
    FolderInput input;
    input.roots = localFolders(question.folders.left, question.folders.right);
    const FolderRunReport report{&progress, &analysis.input.problems};
    analysis.input.roots = input.roots;
    analysis.input.items = compareFolderTree(input, cancel, report);
    if (question.readsContents)
        readUnread(input, analysis.input.items, cancel, report);
    analysis.plan = planSync(analysis.input.items, question.mode);
    return analysis;
}

SyncRunResult runSyncPlan(const OperationPlan &plan, const QString &title, const CancelFlag &cancel, Progress &progress)
{
    const ExecutionReport report =
        executeJournalled(plan, FileLayer::native(), standardJournal(), {title}, cancel, progress);
    SyncRunResult result;
    result.journalId = report.journalId;
    const QStringList reasons = reasonsOf(report);
    for (qsizetype i = 0; i < report.ends.size(); ++i) {
        const OperationStep &step = report.plan.steps.at(i);
        if (report.ends.at(i) == StepEnd::NotReached)
            continue;
        const bool done = report.ends.at(i) == StepEnd::Done;
        ++(done ? result.succeeded : result.failed);
        result.lines.append({actionOf(step), shownPath(report.plan.pathOf(changedPlace(step))), reasons.at(i), done});
    }
    for (const LeftOutEntry &entry : report.plan.leftOut) {
        if (isWanted(entry.reason))
            continue;
        ++result.failed;
        result.lines.append({SyncAction::Skip, shownPath(entry.path), leftOutText(entry), false});
    }
    result.failed += report.plan.refusal == PlanRefusal::None ? 0 : 1;
    if (report.plan.refusal != PlanRefusal::None)
        result.lines.append({SyncAction::Skip, {}, refusalText(report.plan.refusal), false});
    result.lacksRecycleBin =
        std::any_of(report.problems.begin(), report.problems.end(),
                    [](const OperationProblem &problem) { return problem.code == OperationErrorCode::NoRecycleBin; });
    return result;
}

} // namespace velmora
