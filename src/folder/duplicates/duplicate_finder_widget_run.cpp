// What a duplicate finder scans, ticks and deletes.

#include "core/output_buffer.h"
#include "core/path_names.h"
#include "core/visible_name.h"
#include "folder/actions/action_words.h"
#include "folder/actions/folder_actions.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/duplicates/duplicate_bar.h"
#include "folder/duplicates/duplicate_finder_widget.h"
#include "folder/duplicates/duplicate_view.h"
#include "folder/duplicates/keep_folders_dialog.h"
#include "folder/duplicates/more_folders.h"
#include "folder/duplicates/tick_panel.h"
#include "folder/engine/duplicate_report.h"
#include "folder/operations/duplicate_plan.h"
#include "session/dialogs.h"
#include "session/fault_text.h"
#include "session/frame/path_edit.h"
#include "session/frame/paths_bar.h"
#include "session/frame/status_line.h"
#include "session/session_host.h"
#include "session/shown_path.h"
#include "session/translate.h"
#include "vfs/local_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QPointer>

namespace velmora {

namespace {

qint64 involvedFiles(const QList<DuplicateGroup> &groups)
{
    qint64 files = 0;
    for (const DuplicateGroup &group : groups)
        files += group.copies.size();
    return files;
}

} // namespace

/// Deletes the ticked copies, and finds out which are no longer there.
DuplicateFinderWidget::Deletion DuplicateFinderWidget::deletedCopies(const DuplicateScan &scan,
                                                                     const DuplicateTicks &ticks, const QString &title,
                                                                     const CancelFlag &cancel, Progress &progress)
{
    QList<ExtraCopies> deletions;
    CopyPlaces places;
    for (qint32 number = 0; number < scan.groups.size(); ++number) {
        const QList<qsizetype> copies = ticks.of(number);
        if (!copies.isEmpty())
            deletions.append({scan.groups.at(number), copies});
        for (const qsizetype copy : copies)
            places.append({number, copy});
    }
    Deletion deletion{runPlan(planDeleteCopies(scan.roots, deletions, DeleteManner::ForGood), title, cancel, progress),
                      nullptr};
    places.removeIf([&scan](const CopyPlace &place) {
        return FileAccess::native().describe(scan.groups.at(place.group).copies.at(place.copy).path).has_value();
    });
    deletion.left = treeWithout(scan, ticks, places);
    return deletion;
}

// Scanning -----------------------------------------------------------------------------------------------------------

DuplicateQuestion DuplicateFinderWidget::question() const
{
    DuplicateQuestion question;
    question.roots.append({localFolder(QDir::cleanPath(paths().left)), false});
    for (const MoreFolder &folder : m_more->folders())
        question.roots.append({localFolder(QDir::cleanPath(folder.path)), folder.isReference});
    return question;
}

QString DuplicateFinderWidget::problemOfPaths() const
{
    if (paths().left.isEmpty() || !QFileInfo(paths().left).isDir())
        return Velmora::tr("Select a valid folder");
    for (const MoreFolder &folder : m_more->folders()) {
        if (!QFileInfo(folder.path).isDir())
            return Velmora::tr("There is no folder %1").arg(shownPath(folder.path));
    }
    return {};
}

void DuplicateFinderWidget::onScan()
{
    if (m_stage == Stage::Deleting || m_undoing->isRunning())
        return;
    if (const QString problem = problemOfPaths(); !problem.isEmpty()) {
        m_status->showFailure(problem);
        Q_EMIT readingEnded();
        return;
    }
    m_stage = Stage::Scanning;
    m_scanned = QDir::cleanPath(paths().left);
    m_status->showMessage(Velmora::tr("Scanning…"));
    m_runner.start(
        [question = question()](const CancelFlag &cancel, Progress &progress) {
            return std::make_unique<DuplicateTree>(scanDuplicates(question, cancel, progress));
        },
        [this](RunOutcome<std::unique_ptr<DuplicateTree>> &&outcome) { takeScan(std::move(outcome)); },
        [this](const ProgressState &state) { m_status->showProgress(state, shownPath(state.item)); });
    showState();
    Q_EMIT comparisonStarted();
}

void DuplicateFinderWidget::takeScan(RunOutcome<std::unique_ptr<DuplicateTree>> &&outcome)
{
    m_stage = Stage::Idle;
    m_status->clearProgress();
    if (!outcome.value) {
        m_status->showFailure(faultText(outcome.fault, Velmora::tr("Not enough memory")));
    } else {
        m_hasScan = true;
        showTree(std::move(*outcome.value));
        focusRows();
        tellScan(m_tree->scan());
        if (!m_tree->scan().cancelled)
            Q_EMIT comparisonFinished(m_scanned, {});
        Q_EMIT tabTitleChanged(Velmora::tr("Duplicates: %1").arg(bareName(m_scanned)));
    }
    showState();
    Q_EMIT readingEnded();
}

/// The caret goes to the rows, unless a person is at work elsewhere.
void DuplicateFinderWidget::focusRows()
{
    setFocusProxy(m_view);
    if (const QWidget *focus = focusWidget(); !focus || m_inputs->edit(0).isAncestorOf(focus))
        m_view->setFocus();
}

void DuplicateFinderWidget::tellScan(const DuplicateScan &scan)
{
    const QString found = scan.cancelled ? Velmora::tr("Cancelled. Scanned %1 files, found %2 duplicate groups.")
                                               .arg(scan.files)
                                               .arg(scan.groups.size())
                                         : Velmora::tr("%1 files, %2 duplicate groups (%3 files involved)")
                                               .arg(scan.files)
                                               .arg(scan.groups.size())
                                               .arg(involvedFiles(scan.groups));
    QStringList details;
    if (!scan.problems.isEmpty())
        details.append(Velmora::tr("Could not be read: %1").arg(scan.problems.size()));
    if (!scan.overlapping.isEmpty())
        details.append(Velmora::tr("%1 lies in another of the folders and is scanned once")
                           .arg(shownPath(scan.overlapping.first())));
    QStringList lines;
    for (const FolderProblem &problem : scan.problems)
        lines.append(Velmora::tr("Cannot read: %1").arg(visibleName(shownPath(problem.path))));
    m_log->addLines(lines);
    m_log->setVisible(m_log->isVisible() || !lines.isEmpty());
    const QString detail = details.join(totalsSeparator);
    if (lines.isEmpty())
        m_status->showMessage(found, detail);
    else
        m_status->showFailure(found, detail);
}

void DuplicateFinderWidget::onCancel()
{
    m_runner.cancel();
    m_undoing->cancel();
}

// Digests of the groups in sight -------------------------------------------------------------------------------------

void DuplicateFinderWidget::wantDigests()
{
    m_digestDelay.start();
}

void DuplicateFinderWidget::computeDigests()
{
    if (m_digests.isRunning() || m_stage == Stage::Deleting)
        return;
    QList<qint32> numbers;
    QList<DuplicateGroup> groups;
    const auto [first, last] = m_view->rowsInSight();
    for (int row = first; row >= 0 && row <= last; ++row) {
        const qint32 number = m_tree->groupOf(m_model->nodeAt(row));
        if (number < 0 || m_digested.contains(number))
            continue;
        m_digested.insert(number);
        numbers.append(number);
        groups.append(m_tree->scan().groups.at(number));
    }
    if (numbers.isEmpty())
        return;
    m_digests.start(
        [groups](const CancelFlag &cancel, Progress &) mutable {
            addDigests(groups, cancel);
            return groups;
        },
        [this, numbers](RunOutcome<QList<DuplicateGroup>> &&outcome) {
            for (qsizetype i = 0; outcome.value && i < numbers.size(); ++i)
                m_tree->setDigest(numbers.at(i), outcome.value->at(i).digest);
            m_model->refresh();
            wantDigests();
        });
}

// Ticking ------------------------------------------------------------------------------------------------------------

void DuplicateFinderWidget::ticksChanged()
{
    m_model->refresh();
    showTicks();
}

void DuplicateFinderWidget::setTicking(bool ticking)
{
    m_tree->setTicking(ticking);
    m_ticks->setVisible(ticking);
    ticksChanged();
    showRowCommands();
}

void DuplicateFinderWidget::tickByRule(KeepRule rule)
{
    if (rule != KeepRule::InFolders) {
        m_tree->tickByRule(shownGroups(), rule, {});
        ticksChanged();
        return;
    }
    auto *dialog = new KeepFoldersDialog(m_keepFolders, m_scanned, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        m_keepFolders = dialog->folders();
        m_tree->tickByRule(shownGroups(), KeepRule::InFolders, m_keepFolders);
        ticksChanged();
    });
    dialog->open();
}

void DuplicateFinderWidget::tick(const QList<qint32> &nodes, bool ticked)
{
    if (!m_bar->deleteExtra->isChecked() || m_stage != Stage::Idle)
        return;
    for (const qint32 node : nodes)
        m_tree->tick(node, ticked);
    ticksChanged();
}

void DuplicateFinderWidget::toggleTicks()
{
    const QList<qint32> nodes = selectedPaths();
    const std::optional<CopyPlace> first = nodes.isEmpty() ? std::nullopt : m_tree->copyAt(nodes.first());
    if (first)
        tick(nodes, !m_tree->ticks().isTicked(first->group, first->copy));
}

void DuplicateFinderWidget::tickFolder(bool ticked)
{
    QStringList folders;
    for (const qint32 node : selectedPaths()) {
        const QString &path = m_tree->pathAt(node);
        folders.append(m_tree->kindOf(node) == DuplicateTree::Kind::Folders ? path : parentPath(path));
    }
    folders.removeDuplicates();
    for (const QString &folder : std::as_const(folders))
        m_tree->tickFolder(shownGroups(), folder, ticked);
    ticksChanged();
}

// Deleting -----------------------------------------------------------------------------------------------------------

void DuplicateFinderWidget::onDelete()
{
    if (m_stage != Stage::Idle || m_undoing->isRunning() || m_tree->ticks().files() == 0)
        return;
    const QList<DuplicateGroup> &groups = m_tree->scan().groups;
    for (qsizetype number = 0; number < groups.size(); ++number) {
        if (!m_tree->ticks().leavesOne(groups.at(number), number)) {
            const QString text = Velmora::tr("Keep at least one unchecked copy per group.");
            m_status->showFailure(text);
            Dialogs::instance().tell(this, Dialogs::Tone::Warning, Velmora::tr("Confirm delete"), text);
            return;
        }
    }
    askToDelete();
}

void DuplicateFinderWidget::askToDelete()
{
    QString question = Velmora::tr("Permanently delete %1 file(s)?").arg(m_tree->ticks().files());
    qint64 hidden = m_tree->ticks().files();
    for (const qint32 group : shownGroups())
        hidden -= m_tree->ticks().of(group).size();
    if (hidden > 0)
        question += u'\n' + Velmora::tr("Hidden by the filter among them: %1").arg(QLocale().toString(hidden));
    Dialogs::instance().askYesNo(this, Velmora::tr("Confirm delete"), question, false,
                                 [self = QPointer(this)](bool yes) {
                                     if (self && yes)
                                         self->deleteTicked();
                                 });
}

void DuplicateFinderWidget::deleteTicked()
{
    if (m_stage != Stage::Idle || m_undoing->isRunning()) // something began while the question was open
        return;
    m_stage = Stage::Deleting;
    m_status->showMessage(Velmora::tr("Deleting…"));
    const QString title = Velmora::tr("Duplicates: %1").arg(bareName(m_scanned));
    m_runner.start(
        [scan = m_tree->scan(), ticks = m_tree->ticks(), title](const CancelFlag &cancel, Progress &progress) {
            return deletedCopies(scan, ticks, title, cancel, progress);
        },
        [this](RunOutcome<Deletion> &&outcome) { takeDeletion(std::move(outcome)); },
        [this](const ProgressState &state) { m_status->showProgress(state, shownPath(state.item)); });
    showState();
}

void DuplicateFinderWidget::takeDeletion(RunOutcome<Deletion> &&outcome)
{
    m_stage = Stage::Idle;
    m_status->clearProgress();
    if (!outcome.value) {
        m_status->showFailure(faultText(outcome.fault, Velmora::tr("Not enough memory")));
        showState();
        return;
    }
    const PlanRunResult &run = outcome.value->run;
    const bool tellsAll = run.lines.size() <= FolderLogPanel::mostLines;
    QStringList lines;
    for (const PlanLine &line : run.lines) {
        if (!line.done)
            lines.append(line.path.isEmpty() ? line.reason
                                             : Velmora::tr("Not deleted: %1 (%2)").arg(line.path, line.reason));
        else if (tellsAll)
            lines.append(Velmora::tr("Deleted %1").arg(line.path));
    }
    m_log->addLines(lines);
    QString done = Velmora::tr("Delete done: %1 ok, %2 failed").arg(run.succeeded).arg(run.failed);
    if (outcome.end == RunEnd::Cancelled)
        done = Velmora::tr("Cancelled. %1").arg(done);
    m_log->addLine(done);
    m_log->setVisible(m_log->isVisible() || run.failed > 0);
    if (!run.journalId.isEmpty())
        m_journalId = run.journalId;
    if (run.missingRoot.isEmpty()) {
        showTree(std::move(outcome.value->left));
    } else { // on a drive that was taken away nothing can be found, and all of it may be there
        showState();
        done = run.missingRoot + u' ' + done;
    }
    if (run.failed > 0)
        m_status->showFailure(done);
    else
        m_status->showMessage(done);
}

bool DuplicateFinderWidget::canEdit(EditCommand command) const
{
    return command == EditCommand::Undo && m_stage == Stage::Idle && !m_undoing->isRunning() && !m_journalId.isEmpty();
}

void DuplicateFinderWidget::edit(EditCommand command)
{
    if (command == EditCommand::Undo)
        onUndo();
}

void DuplicateFinderWidget::onUndo()
{
    if (!canEdit(EditCommand::Undo))
        return;
    FolderActionContext context;
    context.roots = {m_tree->scan().roots.first().folder, m_tree->scan().roots.last().folder};
    m_undoing->setContext(context);
    m_undoing->undoRun(m_journalId);
}

void DuplicateFinderWidget::confirmClose(std::function<void(bool mayClose)> answered)
{
    if (m_stage != Stage::Deleting) {
        answered(true);
        return;
    }
    Dialogs::instance().askYesNo(this, Velmora::tr("Close"),
                                 Velmora::tr("Files are being deleted. Stop after the current one and close?"), false,
                                 [answered = std::move(answered)](bool yes) { answered(yes); });
}

// Exporting ----------------------------------------------------------------------------------------------------------

void DuplicateFinderWidget::onExport()
{
    if (!m_hasScan)
        return;
    const auto chosen = [self = QPointer(this)](const QString &path) {
        if (!self)
            return;
        const bool isJson = path.endsWith(QLatin1String(".json"), Qt::CaseInsensitive);
        self->m_saver.write(path,
                            [scan = self->m_tree->scan(), isJson](QIODevice &device, const CancelFlag &cancel) mutable {
                                addDigests(scan.groups, cancel);
                                OutputBuffer output(device);
                                if (isJson)
                                    writeDuplicatesJson(output, scan);
                                else
                                    writeDuplicatesCsv(output, scan.groups);
                                return output.finish() && !cancel.isCancelled();
                            });
    };
    Dialogs::instance().saveFile(this, Velmora::tr("Export"), QStringLiteral("duplicates.csv"),
                                 Velmora::tr("CSV (*.csv);;JSON (*.json)"), chosen);
}

} // namespace velmora
