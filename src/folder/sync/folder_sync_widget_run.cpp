// What a sync session does with its plan.

#include "core/path_names.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/sync/folder_sync_widget.h"
#include "folder/sync/sync_plan_model.h"
#include "folder/sync/sync_tally.h"
#include "folder/sync/sync_words.h"
#include "session/dialogs.h"
#include "session/frame/status_line.h"
#include "session/translate.h"

#include <QPointer>

#include <algorithm>

namespace velmora {

void FolderSyncWidget::onSync()
{
    if (!runs().isIdle())
        return;
    const QList<SyncPlanItem> shown = m_model->shownPlan();
    if (std::none_of(shown.begin(), shown.end(), isStep)) {
        status().showMessage(Velmora::tr("No sync actions to run."));
        return;
    }
    Dialogs::instance().askYesNo(this, Velmora::tr("Confirm sync"), questionFor(countSync(shown)), true,
                                 [self = QPointer(this), shown](bool yes) {
                                     if (self && yes)
                                         self->askForLosses(shown);
                                 });
}

PlanInput FolderSyncWidget::inputForRun() const
{
    PlanInput input = m_found.input;
    if (m_model->isFiltered()) {
        input.shows = [masks = m_model->masks()](const FolderDiffItem &item) {
            return item.isDir || masks.matches(bareName(item.name));
        };
    }
    return input;
}

QString FolderSyncWidget::questionFor(const SyncCounts &counts) const
{
    QStringList texts{Velmora::tr("About to run %1 sync action(s). Continue?").arg(counts.actions())};
    if (counts.deletions > 0)
        texts.append(Velmora::tr("Deletions among them: %1").arg(counts.deletions));
    if (m_model->isFiltered())
        texts.append(Velmora::tr("What the filter hides is left as it is."));
    if (m_manner == DeleteManner::ForGood)
        texts.append(Velmora::tr("What is deleted is deleted for good."));
    if (const qsizetype conflicts = m_found.proposal.conflicts.size(); conflicts > 0)
        texts.append(Velmora::tr("Names in conflict with others, or on other systems: %1").arg(conflicts));
    return texts.join(QLatin1String("\n\n"));
}

void FolderSyncWidget::askForLosses(const QList<SyncPlanItem> &plan)
{
    const QString text = syncLossText(lossesOf(m_found.input.items, plan), plannedFolders());
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
    if (!runs().isIdle()) // something began while the question was open
        return;
    status().showMessage(Velmora::tr("Starting sync…"));
    showLog(true);
    runs().write(
        [input = inputForRun(), plan, manner = m_manner] { return planSyncRun(input, actionsOf(plan), manner); },
        title(),
        [this, plan](const PlanRunResult &result, bool wasCancelled) {
            takeRun(result, tallySync(plan, plannedFolders(), result), wasCancelled);
        });
}

void FolderSyncWidget::takeRun(const PlanRunResult &result, const SyncTally &tally, bool wasCancelled)
{
    const bool tellsAll = result.lines.size() <= FolderLogPanel::mostLines;
    QStringList lines;
    for (const PlanLine &line : result.lines) {
        if (tellsAll || !line.done)
            lines.append(syncLogLine(line));
    }
    log().addLines(lines);
    QString done = Velmora::tr("Sync complete. Success: %1, failed: %2").arg(tally.succeeded).arg(tally.failed);
    if (wasCancelled)
        done = Velmora::tr("Cancelled. %1").arg(done);
    log().addLine(done);
    if (!result.missingRoot.isEmpty()) { // a plan for what is there instead would copy everything to the wrong place
        status().showFailure(done);
        Dialogs::instance().tell(this, Dialogs::Tone::Warning, title(),
                                 result.missingRoot + QLatin1String("\n\n") + done);
        return;
    }
    analyse(plannedFolders(), {done, tally.failed > 0});
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
    if (isReading())
        status().showMessage(Velmora::tr("Cancelling analysis…"));
    PlanSession::onCancel();
}

} // namespace velmora
