// What a sync session does with its plan.

#include "core/path_names.h"
#include "folder/actions/action_words.h"
#include "folder/actions/folder_actions.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/sync/folder_sync_widget.h"
#include "folder/sync/sync_bar.h"
#include "folder/sync/sync_plan_model.h"
#include "folder/sync/sync_words.h"
#include "session/dialogs.h"
#include "session/fault_text.h"
#include "session/frame/status_line.h"
#include "session/translate.h"

#include <QPointer>

#include <algorithm>

namespace velmora {

void FolderSyncWidget::onSync()
{
    if (m_stage != Stage::Idle || m_undoing->isRunning())
        return;
    const QList<SyncPlanItem> shown = m_model->shownPlan();
    if (std::none_of(shown.begin(), shown.end(), isStep)) {
        m_status->showMessage(Velmora::tr("No sync actions to run."));
        return;
    }
    Dialogs::instance().askYesNo(this, Velmora::tr("Confirm sync"), questionFor(countSync(shown).actions()), true,
                                 [self = QPointer(this), shown](bool yes) {
                                     if (self && yes)
                                         self->askForLosses(shown);
                                 });
}

PlanInput FolderSyncWidget::inputForRun() const
{
    PlanInput input = m_found;
    if (m_model->isFiltered()) {
        input.shows = [masks = m_model->masks()](const FolderDiffItem &item) {
            return item.isDir || masks.matches(bareName(item.name));
        };
    }
    return input;
}

QString FolderSyncWidget::questionFor(qint64 actions) const
{
    QString question = Velmora::tr("About to run %1 sync action(s). Continue?").arg(actions);
    if (m_model->isFiltered())
        question += QLatin1String("\n\n") + Velmora::tr("What the filter hides is left as it is.");
    if (m_manner == DeleteManner::ForGood)
        question += QLatin1String("\n\n") + Velmora::tr("What is deleted is deleted for good.");
    return question;
}

void FolderSyncWidget::askForLosses(const QList<SyncPlanItem> &plan)
{
    const QString text = syncLossText(lossesOf(m_found.items, plan), plannedFolders());
    if (text.isEmpty()) {
        run(plan);
        return;
    }
    Dialogs::instance().askYesNo(this, Velmora::tr("Confirm sync"),
                                 text + QLatin1String("\n\n") + Velmora::tr("Sync all the same?"), false,
                                 [self = QPointer(this), plan](bool yes) {
                                     if (self && yes)
                                         self->run(plan);
                                 });
}

void FolderSyncWidget::run(const QList<SyncPlanItem> &plan)
{
    if (m_stage != Stage::Idle || m_undoing->isRunning()) // something began while the question was open
        return;
    m_stage = Stage::Running;
    m_status->showMessage(Velmora::tr("Starting sync…"));
    m_log->show();
    // The steps of a large plan take their time as well.
    m_runner.start(
        [input = inputForRun(), plan, manner = m_manner, name = title()](const CancelFlag &cancel, Progress &progress) {
            return runPlan(planSyncRun(input, plan, manner), name, cancel, progress);
        },
        [this](RunOutcome<PlanRunResult> &&outcome) { takeRun(std::move(outcome)); },
        [this](const ProgressState &state) { m_status->showProgress(state, shownPath(state.item)); });
    showState();
}

void FolderSyncWidget::takeRun(RunOutcome<PlanRunResult> &&outcome)
{
    m_stage = Stage::Idle;
    m_status->clearProgress();
    if (!outcome.value) {
        m_status->showFailure(faultText(outcome.fault, Velmora::tr("Not enough memory")));
        showState();
        return;
    }
    const PlanRunResult &result = *outcome.value;
    for (const PlanLine &line : result.lines)
        m_log->addLine(syncLogLine(line));
    QString done = Velmora::tr("Sync complete. Success: %1, failed: %2").arg(result.succeeded).arg(result.failed);
    if (outcome.end == RunEnd::Cancelled)
        done = Velmora::tr("Cancelled. %1").arg(done);
    m_log->addLine(done);
    m_journalId = result.journalId;
    analyse(plannedFolders(), {done, result.failed > 0});
    if (result.lacksRecycleBin)
        offerDeletingForGood();
}

void FolderSyncWidget::offerDeletingForGood()
{
    Dialogs::instance().askYesNo(this, Velmora::tr("Delete"),
                                 Velmora::tr("There is no recycle bin for some of the entries, so that they are still "
                                             "there. Have the next run of this tab delete for good?"),
                                 false, [self = QPointer(this)](bool yes) {
                                     if (self && yes)
                                         self->m_manner = DeleteManner::ForGood;
                                 });
}

void FolderSyncWidget::onCancel()
{
    if (m_stage == Stage::Analysing)
        m_status->showMessage(Velmora::tr("Cancelling analysis…"));
    m_runner.cancel();
    m_undoing->cancel();
}

void FolderSyncWidget::onUndo()
{
    if (m_stage != Stage::Idle || m_journalId.isEmpty())
        return;
    FolderActionContext context;
    context.roots = m_found.roots;
    m_undoing->setContext(context);
    m_undoing->undoRun(m_journalId);
}

void FolderSyncWidget::confirmClose(std::function<void(bool mayClose)> answered)
{
    if (m_stage != Stage::Running) {
        answered(true);
        return;
    }
    Dialogs::instance().askYesNo(this, Velmora::tr("Close"),
                                 Velmora::tr("The sync is still running. Stop it after the current file and close?"),
                                 false, [answered = std::move(answered)](bool yes) { answered(yes); });
}

} // namespace velmora
