#include "folder/actions/plan_run.h"

#include "folder/actions/action_words.h"
#include "folder/operations/journal_place.h"
#include "session/shown_path.h"

#include <algorithm>
#include <utility>

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

PlanLine leftOutLine(const QString &path, const QString &reason)
{
    PlanLine line;
    line.path = path;
    line.reason = reason;
    line.isLeftOut = true;
    return line;
}

void addSteps(const ExecutionReport &report, PlanRunResult &result)
{
    const QStringList reasons = reasonsOf(report);
    for (qsizetype i = 0; i < report.ends.size(); ++i) {
        if (report.ends.at(i) == StepEnd::NotReached)
            continue;
        const OperationStep &step = report.plan.steps.at(i);
        const bool done = report.ends.at(i) == StepEnd::Done;
        ++(done ? result.succeeded : result.failed);
        const Place &place = changedPlace(step);
        result.lines.append({shownPath(report.plan.pathOf(place)), reasons.at(i), done, false, step.kind, place.root});
    }
}

void addLeftOut(const ExecutionReport &report, PlanRunResult &result)
{
    for (const LeftOutEntry &entry : report.plan.leftOut) {
        if (!isWanted(entry.reason))
            result.lines.append(leftOutLine(shownPath(entry.path), leftOutText(entry)));
    }
    if (report.plan.refusal != PlanRefusal::None && report.plan.refusal != PlanRefusal::Cancelled)
        result.lines.append(leftOutLine({}, refusalText(report.plan)));
    result.failed +=
        std::count_if(result.lines.begin(), result.lines.end(), [](const PlanLine &line) { return line.isLeftOut; });
}

/// What is not done for want of a folder has one line and one reason.
void addMissingRoot(const ExecutionReport &report, PlanRunResult &result)
{
    for (const OperationProblem &problem : report.problems) {
        if (problem.code != OperationErrorCode::RootMissing)
            continue;
        result.missingRoot = problemText(problem);
        result.lines.append(leftOutLine({}, result.missingRoot));
        result.failed += problem.steps;
    }
    if (report.plan.refusal == PlanRefusal::RootMissing)
        result.missingRoot = refusalText(report.plan);
}

} // namespace

PlanRunResult runPlan(OperationPlan plan, const QString &title, const CancelFlag &cancel, Progress &progress)
{
    const ExecutionReport report =
        executeJournalled(std::move(plan), FileLayer::native(), standardJournal(), {title}, cancel, progress);
    PlanRunResult result;
    result.journalId = report.journalId;
    result.files = report.done.writtenFiles + report.done.replacedFiles;
    addSteps(report, result);
    addLeftOut(report, result);
    addMissingRoot(report, result);
    result.isWhole = report.plan.refusal == PlanRefusal::None && !report.ends.contains(StepEnd::NotReached);
    result.lacksRecycleBin =
        std::any_of(report.problems.begin(), report.problems.end(),
                    [](const OperationProblem &problem) { return problem.code == OperationErrorCode::NoRecycleBin; });
    return result;
}

} // namespace velmora
