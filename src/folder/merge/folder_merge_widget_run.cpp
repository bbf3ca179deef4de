// How a folder merge session writes the merged tree.

#include "folder/actions/action_words.h"
#include "folder/actions/folder_actions.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/actions/plan_preview_dialog.h"
#include "folder/merge/folder_merge_bar.h"
#include "folder/merge/folder_merge_model.h"
#include "folder/merge/folder_merge_widget.h"
#include "folder/operations/plan_survey.h"
#include "session/dialogs.h"
#include "session/fault_text.h"
#include "session/frame/status_line.h"
#include "session/translate.h"
#include "vfs/local_folder.h"

#include <QDir>
#include <QPointer>

namespace velmora {

namespace {

// These are the same in every language.
QString mergeTitle()
{
    return QStringLiteral("合并");
}

} // namespace

void FolderMergeWidget::onMergeTo()
{
    if (m_stage != Stage::Idle || m_undoing->isRunning())
        return;
    if (!m_hasResult) {
        Dialogs::instance().tell(this, Dialogs::Tone::Information, mergeTitle(), QStringLiteral("请先执行比较"));
        return;
    }
    Dialogs::instance().openFolder(this, Velmora::tr("Merge to..."), m_target,
                                   [self = QPointer(this)](const QString &target) {
                                       if (self)
                                           self->considerTarget(target);
                                   });
}

void FolderMergeWidget::considerTarget(const QString &target)
{
    m_target = QDir::cleanPath(target);
    const qint64 open = m_model->openConflicts();
    if (open == 0) {
        survey(m_target);
        return;
    }
    Dialogs::instance().askYesNo(this, mergeTitle(),
                                 QStringLiteral("存在 %1 个冲突，冲突文件将被跳过。\n是否继续？").arg(open), true,
                                 [self = QPointer(this)](bool yes) {
                                     if (self && yes)
                                         self->survey(self->m_target);
                                 });
}

/// Looks what the target has already, so that nothing there is replaced unseen.
void FolderMergeWidget::survey(const QString &target)
{
    if (m_stage != Stage::Idle || m_undoing->isRunning()) // something began while the question was open
        return;
    m_stage = Stage::Merging;
    m_status->showMessage(Velmora::tr("Looking at the target folder…"));
    m_runner.start(
        [folders = m_compared, files = m_model->files(), sources = m_model->sources(), target](const CancelFlag &cancel,
                                                                                               Progress &progress) {
            const OperationPlan plan = planFolderMerge(folders, files, sources, target);
            if (plan.refusal != PlanRefusal::None)
                return plan;
            QDir().mkpath(target);
            return surveyPlan(plan, FileLayer::native(), cancel, progress);
        },
        [this, target](RunOutcome<OperationPlan> &&outcome) {
            m_stage = Stage::Idle;
            m_status->clearProgress();
            showState();
            if (outcome.end == RunEnd::Done)
                considerPlan(*outcome.value, target);
            else
                m_status->showMessage(endText(outcome.end, outcome.fault));
        },
        [this](const ProgressState &state) { m_status->showProgress(state); });
    showState();
}

void FolderMergeWidget::considerPlan(const OperationPlan &plan, const QString &target)
{
    if (plan.refusal != PlanRefusal::None) {
        m_status->showFailure(refusalText(plan.refusal));
        Dialogs::instance().tell(this, Dialogs::Tone::Warning, mergeTitle(), refusalText(plan.refusal));
        return;
    }
    if (plan.totals().replacedFiles == 0) {
        run(plan);
        return;
    }
    auto *preview = new PlanPreviewDialog(
        Velmora::tr("Merge to..."),
        Velmora::tr("There are files of the same names in %1. Replace them?").arg(shownPath(target)),
        Velmora::tr("&Merge"), plan, this);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    connect(preview, &QDialog::accepted, this, [this, plan] { run(plan); });
    preview->open();
}

void FolderMergeWidget::run(const OperationPlan &plan)
{
    if (m_stage != Stage::Idle || m_undoing->isRunning())
        return;
    m_stage = Stage::Merging;
    m_runner.start([plan, name = title()](const CancelFlag &cancel,
                                          Progress &progress) { return runPlan(plan, name, cancel, progress); },
                   [this](RunOutcome<PlanRunResult> &&outcome) { takeRun(std::move(outcome)); },
                   [this](const ProgressState &state) { m_status->showProgress(state, shownPath(state.item)); });
    showState();
}

void FolderMergeWidget::takeRun(RunOutcome<PlanRunResult> &&outcome)
{
    m_stage = Stage::Idle;
    m_status->clearProgress();
    if (!outcome.value) {
        m_status->showFailure(faultText(outcome.fault, Velmora::tr("Not enough memory")));
        showState();
        return;
    }
    const PlanRunResult &result = *outcome.value;
    for (const PlanLine &line : result.lines) {
        if (!line.done)
            m_log->addLine(QStringLiteral("  ✗ ") + line.path + u' ' + line.reason);
    }
    m_log->setVisible(m_log->isVisibleTo(this) || result.failed > 0);
    m_journalId = result.journalId;
    const qint64 skipped = m_model->openConflicts() + result.failed;
    const QString done = QStringLiteral("已复制 %1 个文件，跳过 %2 个").arg(result.files).arg(skipped);
    const QString title = outcome.end == RunEnd::Cancelled ? Velmora::tr("Cancelled") : QStringLiteral("合并完成");
    m_log->addLine(done);
    if (result.failed > 0)
        m_status->showFailure(done);
    else
        m_status->showMessage(done);
    showState();
    Dialogs::instance().tell(this, result.failed > 0 ? Dialogs::Tone::Warning : Dialogs::Tone::Information, title,
                             done);
}

void FolderMergeWidget::onCancel()
{
    m_runner.cancel();
    m_undoing->cancel();
}

void FolderMergeWidget::onUndo()
{
    if (m_stage != Stage::Idle || m_journalId.isEmpty())
        return;
    FolderActionContext context;
    context.roots.left = localFolder(m_target);
    m_undoing->setContext(context);
    m_undoing->undoRun(m_journalId);
}

void FolderMergeWidget::confirmClose(std::function<void(bool mayClose)> answered)
{
    if (m_stage != Stage::Merging) {
        answered(true);
        return;
    }
    Dialogs::instance().askYesNo(this, Velmora::tr("Close"),
                                 Velmora::tr("The merge is still running. Stop it after the current file and close?"),
                                 false, [answered = std::move(answered)](bool yes) { answered(yes); });
}

} // namespace velmora
