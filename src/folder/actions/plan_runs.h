#pragma once

#include "core/runner.h"
#include "folder/actions/plan_run.h"
#include "folder/operations/operation_plan.h"

#include <QObject>
#include <QString>

#include <functional>
#include <utility>

class QWidget;

namespace velmora {

class FolderActions;
class FolderLogPanel;
class StatusLine;
struct FolderActionContext;

/// The runs of a session that shows a plan of its own: it reads what the plan is made from, carries the plan out with
/// the journal, and takes the latest run back. One of these at a time. The status line shows how far each is, and what
/// went wrong with it; the log what taking back has done.
class PlanRuns final : public QObject {
    Q_OBJECT
public:
    enum class Stage : quint8 { Idle, Reading, Writing, Undoing };

    /// All three outlive it; questions belong to `session`.
    PlanRuns(QWidget &session, StatusLine &status, FolderLogPanel &log);
    ~PlanRuns() override;

    [[nodiscard]] Stage stage() const;
    [[nodiscard]] bool isIdle() const { return stage() == Stage::Idle; }
    /// A new reading takes the place of one that is under way.
    [[nodiscard]] bool mayRead() const { return isIdle() || stage() == Stage::Reading; }
    [[nodiscard]] bool mayUndo() const { return isIdle() && !m_journalId.isEmpty(); }

    /// Calls `job` as `Runner::start` does. `done(RunOutcome<T> &&)` is called with every outcome; of one that failed
    /// the status line has told already.
    template <typename Job, typename Done>
    void read(Job job, Done done)
    {
        start(Stage::Reading, std::move(job), std::move(done));
    }
    /// The same for a look at what is about to be written: it is not replaced by another.
    template <typename Job, typename Done>
    void prepare(Job job, Done done)
    {
        start(Stage::Writing, std::move(job), std::move(done));
    }

    /// Makes a plan on the worker and carries it out; the journal keeps it under `title`. `done` is told how it went,
    /// unless it failed as a whole.
    using MakePlan = std::function<OperationPlan()>;
    using WriteDone = std::function<void(const PlanRunResult &result, bool wasCancelled)>;
    void write(MakePlan makePlan, const QString &title, WriteDone done);

    /// Shows what taking the latest run back would do, and does it when that is wanted.
    void undo(const FolderActionContext &context);

    /// Stops what is under way between two files.
    void cancel();

    /// For `SessionWidget::confirmClose`: asks `question` while something is written.
    void confirmClose(const QString &question, std::function<void(bool mayClose)> answered);

Q_SIGNALS:
    /// What `stage`, `mayRead` or `mayUndo` answers has changed.
    void stageChanged();
    /// The latest run has been taken back, as far as `text` says.
    void undone(const QString &text);

private:
    template <typename Job, typename Done>
    void start(Stage stage, Job job, Done done);
    void begin(Stage stage);
    void end(const RunFault &fault);
    void tell(const ProgressState &state);
    void connectUndo();

    QWidget &m_session;
    StatusLine &m_status;
    FolderLogPanel &m_log;
    FolderActions *m_undoing;
    Stage m_stage = Stage::Idle;
    QString m_journalId; ///< of the latest run
    QString m_undoText;  ///< what was said last of taking it back
    Runner m_runner;
};

template <typename Job, typename Done>
void PlanRuns::start(Stage stage, Job job, Done done)
{
    begin(stage);
    m_runner.start(
        std::move(job),
        [this, done = std::move(done)](auto &&outcome) mutable {
            end(outcome.fault);
            done(std::forward<decltype(outcome)>(outcome));
            Q_EMIT stageChanged();
        },
        [this](const ProgressState &state) { tell(state); });
}

} // namespace velmora
