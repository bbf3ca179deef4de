#include "folder/actions/action_outcome.h"

#include "folder/actions/action_words.h"
#include "folder/actions/command_words.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <algorithm>
#include <vector>

namespace velmora {

namespace {

/// What could not be done, where the entry itself, or all of it, is the trouble.
QString failureOf(const ActionRequest &request, const QString &path)
{
    const CommandWords &words = wordsOf(request.command);
    if (isAboutRoots(request.command)) {
        const auto [source, target] = rootsFromTo(request);
        return Velmora::tr(words.failedFrom).arg(source, target);
    }
    return Velmora::tr(words.failedFrom).arg(path.isEmpty() ? selectionTitle(request) : path);
}

/// A failure that left things as they were; the others are done with a blemish, or were called off.
bool isFailure(const OperationProblem &problem)
{
    return problem.code != OperationErrorCode::Cancelled && problem.code != OperationErrorCode::AttributesLost &&
           problem.code != OperationErrorCode::NotOnDiskForSure;
}

/// Gathers what a run did and puts it into words.
class Wording {
public:
    Wording(const ActionRequest &request, const ExecutionReport &report, const QTime &time)
        : m_request(request), m_report(report), m_words(wordsOf(request.command)), m_time(logTime(time))
    {
        for (qsizetype i = 0; i < m_report.ends.size(); ++i) {
            if (m_report.ends[i] == StepEnd::Done)
                m_done.append(m_report.plan.steps[i]);
        }
    }

    ActionOutcome outcome()
    {
        m_outcome.succeeded = m_done.size();
        m_outcome.cancelled = m_report.cancelled;
        m_outcome.journalId = m_report.journalId;
        m_outcome.title = Velmora::tr(m_words.title);
        addLogLines();
        addTouched();
        for (const OperationProblem &problem : m_report.problems)
            addProblem(problem);
        for (const LeftOutEntry &entry : m_report.plan.leftOut) {
            if (countsAsFailure(m_request, entry.reason))
                fail(failureText(entry.path, entry.path), {shownPath(entry.path), leftOutText(entry)});
        }
        if (m_report.notUndoable > 0)
            log(Velmora::tr("not kept for undoing: %1").arg(m_report.notUndoable));
        if (m_report.inBinOnly > 0)
            log(Velmora::tr("in the recycle bin, to be taken out there: %1").arg(m_report.inBinOnly));
        finishHeadline();
        return std::move(m_outcome);
    }

private:
    void log(const QString &text) { m_outcome.logLines.append(m_time + u' ' + text); }

    void addLogLines()
    {
        if (m_done.isEmpty())
            return;
        if (isAboutRoots(m_request.command)) {
            const auto [from, to] = rootsFromTo(m_request);
            m_outcome.logLines.append(Velmora::tr(m_words.logLine).arg(m_time, from, to));
        } else if (isAboutRun(m_request.command)) {
            m_outcome.logLines.append(Velmora::tr(m_words.logLine).arg(m_time, m_request.name));
        } else {
            addEntryLines();
        }
    }

    /// One line for each entry that was asked for, however much is in it.
    void addEntryLines()
    {
        if (m_request.command == FolderCommand::Rename || m_request.command == FolderCommand::NewFolder) {
            for (const OperationStep &step : m_done)
                addLine(m_report.plan.pathOf(step.from), m_report.plan.pathOf(step.to));
            return;
        }
        const std::vector<Way> ways = sortedWays();
        for (const FolderDiffItem &item : m_request.selection.items) {
            for (const Side side : bothSides) {
                const QString &path = pathOn(item, side);
                const auto first = std::lower_bound(ways.begin(), ways.end(), Way{path, {}});
                const auto inside = std::lower_bound(ways.begin(), ways.end(), Way{path + u'/', {}});
                if (path.isEmpty())
                    continue;
                if (first != ways.end() && first->from == path)
                    addLine(path, first->to);
                else if (inside != ways.end() && inside->from.startsWith(path + u'/'))
                    addLine(path, folderTarget(item, side));
            }
        }
    }

    /// The paths of one step.
    struct Way {
        QString from;
        QString to;

        friend bool operator<(const Way &left, const Way &right) { return left.from < right.from; }
    };

    [[nodiscard]] std::vector<Way> sortedWays() const
    {
        std::vector<Way> ways;
        for (const OperationStep &step : m_done) {
            // That an emptied folder is removed is part of moving it.
            const bool isClearing = isMove(m_request.command) && step.kind == OperationKind::Delete;
            if (!isClearing)
                ways.push_back({m_report.plan.pathOf(step.from), m_report.plan.pathOf(step.to)});
        }
        std::sort(ways.begin(), ways.end());
        return ways;
    }

    /// Where a folder went that needed no step of its own, since it was there on both sides.
    [[nodiscard]] QString folderTarget(const FolderDiffItem &item, Side side) const
    {
        const QString &path = pathOn(item, side);
        const bool endsWithSlash = m_request.destination.endsWith(u'/');
        return m_request.destination.isEmpty()
                   ? pathOn(item, otherSide(side))
                   : m_request.destination + path.mid(path.lastIndexOf(u'/') + (endsWithSlash ? 1 : 0));
    }

    void addLine(const QString &from, const QString &to)
    {
        const QString &own = from.isEmpty() ? to : from;
        const bool namesTarget = m_words.failedTo || m_request.command == FolderCommand::Rename;
        const QString line = Velmora::tr(m_words.logLine);
        m_outcome.logLines.append(namesTarget ? line.arg(m_time, shownPath(from), shownPath(to))
                                              : line.arg(m_time, shownPath(own)));
    }

    /// Names as the comparison has them: an aligned entry of the right side goes by its left name.
    void addTouched()
    {
        const FolderActionContext &context = m_request.context;
        QHash<QString, QString> names;
        for (const FolderDiffItem &item : context.items) {
            for (const Side side : bothSides) {
                if (!pathOn(item, side).isEmpty())
                    names.insert(pathOn(item, side), item.name);
            }
        }
        QSet<QString> touched;
        const auto touch = [&](const QString &path) {
            const QString name = names.value(path, relativeName(path));
            if (!name.isEmpty())
                touched.insert(name);
        };
        for (const OperationStep &step : m_done) {
            touch(m_report.plan.pathOf(step.from));
            touch(m_report.plan.pathOf(step.to));
        }
        // What was not as the comparison has it should be looked at again.
        for (const OperationProblem &problem : m_report.problems)
            touch(problem.path);
        for (const LeftOutEntry &entry : m_report.plan.leftOut) {
            if (entry.reason == LeftOutReason::ChangedSinceCompared)
                touch(entry.path);
        }
        m_outcome.touched = QStringList(touched.begin(), touched.end());
        m_outcome.touched.sort();
    }

    [[nodiscard]] QString relativeName(const QString &path) const
    {
        for (const Side side : bothSides) {
            QString root = rootOn(m_request.context, side);
            if (!root.endsWith(u'/'))
                root += u'/';
            if (root.size() > 1 && path.startsWith(root))
                return path.mid(root.size());
        }
        return {};
    }

    void addProblem(const OperationProblem &problem)
    {
        m_outcome.lacksRecycleBin = m_outcome.lacksRecycleBin || problem.code == OperationErrorCode::NoRecycleBin;
        m_outcome.lacksJournal = m_outcome.lacksJournal || problem.code == OperationErrorCode::NotJournalled ||
                                 problem.code == OperationErrorCode::NotKept;
        const ActionProblem shown{shownPath(problem.path), problemText(problem)};
        if (!isFailure(problem)) {
            log(shown.path + QLatin1String(": ") + shown.reason);
            return;
        }
        const bool hasStep = problem.step >= 0 && problem.step < m_report.plan.steps.size();
        const OperationStep step = hasStep ? m_report.plan.steps[problem.step] : OperationStep();
        const QString from = m_report.plan.pathOf(step.from);
        // What one folder keeps from being deleted is told once, under the name of the folder.
        const QString &entry = from.isEmpty() || problem.steps > 1 ? problem.path : from;
        fail(failureText(entry, problem.path), shown);
        m_outcome.failed += problem.steps - 1;
    }

    /// What could not be done. `from` is the entry concerned, `path` where the trouble was.
    [[nodiscard]] QString failureText(const QString &from, const QString &path) const
    {
        const bool atDestination = m_words.failedTo && path != from;
        return atDestination ? Velmora::tr(m_words.failedTo).arg(shownPath(path))
                             : failureOf(m_request, shownPath(from));
    }

    void fail(const QString &text, const ActionProblem &problem)
    {
        ++m_outcome.failed;
        if (m_outcome.problems.isEmpty())
            m_outcome.headline = text;
        m_outcome.problems.append(problem);
        const QString reason = problem.reason.isEmpty() ? QString() : QStringLiteral(" — ") + problem.reason;
        log((isAboutRoots(m_request.command) ? problem.path : text) + reason);
    }

    void finishHeadline()
    {
        if (m_outcome.problems.size() < 2)
            return;
        const QString done = doneText(m_outcome);
        m_outcome.headline = isAboutRoots(m_request.command) ? m_outcome.headline + u'\n' + done : done;
    }

    const ActionRequest &m_request;
    const ExecutionReport &m_report;
    const CommandWords &m_words;
    QString m_time;
    QList<OperationStep> m_done;
    ActionOutcome m_outcome;
};

} // namespace

ActionOutcome outcomeOf(const ActionRequest &request, const ExecutionReport &report, const QTime &time)
{
    return Wording(request, report, time).outcome();
}

ActionOutcome outcomeOfNothing(const ActionRequest &request, const OperationPlan &plan)
{
    const CommandWords &words = wordsOf(request.command);
    ActionOutcome outcome;
    outcome.title = Velmora::tr(words.title);
    for (const LeftOutEntry &entry : plan.leftOut)
        outcome.problems.append({shownPath(entry.path), leftOutText(entry)});
    if (plan.refusal != PlanRefusal::None)
        outcome.problems = {{{}, refusalText(plan)}};
    outcome.failed = outcome.problems.size();
    if (outcome.problems.size() == 1)
        outcome.headline = failureOf(request, outcome.problems.first().path);
    else
        outcome.headline = Velmora::tr("There is nothing to do.");
    return outcome;
}

QString doneText(const ActionOutcome &outcome)
{
    return Velmora::tr("Done: %1 succeeded, %2 failed").arg(outcome.succeeded).arg(outcome.failed);
}

bool countsAsFailure(const ActionRequest &request, LeftOutReason reason)
{
    const CommandKind kind = kindOf(request.command);
    if (kind == CommandKind::Delete || kind > CommandKind::NewFolder)
        return false; // the preview has shown them
    if (reason == LeftOutReason::TargetExists && request.ifPresent == IfPresent::LeaveOut)
        return false;
    // A link is copied as a link: what it leads to is not meant.
    return reason != LeftOutReason::HiddenByFilter && reason != LeftOutReason::BelowLink;
}

} // namespace velmora
