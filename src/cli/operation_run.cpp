#include "cli/operation_run.h"

#include "cli/command.h"
#include "core/settings_store.h"
#include "core/visible_name.h"
#include "folder/operations/journal_place.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace velmora::cli {

namespace {

const char *refusalText(PlanRefusal refusal)
{
    switch (refusal) {
    case PlanRefusal::None:
        break;
    case PlanRefusal::ReadOnlySide:
        return "nothing may be written there";
    case PlanRefusal::OverlappingRoots:
        return "one of the two folders is the other, or lies in it";
    case PlanRefusal::RootMissing:
        return "the folder is not there, cannot be opened, or is another one than it was";
    case PlanRefusal::NameNotAllowed:
        return "there can be no such name";
    case PlanRefusal::NoLocalFolder:
        return "the entries are no files of this system";
    case PlanRefusal::Cancelled:
        return "cancelled";
    }
    return "";
}

const char *reasonText(LeftOutReason reason)
{
    switch (reason) {
    case LeftOutReason::FileAgainstFolder:
        return "is a file on one side and a folder on the other";
    case LeftOutReason::HoldsHiddenEntries:
    case LeftOutReason::HoldsUnlistedEntries:
        return "stays, since it holds what the comparison does not list";
    case LeftOutReason::BelowLink:
        return "is reached through a link only";
    case LeftOutReason::ChangedSinceCompared:
        return "has changed since it was compared";
    case LeftOutReason::NotReadable:
        return "cannot be read";
    case LeftOutReason::UnsupportedKind:
        return "is no file, folder or link";
    case LeftOutReason::NameNotAllowed:
        return "has a name that the other side cannot hold";
    default:
        return "is left as it is";
    }
}

const char *errorText(OperationErrorCode code)
{
    switch (code) {
    case OperationErrorCode::SourceMissing:
    case OperationErrorCode::SourceChanged:
    case OperationErrorCode::TargetChanged:
    case OperationErrorCode::TargetAppeared:
    case OperationErrorCode::CounterpartAppeared:
        return "has changed since it was compared";
    case OperationErrorCode::RootMissing:
        return "the folder is no longer where it was, so the run was stopped";
    case OperationErrorCode::KeptCopyChanged:
        return "is no longer the same as the copy that was to go, which stays";
    case OperationErrorCode::LeadsOutside:
        return "a link leads elsewhere";
    case OperationErrorCode::FolderNotEmpty:
        return "stays, since it is not empty";
    case OperationErrorCode::TroubleInBranch:
        return "nothing is deleted here, since something went wrong";
    case OperationErrorCode::NotReadable:
        return "cannot be read";
    case OperationErrorCode::NotWritable:
        return "cannot be written";
    case OperationErrorCode::NoSpace:
        return "there is no room left";
    case OperationErrorCode::NotKept:
    case OperationErrorCode::NotJournalled:
        return "what undoing needs cannot be written";
    case OperationErrorCode::NoRecycleBin:
        return "there is no recycle bin (see --for-good)";
    case OperationErrorCode::AttributesLost:
        return "done, but its time or permissions could not be kept";
    case OperationErrorCode::NotOnDiskForSure:
        return "done, but the system does not confirm that it is on the disk";
    default:
        return "failed";
    }
}

QString sentence(const QString &path, const char *what, const QString &reason)
{
    const QString text = (path.isEmpty() ? QString() : visibleName(path) + QLatin1String(": ")) + QLatin1String(what);
    return reason.isEmpty() ? text : text + QLatin1String(": ") + reason;
}

QString reasonOf(const OperationProblem &problem)
{
    const bool isReplaced = problem.code == OperationErrorCode::RootMissing && problem.reason.isEmpty();
    return isReplaced ? QStringLiteral("another one is there now") : problem.reason;
}

} // namespace

OperationOutcome runOperation(OperationPlan plan, const QString &title, const Streams &streams)
{
    // The window's journal, so that what was done here can be undone there.
    QCoreApplication::setApplicationName(SessionSettings::name());
    Progress silent;
    const ExecutionReport report =
        executeJournalled(std::move(plan), FileLayer::native(), standardJournal(), {title}, {}, silent);
    OperationOutcome outcome;
    outcome.journalId = report.journalId;
    if (report.plan.refusal != PlanRefusal::None) {
        complain(streams, sentence(report.plan.refusedAt, refusalText(report.plan.refusal), {}));
        ++outcome.failed;
    }
    for (const LeftOutEntry &entry : report.plan.leftOut)
        complain(streams, sentence(entry.path, reasonText(entry.reason), entry.detail));
    for (const OperationProblem &problem : report.problems)
        complain(streams, sentence(problem.path, errorText(problem.code), reasonOf(problem)));
    outcome.succeeded = std::count(report.ends.begin(), report.ends.end(), StepEnd::Done);
    const bool hasLostRoot =
        std::any_of(report.problems.begin(), report.problems.end(),
                    [](const OperationProblem &problem) { return problem.code == OperationErrorCode::RootMissing; });
    const qint64 notDone = std::max<qint64>(report.ends.size() - outcome.succeeded, hasLostRoot ? 1 : 0);
    outcome.failed += notDone + report.plan.leftOut.size();
    return outcome;
}

} // namespace velmora::cli
