// How a disk usage session deletes what a person has selected.

#include "folder/actions/action_words.h"
#include "folder/actions/plan_preview_dialog.h"
#include "folder/operations/plan_builders.h"
#include "folder/operations/plan_survey.h"
#include "folder/usage/disk_usage_widget.h"
#include "folder/usage/usage_view.h"
#include "platform/file_layer.h"
#include "session/shown_path.h"

#include <algorithm>

namespace velmora {

void DiskUsageWidget::onDelete()
{
    if (!m_result || isReading())
        return;
    const QStringList paths = m_view->selectedPaths();
    if (paths.isEmpty() || paths.contains(m_scanned.folder))
        status().showMessage(Velmora::tr("Select files or folders below the scanned folder"));
    else
        prepareDeletion(paths);
}

/// Looks at what is to go as it is now: it may hold more than the scan has seen.
void DiskUsageWidget::prepareDeletion(const QStringList &paths)
{
    OperationPlan plan = planDeleteFiles(m_scanned.folder, paths, DeleteManner::ToRecycleBin);
    for (OperationStep &step : plan.steps)
        step.wholeTree = true; // hidden files take part in a folder that goes
    run([plan](const CancelFlag &cancel,
               Progress &progress) { return surveyPlan(plan, FileLayer::native(), cancel, progress); },
        [this](const OperationPlan &surveyed) { considerDeletion(surveyed); });
}

/// What the scan has listed goes with its folder; only what it has not is worth a word.
void DiskUsageWidget::discountListed(OperationPlan &plan) const
{
    const UsageTree &tree = m_result->usage.tree;
    for (OperationStep &step : plan.steps) {
        const qint32 node = tree.find(plan.pathOf(step.from));
        if (node >= 0)
            step.unlisted = std::max<qint64>(0, step.unlisted - tree.node(node).files - tree.node(node).folders);
    }
}

void DiskUsageWidget::considerDeletion(OperationPlan plan)
{
    discountListed(plan);
    if (plan.refusal != PlanRefusal::None) {
        status().showFailure(refusalText(plan));
        return;
    }
    if (plan.steps.isEmpty()) {
        status().showFailure(plan.leftOut.isEmpty() ? Velmora::tr("There is nothing to be deleted")
                                                    : leftOutText(plan.leftOut.first()));
        return;
    }
    auto *preview =
        new PlanPreviewDialog(Velmora::tr("Delete"), Velmora::tr("Move these files and folders to the recycle bin?"),
                              Velmora::tr("&Delete"), plan, this);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    connect(preview, &QDialog::accepted, this, [this, plan] { runDeletion(plan); });
    preview->open();
}

void DiskUsageWidget::runDeletion(const OperationPlan &plan)
{
    if (isReading())
        return;
    m_deletes = true;
    runToEnd([plan, title = Velmora::tr("Deleted from %1").arg(shownPath(m_scanned.folder))](
                 const CancelFlag &cancel, Progress &progress) { return runPlan(plan, title, cancel, progress); },
             [this](const PlanRunResult &result) { takeDeletion(result); });
}

void DiskUsageWidget::takeDeletion(const PlanRunResult &result)
{
    m_deletes = false;
    m_remark = Velmora::tr("Deleted: %1").arg(result.succeeded);
    if (result.lacksRecycleBin)
        m_remark = Velmora::tr("There is no recycle bin here, so nothing was deleted");
    else if (!result.missingRoot.isEmpty())
        m_remark = result.missingRoot;
    else if (result.failed > 0)
        m_remark += QStringLiteral("   ") + Velmora::tr("Could not be deleted: %1").arg(result.failed);
    onScan();
}

} // namespace velmora
