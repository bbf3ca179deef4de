#include "folder/operations/operation_executor.h"

#include "folder/operations/plan_survey.h"
#include "folder/operations/root_watch.h"
#include "folder/operations/step_runner.h"
#include "folder/operations/write_along.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace velmora {

namespace {

/// Where something went wrong, so that nothing is deleted there.
class TroubledFolders {
public:
    /// Something went wrong at `place`.
    void add(const Place &place)
    {
        if (!place.isSet())
            return;
        m_folders.insert(key(place.root, folderOf(place.relative)));
        for (QString path = place.relative; !path.isEmpty(); path = folderOf(path))
            m_above.insert(key(place.root, path));
    }

    /// Something went wrong that may concern everything in a root.
    void addRoot(int root) { m_folders.insert(key(root, {})); }

    /// The folder of `place`, or one that this lies in, in which something went wrong.
    [[nodiscard]] std::optional<Place> around(const Place &place) const
    {
        if (m_folders.isEmpty())
            return std::nullopt;
        for (QString path = place.relative; !path.isEmpty();) {
            path = folderOf(path);
            if (m_folders.contains(key(place.root, path)))
                return Place{place.root, path};
        }
        return std::nullopt;
    }

    /// True when something went wrong at `place` or in it.
    [[nodiscard]] bool lieIn(const Place &place) const { return m_above.contains(key(place.root, place.relative)); }

private:
    static QString folderOf(const QString &path) { return path.left(std::max<qsizetype>(path.lastIndexOf(u'/'), 0)); }
    static QString key(int root, const QString &path) { return QString(QChar(char16_t(root + 1))) + path; }

    QSet<QString> m_folders;
    QSet<QString> m_above;
};

class Execution {
public:
    Execution(OperationPlan plan, FileLayer &files, const ExecutionOptions &options, const CancelFlag &cancel,
              Progress &progress)
        : m_files(files), m_options(options), m_cancel(cancel), m_progress(progress)
    {
        m_report.plan = surveyPlan(std::move(plan), files, cancel, progress);
        m_report.ends.fill(StepEnd::NotReached, m_report.plan.steps.size());
        m_report.cancelled = m_report.plan.refusal == PlanRefusal::Cancelled;
    }

    ExecutionReport run()
    {
        const OperationPlan &plan = m_report.plan;
        if (plan.refusal == PlanRefusal::None && !plan.steps.isEmpty() && startJournal())
            runSteps();
        return std::move(m_report);
    }

private:
    bool startJournal()
    {
        if (!m_options.journal)
            return true;
        FileError error;
        m_journal = JournalRun::start(*m_options.journal, m_report.plan, m_options.keepsOld, error);
        if (m_journal)
            m_report.journalId = m_journal->id();
        else
            m_report.problems.append({-1, OperationErrorCode::NotJournalled, {}, error.reason});
        return m_journal != nullptr;
    }

    void runSteps()
    {
        const OperationPlan &plan = m_report.plan;
        const FolderChain chain(m_files, plan.roots);
        StepRunner runner(plan, m_files, chain, m_journal.get(), m_options.verifyContent, [this](qint64 bytes) {
            report(bytes);
            return !m_cancel.isCancelled();
        });
        m_along = WriteAlong::start(plan, m_files);
        m_watch.emplace(plan, chain);
        for (const OperationStep &step : plan.steps)
            m_total += weight(step);
        for (; m_ended < plan.steps.size() && !m_report.cancelled && m_watch->lookNowAndThen(m_ended); ++m_ended) {
            if (m_cancel.isCancelled()) {
                m_report.cancelled = true;
                break;
            }
            report(0);
            runStep(chain, runner, m_ended);
            m_done += weight(plan.steps[m_ended]);
        }
        removeMovedSources(chain, runner);
        finishFolders(runner);
        if (!m_report.cancelled) // whoever stops does not want to wait, and all sources of copies are still there
            settle(chain);
        if (!m_watch->look(m_ended))
            withdraw(*m_watch->lost());
        finishJournal();
    }

    void finishJournal()
    {
        if (!m_journal)
            return;
        const FileError error = m_journal->finish(m_report.isComplete() && m_report.plan.leftOut.isEmpty());
        if (error.isError())
            m_report.problems.append({-1, OperationErrorCode::NotJournalled, {}, error.reason});
    }

    /// What was written since the last look may be where nobody finds it: it is not called done.
    void withdraw(const LostRoot &lost)
    {
        const QList<OperationStep> &steps = m_report.plan.steps;
        bool wasChanged = false;
        m_report.done = {};
        for (qsizetype i = 0; i < steps.size(); ++i) {
            if (m_report.ends[i] != StepEnd::Done)
                continue;
            const bool isThere = steps[i].changes(lost.index);
            wasChanged = wasChanged || isThere;
            if (!isThere || i < m_watch->sure()) {
                m_report.done.add(steps[i]);
                continue;
            }
            m_report.ends[i] = StepEnd::NotReached;
            if (m_journal)
                m_journal->doubt(i);
        }
        const qint64 notDone = m_report.ends.count(StepEnd::NotReached);
        if (notDone > 0 || wasChanged)
            m_report.problems.append({-1, OperationErrorCode::RootMissing, m_report.plan.roots[lost.index].path,
                                      lost.error.reason, std::max<qint64>(notDone, 1)});
    }

    void runStep(const FolderChain &chain, StepRunner &runner, qsizetype index)
    {
        const OperationStep &step = stepAt(index);
        if (step.deletes()) {
            // What was copied is on the disk before anything goes, and new folders are as those that may go now.
            removeMovedSources(chain, runner);
            finishFolders(runner);
            settle(chain);
            if (!m_watch->look(m_ended))
                return;
            if (const std::optional<Place> trouble = troubleOf(step)) {
                block(index, *trouble);
                return;
            }
        }
        const StepResult result = runner.run(index);
        take(index, result);
        if (result.end != StepEnd::Done)
            return;
        if (result.sourceMustGo)
            m_moved.append(index);
        if (step.kind == OperationKind::MakeFolder && step.from.isSet())
            m_madeFolders.append(index);
        if (step.to.isSet() && !m_unsettled.contains(step.to.root))
            m_unsettled.append(step.to.root);
    }

    /// The folder that keeps a deletion from being done.
    [[nodiscard]] std::optional<Place> troubleOf(const OperationStep &step) const
    {
        if (step.counterpart->isSet()) {
            if (const std::optional<Place> folder = m_trouble.around(step.from))
                return folder;
            if (const std::optional<Place> folder = m_trouble.around(step.counterpart))
                return folder;
        }
        return step.fromSeen.kind == NodeKind::Folder && m_trouble.lieIn(step.from) ? std::optional(step.from)
                                                                                    : std::nullopt;
    }

    /// A single changed file may block thousands: one problem for each folder in which something went wrong.
    void block(qsizetype index, const Place &folder)
    {
        const QString path = m_report.plan.pathOf(folder);
        const auto known = m_blocking.constFind(path);
        if (known != m_blocking.constEnd()) {
            ++m_report.problems[*known].steps;
        } else {
            m_blocking.insert(path, m_report.problems.size());
            m_report.problems.append({index, OperationErrorCode::TroubleInBranch, path, {}});
        }
        m_report.ends[index] = StepEnd::Skipped; // no trouble of its own: what is beside the folder may still go
    }

    void take(qsizetype index, const StepResult &result)
    {
        const OperationStep &step = stepAt(index);
        for (OperationProblem problem : result.problems) {
            problem.step = index;
            if (problem.code == OperationErrorCode::Cancelled)
                m_report.cancelled = true;
            m_report.problems.append(problem);
        }
        m_report.ends[index] = result.end;
        m_report.notUndoable += result.isLost ? 1 : 0;
        m_report.inBinOnly += result.isInBinOnly ? 1 : 0;
        if (result.end == StepEnd::Done) {
            if (!result.sourceMustGo)
                m_report.done.add(step);
        } else {
            m_trouble.add(step.from);
            m_trouble.add(step.to);
        }
    }

    /// Ends the moves between volumes: all copies reach the disk at once, and only then do the sources go.
    void removeMovedSources(const FolderChain &chain, StepRunner &runner)
    {
        if (m_moved.isEmpty())
            return;
        const bool isSettled = !m_cancel.isCancelled() && settle(chain);
        for (const qsizetype index : std::as_const(m_moved)) {
            const OperationStep &step = stepAt(index);
            const bool mayGo = isSettled && m_watch->look(m_ended);
            if (m_watch->hasLost(step.to.root)) {
                m_report.ends[index] = StepEnd::NotReached; // there is the source, and nobody knows of the copy
                continue;
            }
            StepResult result;
            if (mayGo) {
                result = runner.removeSource(index);
            } else {
                result.end = StepEnd::Failed;
                result.problems.append({-1, OperationErrorCode::SourceStays, m_report.plan.pathOf(step.from), {}});
            }
            take(index, result);
        }
        m_moved.clear();
    }

    /// From the last, which lies deepest: what is made in a folder changes its time.
    void finishFolders(StepRunner &runner)
    {
        for (auto index = m_madeFolders.rbegin(); index != m_madeFolders.rend(); ++index) {
            if (m_watch->hasLost(stepAt(*index).to.root))
                continue;
            const StepResult result = runner.finishFolder(*index);
            for (OperationProblem problem : result.problems) {
                problem.step = *index;
                m_report.problems.append(problem);
            }
        }
        m_madeFolders.clear();
    }

    bool settle(const FolderChain &chain)
    {
        bool isSettled = true;
        const std::map<int, FileError> earlier = m_along ? m_along->end() : std::map<int, FileError>();
        m_along.reset();
        for (const int root : std::as_const(m_unsettled)) {
            FileError error = m_files.canSettle() ? chain.root(root)->settle() : FileError();
            if (const auto told = earlier.find(root); !error.isError() && told != earlier.end())
                error = told->second;
            if (error.isError()) {
                isSettled = false;
                m_trouble.addRoot(root);
                m_report.problems.append(
                    {-1, OperationErrorCode::NotOnDiskForSure, m_report.plan.roots[root].path, error.reason});
            }
        }
        m_unsettled.clear();
        return isSettled;
    }

    /// Without asking whether the list is shared, which would write to it: `SourceAhead` reads it meanwhile.
    [[nodiscard]] const OperationStep &stepAt(qsizetype index) const { return m_report.plan.steps.at(index); }

    static qint64 weight(const OperationStep &step)
    {
        return bytesForEachStep + (step.copies() ? step.fromSeen.size : 0);
    }

    void report(qint64 bytes)
    {
        const OperationStep &step = stepAt(std::min(m_ended, m_report.plan.steps.size() - 1));
        m_progress.report(int(OperationPhase::Working), std::min(m_done + bytes, m_total), m_total,
                          m_report.plan.pathOf(step.to.isSet() ? step.to : step.from));
    }

    FileLayer &m_files;
    const ExecutionOptions &m_options;
    const CancelFlag &m_cancel;
    Progress &m_progress;
    ExecutionReport m_report;
    std::unique_ptr<JournalRun> m_journal;
    TroubledFolders m_trouble;
    QHash<QString, qsizetype> m_blocking; ///< for each folder that blocks deletions the number of the problem
    QList<qsizetype> m_moved;             ///< copied to another volume, the sources still there
    QList<qsizetype> m_madeFolders;       ///< whose time and permissions are still to be set
    QList<int> m_unsettled;               ///< roots with files that may not be on the disk yet
    std::optional<RootWatch> m_watch;
    std::unique_ptr<WriteAlong> m_along; ///< until there is waited for the disk for the first time
    qsizetype m_ended = 0; ///< steps that have ended; also the number of the one at work, while there is one
    qint64 m_done = 0;
    qint64 m_total = 0;
};

} // namespace

ExecutionReport executePlan(OperationPlan plan, FileLayer &files, const ExecutionOptions &options,
                            const CancelFlag &cancel, Progress &progress)
{
    return Execution(std::move(plan), files, options, cancel, progress).run();
}

} // namespace velmora
