// What a duplicate finder scans, ticks and deletes.

#include "core/output_buffer.h"
#include "core/path_names.h"
#include "folder/actions/action_words.h"
#include "folder/actions/folder_actions.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/duplicates/duplicate_bar.h"
#include "folder/duplicates/duplicate_finder_widget.h"
#include "folder/duplicates/duplicate_view.h"
#include "folder/duplicates/more_folders.h"
#include "folder/duplicates/tick_panel.h"
#include "folder/engine/duplicate_report.h"
#include "folder/operations/duplicate_plan.h"
#include "session/dialogs.h"
#include "session/fault_text.h"
#include "session/frame/paths_bar.h"
#include "session/frame/status_line.h"
#include "session/session_host.h"
#include "session/translate.h"
#include "vfs/local_folder.h"

#include <QDir>
#include <QFileInfo>
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
    m_runner.start([question = question()](const CancelFlag &cancel,
                                           Progress &progress) { return scanDuplicates(question, cancel, progress); },
                   [this](RunOutcome<DuplicateScan> &&outcome) { takeScan(std::move(outcome)); },
                   [this](const ProgressState &state) { m_status->showProgress(state, shownPath(state.item)); });
    showState();
    Q_EMIT comparisonStarted();
}

void DuplicateFinderWidget::takeScan(RunOutcome<DuplicateScan> &&outcome)
{
    m_stage = Stage::Idle;
    m_status->clearProgress();
    if (!outcome.value) {
        m_status->showFailure(faultText(outcome.fault, Velmora::tr("Not enough memory")));
    } else {
        m_hasScan = true;
        showTree(std::make_unique<DuplicateTree>(std::move(*outcome.value)));
        const DuplicateScan &scan = m_tree->scan();
        if (scan.cancelled) {
            m_status->showMessage(Velmora::tr("Cancelled. Scanned %1 files, found %2 duplicate groups.")
                                      .arg(scan.files)
                                      .arg(scan.groups.size()));
        } else {
            m_status->showMessage(Velmora::tr("%1 files, %2 duplicate groups (%3 files involved)")
                                      .arg(scan.files)
                                      .arg(scan.groups.size())
                                      .arg(involvedFiles(scan.groups)),
                                  scan.overlapping.isEmpty()
                                      ? QString()
                                      : Velmora::tr("%1 lies in another of the folders and is scanned once")
                                            .arg(shownPath(scan.overlapping.first())));
            Q_EMIT comparisonFinished(m_scanned, {});
        }
        Q_EMIT tabTitleChanged(Velmora::tr("Duplicates: %1").arg(bareName(m_scanned)));
    }
    showState();
    Q_EMIT readingEnded();
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
    Dialogs::instance().openFolder(
        this, Velmora::tr("Keep the copies in this folder"), m_scanned, [self = QPointer(this)](const QString &folder) {
            if (!self)
                return;
            self->m_tree->tickByRule(self->shownGroups(), KeepRule::InFolders, {QDir::cleanPath(folder)});
            self->ticksChanged();
        });
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
    Dialogs::instance().askYesNo(this, Velmora::tr("Confirm delete"),
                                 Velmora::tr("Permanently delete %1 file(s)?").arg(m_tree->ticks().files()), false,
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
    QList<qint32> numbers;
    QList<DuplicateGroup> groups;
    QList<QList<qsizetype>> ticked;
    for (qint32 number = 0; number < m_tree->scan().groups.size(); ++number) {
        if (const QList<qsizetype> copies = m_tree->ticks().of(number); !copies.isEmpty()) {
            numbers.append(number);
            groups.append(m_tree->scan().groups.at(number));
            ticked.append(copies);
        }
    }
    const QString title = Velmora::tr("Duplicates: %1").arg(bareName(m_scanned));
    m_runner.start(
        [numbers, groups, ticked, title, roots = m_tree->scan().roots](const CancelFlag &cancel, Progress &progress) {
            QList<ExtraCopies> deletions;
            for (qsizetype i = 0; i < groups.size(); ++i)
                deletions.append({groups.at(i), ticked.at(i)});
            Deletion deletion{
                runPlan(planDeleteCopies(roots, deletions, DeleteManner::ForGood), title, cancel, progress), {}};
            for (qsizetype i = 0; i < groups.size(); ++i) {
                for (const qsizetype copy : ticked.at(i)) {
                    if (!FileAccess::native().describe(groups.at(i).copies.at(copy).path))
                        deletion.gone.append({numbers.at(i), copy});
                }
            }
            return deletion;
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
    for (const PlanLine &line : run.lines)
        m_log->addLine(line.done ? Velmora::tr("Deleted %1").arg(line.path)
                                 : Velmora::tr("Not deleted: %1 (%2)").arg(line.path, line.reason));
    QString done = Velmora::tr("Delete done: %1 ok, %2 failed").arg(run.succeeded).arg(run.failed);
    if (outcome.end == RunEnd::Cancelled)
        done = Velmora::tr("Cancelled. %1").arg(done);
    m_log->addLine(done);
    m_log->setVisible(m_log->isVisible() || run.failed > 0);
    m_journalId = run.journalId;
    showTree(m_tree->without(outcome.value->gone));
    if (run.failed > 0)
        m_status->showFailure(done);
    else
        m_status->showMessage(done);
}

void DuplicateFinderWidget::onUndo()
{
    if (m_stage != Stage::Idle || m_journalId.isEmpty())
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
