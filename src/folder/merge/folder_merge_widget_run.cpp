// How a folder merge session writes the merged tree.

#include "folder/actions/action_words.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/actions/plan_preview_dialog.h"
#include "folder/merge/awaited_texts.h"
#include "folder/merge/folder_merge_bar.h"
#include "folder/merge/folder_merge_model.h"
#include "folder/merge/folder_merge_widget.h"
#include "folder/operations/plan_survey.h"
#include "session/dialogs.h"
#include "session/fault_text.h"
#include "session/frame/status_line.h"
#include "session/shown_path.h"
#include "session/translate.h"

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
    if (!runs().isIdle())
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
    if (!runs().isIdle()) // something began while the question was open
        return;
    status().showMessage(Velmora::tr("Looking at the target folder…"));
    runs().prepare(
        [folders = m_compared, files = m_model->files(), sources = m_model->sources(), target,
         texts = m_texts->folder()](const CancelFlag &cancel, Progress &progress) {
            const OperationPlan plan = planFolderMerge(folders, files, sources, target, texts);
            if (plan.refusal != PlanRefusal::None)
                return plan;
            QDir().mkpath(target);
            return surveyPlan(plan, FileLayer::native(), cancel, progress);
        },
        [this, target](RunOutcome<OperationPlan> &&outcome) {
            if (outcome.end == RunEnd::Done)
                considerPlan(*outcome.value, target);
            else if (outcome.value)
                status().showMessage(endText(outcome.end, outcome.fault));
        });
}

void FolderMergeWidget::considerPlan(const OperationPlan &plan, const QString &target)
{
    if (plan.refusal != PlanRefusal::None) {
        status().showFailure(refusalText(plan));
        Dialogs::instance().tell(this, Dialogs::Tone::Warning, mergeTitle(), refusalText(plan));
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
    if (!runs().isIdle())
        return;
    status().showMessage(Velmora::tr("Writing the merged tree…"));
    runs().write([plan] { return plan; }, title(),
                 [this](const PlanRunResult &result, bool wasCancelled) { takeRun(result, wasCancelled); });
}

void FolderMergeWidget::takeRun(const PlanRunResult &result, bool wasCancelled)
{
    QStringList lines;
    for (const PlanLine &line : result.lines) {
        if (!line.done)
            lines.append(QStringLiteral("  ✗ ") + line.path + u' ' + line.reason);
    }
    log().addLines(lines);
    showLog(result.failed > 0);
    const qint64 skipped = m_model->openConflicts() + result.failed;
    const QString done = QStringLiteral("已复制 %1 个文件，跳过 %2 个").arg(result.files).arg(skipped);
    const QString title = wasCancelled ? Velmora::tr("Cancelled") : QStringLiteral("合并完成");
    log().addLine(done);
    if (result.failed > 0)
        status().showFailure(done);
    else
        status().showMessage(done);
    const QString why = result.missingRoot.isEmpty() ? QString() : result.missingRoot + QLatin1String("\n\n");
    Dialogs::instance().tell(this, result.failed > 0 ? Dialogs::Tone::Warning : Dialogs::Tone::Information, title,
                             why + done);
}

} // namespace velmora
