#include "folder/actions/plan_runs.h"

#include "folder/actions/action_words.h"
#include "folder/actions/folder_actions.h"
#include "folder/actions/folder_log_panel.h"
#include "session/dialogs.h"
#include "session/fault_text.h"
#include "session/frame/status_line.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QWidget>

namespace velmora {

PlanRuns::PlanRuns(QWidget &session, StatusLine &status, FolderLogPanel &log)
    : QObject(&session), m_session(session), m_status(status), m_log(log), m_undoing(new FolderActions(session, this))
{
    connectUndo();
}

PlanRuns::~PlanRuns() = default;

void PlanRuns::connectUndo()
{
    connect(m_undoing, &FolderActions::logLine, &m_log, &FolderLogPanel::addLine);
    connect(m_undoing, &FolderActions::statusChanged, this, [this](const QString &text) {
        m_undoText = text;
        m_status.showMessage(text);
    });
    connect(m_undoing, &FolderActions::runningChanged, this, &PlanRuns::stageChanged);
    // Told while it is still at work.
    connect(
        m_undoing, &FolderActions::finished, this,
        [this] {
            m_journalId.clear();
            Q_EMIT undone(m_undoText);
            Q_EMIT stageChanged();
        },
        Qt::QueuedConnection);
}

PlanRuns::Stage PlanRuns::stage() const
{
    return m_stage == Stage::Idle && m_undoing->isRunning() ? Stage::Undoing : m_stage;
}

void PlanRuns::begin(Stage stage)
{
    m_stage = stage;
    Q_EMIT stageChanged();
}

void PlanRuns::end(const RunFault &fault)
{
    m_stage = Stage::Idle;
    m_status.clearProgress();
    if (fault.kind != RunFault::Kind::None)
        m_status.showFailure(faultText(fault, Velmora::tr("Not enough memory")));
}

void PlanRuns::tell(const ProgressState &state)
{
    m_status.showProgress(state, shownPath(state.item));
}

void PlanRuns::write(MakePlan makePlan, const QString &title, WriteDone done)
{
    // The steps of a large plan take their time as well.
    start(
        Stage::Writing,
        [makePlan = std::move(makePlan), title](const CancelFlag &cancel, Progress &progress) {
            return runPlan(makePlan(), title, cancel, progress);
        },
        [this, done = std::move(done)](RunOutcome<PlanRunResult> &&outcome) {
            if (!outcome.value)
                return;
            if (!outcome.value->journalId.isEmpty()) // a refused run has done nothing, and the one before can be undone
                m_journalId = outcome.value->journalId;
            done(*outcome.value, outcome.end == RunEnd::Cancelled);
        });
}

void PlanRuns::undo(const FolderActionContext &context)
{
    if (!mayUndo())
        return;
    m_undoing->setContext(context);
    m_undoing->undoRun(m_journalId);
}

void PlanRuns::cancel()
{
    m_runner.cancel();
    m_undoing->cancel();
}

void PlanRuns::confirmClose(const QString &question, std::function<void(bool mayClose)> answered)
{
    if (m_stage != Stage::Writing) {
        answered(true);
        return;
    }
    Dialogs::instance().askYesNo(&m_session, Velmora::tr("Close"), question, false,
                                 [answered = std::move(answered)](bool yes) { answered(yes); });
}

} // namespace velmora
