#include "core/settings_store.h"
#include "folder/actions/action_words.h"
#include "folder/compare/file_commands.h"
#include "folder/compare/folder_compare_bar.h"
#include "folder/compare/folder_compare_side_pane.h"
#include "folder/compare/folder_compare_widget.h"
#include "folder/compare/folder_filter_bar.h"
#include "folder/compare/folder_log_panel.h"
#include "folder/compare/folder_notice.h"
#include "folder/compare/folder_report_export.h"
#include "folder/compare/folder_status_bar.h"
#include "folder/compare/folder_view.h"
#include "folder/compare/time_shift_bar.h"
#include "session/dialogs.h"
#include "session/translate.h"
#include "settings/options/folder_settings_store.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLocale>
#include <QMimeData>
#include <QUrl>

namespace velmora {

namespace {

QString absoluteFolder(const QString &path)
{
    return path.isEmpty() ? QString() : QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

/// The folder around, empty when there is none.
QString parentFolder(const QString &folder)
{
    QDir directory(absoluteFolder(folder));
    return !folder.isEmpty() && !directory.isRoot() && directory.cdUp() ? directory.absolutePath() : QString();
}

QString folderName(const QString &path)
{
    const QString name = QDir(path).dirName();
    return name.isEmpty() ? QDir::toNativeSeparators(path) : name;
}

} // namespace

// Inputs --------------------------------------------------------------------------------------------------------------

void FolderCompareWidget::browse(bool left)
{
    Dialogs::instance().openFolder(this, left ? Velmora::tr("Select left folder") : Velmora::tr("Select right folder"),
                                   left ? paths().left : paths().right,
                                   [this, left](const QString &path) { takeSidePath(left, path); });
}

void FolderCompareWidget::onBrowseLeft()
{
    browse(true);
}

void FolderCompareWidget::onBrowseRight()
{
    browse(false);
}

void FolderCompareWidget::takeSidePath(bool left, const QString &path)
{
    (left ? m_view->leftSide() : m_view->rightSide()).setPath(path);
    pathsChanged(left);
}

void FolderCompareWidget::pathsChanged(bool leftWritten)
{
    const SessionPaths folders = paths();
    const QString &written = leftWritten ? folders.left : folders.right;
    if (!written.isEmpty()) {
        const QString side = leftWritten ? Velmora::tr("left") : Velmora::tr("right");
        log(Velmora::tr("Wrote %1 side path: %2").arg(side, QDir::toNativeSeparators(written)));
    }
    m_timeShifts->reset();
    if (!folders.left.isEmpty() && !folders.right.isEmpty()) {
        showMessage(Velmora::tr("Both paths set; loading directories"));
        onCompare();
        return;
    }
    m_comparison.clear();
    m_hasResult = false;
    if (folders.left.isEmpty() && folders.right.isEmpty()) {
        showMessage(Velmora::tr("Select two folders to compare"));
    } else {
        const QString side = folders.right.isEmpty() ? Velmora::tr("left") : Velmora::tr("right");
        showMessage(Velmora::tr("Waiting for other side (only %1 set)").arg(side));
    }
    showNotice();
}

void FolderCompareWidget::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void FolderCompareWidget::dropEvent(QDropEvent *event)
{
    QStringList dropped;
    for (const QUrl &url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            dropped.append(url.toLocalFile());
    }
    event->acceptProposedAction();
    dropPaths(dropped, event->position().toPoint());
}

void FolderCompareWidget::dropPaths(const QStringList &dropped, QPoint position)
{
    if (dropped.isEmpty())
        return;
    for (const QString &path : dropped) {
        if (!QFileInfo(path).isDir()) {
            showMessage(Velmora::tr("Only folders can be compared here; this is a file: %1")
                            .arg(QDir::toNativeSeparators(path)));
            return;
        }
    }
    if (dropped.size() >= 2) {
        setPaths({dropped.at(0), dropped.at(1), {}});
        pathsChanged(true);
        return;
    }
    takeSidePath(m_view->isLeft(m_view->mapFrom(this, position)), dropped.first());
}

void FolderCompareWidget::onSwapSides()
{
    const SessionPaths folders = paths();
    setPaths({folders.right, folders.left, {}});
    std::swap(m_options.leftReadOnly, m_options.rightReadOnly);
    for (ManualAlignRule &rule : m_options.alignOverrides)
        std::swap(rule.left, rule.right);
    takeOptions(m_options);
    if (m_hasResult || m_comparison.isRunning())
        onRefresh();
}

// Loading -------------------------------------------------------------------------------------------------------------

FolderSpec FolderCompareWidget::spec() const
{
    const SessionPaths folders = paths();
    return {absoluteFolder(folders.left),
            absoluteFolder(folders.right),
            m_options,
            m_excludedNames,
            m_ignoredNames,
            m_limits,
            m_isSystemFile};
}

void FolderCompareWidget::onCompare()
{
    const SessionPaths folders = paths();
    if (folders.left.isEmpty() || folders.right.isEmpty()) {
        showMessage(Velmora::tr("Select two folders to compare"));
        showNotice();
        return;
    }
    const FolderSpec wanted = spec();
    log(Velmora::tr("%1 load dirs: %2 <-> %3")
            .arg(logTime(QTime::currentTime()), QDir::toNativeSeparators(wanted.left),
                 QDir::toNativeSeparators(wanted.right)));
    loadCurrentLevel();
}

void FolderCompareWidget::onRefresh()
{
    onCompare();
}

void FolderCompareWidget::loadCurrentLevel()
{
    const FolderSpec wanted = spec();
    const bool otherFolders = m_loaded.left != wanted.left || m_loaded.right != wanted.right;
    m_loaded = {wanted.left, wanted.right, {}};
    m_hasResult = false;
    m_openedNames.clear();
    if (otherFolders) {
        m_comparison.clear();
        rememberPaths();
    }
    showMessage(Velmora::tr("Reading directories..."));
    // A report tells of the whole trees.
    m_comparison.load(wanted, m_treeMode || !m_pendingReport.isEmpty());
    Q_EMIT tabTitleChanged(title());
    Q_EMIT comparisonStarted();
    showRunning();
    showNotice();
}

void FolderCompareWidget::rememberPaths()
{
    SessionSettings settings;
    FolderSettingsStore store(settings);
    store.addRecentPath(m_loaded.right);
    store.addRecentPath(m_loaded.left);
    for (FolderCompareSidePane *side : {&m_view->leftSide(), &m_view->rightSide()})
        side->setRecentPaths(store.recentPaths());
}

QString FolderCompareWidget::title() const
{
    return Velmora::tr("%1 <-> %2").arg(folderName(m_loaded.left), folderName(m_loaded.right));
}

void FolderCompareWidget::onCancelCompare()
{
    if (m_fileCommands->isRunning())
        m_fileCommands->cancel();
    if (!m_comparison.isRunning())
        return;
    showMessage(Velmora::tr("Cancelling..."));
    m_contentsToRead.clear();
    m_comparison.cancel();
    showRunning();
}

void FolderCompareWidget::onFolderCompareFinished(quint64 generation, const QList<FolderDiffItem> &items,
                                                  bool cancelled)
{
    if (generation != m_comparison.generation())
        return;
    m_hasResult = true;
    if (std::exchange(m_expandAllWhenLoaded, false))
        m_view->rows().setAllExpanded(true);
    if (m_treeMode && !cancelled) {
        const auto folders = std::count_if(items.begin(), items.end(), [](const auto &item) { return item.isDir; });
        const auto nested =
            std::count_if(items.begin(), items.end(), [](const auto &item) { return item.name.contains(u'/'); });
        log(Velmora::tr("%1 tree mode: %2 items (folders %3, nested %4)")
                .arg(logTime(QTime::currentTime()))
                .arg(items.size())
                .arg(folders)
                .arg(nested));
    }
    tellProblems();
    if (cancelled) {
        showMessage(Velmora::tr("Compare cancelled"));
        log(Velmora::tr("%1 compare cancelled").arg(logTime(QTime::currentTime())));
        showNotice();
        return;
    }
    const FolderCounts &counts = m_comparison.tree().counts();
    const qint64 differences = counts.different + counts.leftOnly + counts.rightOnly;
    const QLocale locale;
    QString message = differences == 0
                          ? Velmora::tr("%1 files compared, no differences").arg(locale.toString(counts.files()))
                          : Velmora::tr("%1 files compared, %2 differences")
                                .arg(locale.toString(counts.files()), locale.toString(differences));
    if (const qsizetype problems = m_comparison.problems().size(); problems > 0)
        message = Velmora::tr("%1; %2 could not be read").arg(message, locale.toString(problems));
    showMessage(message);
    showNotice();
    Q_EMIT comparisonFinished(m_loaded.left, m_loaded.right);
    if (!m_pendingReport.isEmpty())
        m_reports->write(itemsForReport(m_comparison.tree()), m_loaded, std::exchange(m_pendingReport, {}));
}

void FolderCompareWidget::tellProblems()
{
    constexpr qsizetype mostTold = 200;
    const QList<FolderProblem> &problems = m_comparison.problems();
    for (const FolderProblem &problem : problems.first(std::min(problems.size(), mostTold))) {
        const QString path = QDir::toNativeSeparators(problem.path);
        switch (problem.kind) {
        case FolderProblem::Kind::UnreadableFolder:
            log(Velmora::tr("Cannot read folder: %1").arg(path));
            break;
        case FolderProblem::Kind::UnreadableFile:
            log(Velmora::tr("Cannot read file: %1").arg(path));
            break;
        case FolderProblem::Kind::LinkCycle:
            log(Velmora::tr("Link to a folder that contains it, not followed: %1").arg(path));
            break;
        }
    }
    if (problems.size() > mostTold)
        log(Velmora::tr("... and %1 more").arg(problems.size() - mostTold));
}

void FolderCompareWidget::showRootsUnreadable(FolderRead left, FolderRead right)
{
    QStringList lines;
    for (const bool isLeft : {true, false}) {
        const FolderRead read = isLeft ? left : right;
        const QString path = QDir::toNativeSeparators(isLeft ? m_loaded.left : m_loaded.right);
        if (read == FolderRead::Missing)
            lines.append(Velmora::tr("Folder not found: %1").arg(path));
        else if (read == FolderRead::Unreadable)
            lines.append(Velmora::tr("Cannot read folder: %1").arg(path));
    }
    for (const QString &line : lines)
        log(line);
    showMessage(lines.first());
    m_view->notice().tell(lines.join(u'\n'), Velmora::tr("Try again"), [this] { onRefresh(); });
}

// Levels --------------------------------------------------------------------------------------------------------------

void FolderCompareWidget::navigate(const QString &left, const QString &right)
{
    log(Velmora::tr("%1 navigate: %2 <-> %3")
            .arg(logTime(QTime::currentTime()), QDir::toNativeSeparators(left), QDir::toNativeSeparators(right)));
    setPaths({left, right, {}});
    loadCurrentLevel();
}

void FolderCompareWidget::onNavigateUp()
{
    const SessionPaths folders = paths();
    const QString left = parentFolder(folders.left);
    const QString right = parentFolder(folders.right);
    if (left.isEmpty() || right.isEmpty()) {
        showMessage(Velmora::tr("There is no folder above both sides"));
        return;
    }
    m_cameFrom = folderName(absoluteFolder(folders.left));
    navigate(left, right);
}

void FolderCompareWidget::onItemExpanded(const QModelIndex &item)
{
    const qint32 node = m_view->rows().nodeAt(item.row());
    if (node < 0)
        return;
    const FolderTree &tree = m_comparison.tree();
    if (!tree.node(node).unloaded && tree.isExpandable(node) && !tree.node(node).expanded)
        logExpanded(node);
    m_view->rows().setExpanded(item.row(), true);
}

void FolderCompareWidget::logExpanded(qint32 node)
{
    const FolderTree &tree = m_comparison.tree();
    log(Velmora::tr("%1 expand: %2 (%3 items)")
            .arg(logTime(QTime::currentTime()), QDir::toNativeSeparators(tree.item(node).name))
            .arg(tree.childCount(node)));
}

void FolderCompareWidget::onItemCollapsed(const QModelIndex &item)
{
    m_view->rows().setExpanded(item.row(), false);
}

void FolderCompareWidget::onExpandAll()
{
    log(Velmora::tr("%1 expand all subfolders recursively").arg(logTime(QTime::currentTime())));
    m_treeMode = true;
    m_expandAllWhenLoaded = !m_comparison.isWhole();
    m_view->rows().setAllExpanded(true);
    // A run that is under way finds everything; one that was cancelled has left something out.
    if (m_expandAllWhenLoaded && m_hasResult && !m_comparison.isRunning())
        loadCurrentLevel();
}

void FolderCompareWidget::onCollapseAll()
{
    m_treeMode = false;
    m_expandAllWhenLoaded = false;
    m_view->rows().setAllExpanded(false);
}

// What is shown -------------------------------------------------------------------------------------------------------

void FolderCompareWidget::showNotice()
{
    FolderNotice &notice = m_view->notice();
    const SessionPaths folders = paths();
    const FolderTree &tree = m_comparison.tree();
    if (folders.left.isEmpty() || folders.right.isEmpty()) {
        notice.tell(folders.left.isEmpty() && folders.right.isEmpty()
                        ? Velmora::tr("Drop a folder on each side, or enter the two paths above.")
                        : Velmora::tr("Drop a folder on the other side, or enter its path above."));
        return;
    }
    if (m_view->rows().rowCount() > 0 || m_comparison.stage() != FolderComparison::Stage::None || !m_hasResult) {
        notice.clear();
        return;
    }
    if (tree.isEmpty()) {
        notice.tell(Velmora::tr("Both folders are empty."));
    } else if (tree.counts().files() == 0 && tree.counts().folders == 0) {
        notice.tell(Velmora::tr("Filters hide all %1 entries.").arg(QLocale().toString(tree.counts().hidden)),
                    Velmora::tr("Session settings..."), [this] { onSessionSettings(0); });
    } else if (m_view->rows().view() == RowsView::Differences) {
        notice.tell(Velmora::tr("There are no differences."), Velmora::tr("Show all entries"), [this] { onShowAll(); });
    } else {
        notice.tell(Velmora::tr("No file is the same on both sides."), Velmora::tr("Show all entries"),
                    [this] { onShowAll(); });
    }
}

void FolderCompareWidget::showProgress(const ProgressState &state)
{
    const QLocale locale;
    if (state.phase == int(FolderPhase::Reading)) {
        m_comparingSince.invalidate();
        m_statusBar->showProgress(0, 0, Velmora::tr("%1 entries read").arg(locale.toString(state.done)));
        return;
    }
    QString text = Velmora::tr("%1 of %2 compared")
                       .arg(locale.formattedDataSize(state.done), locale.formattedDataSize(state.total));
    if (!m_comparingSince.isValid())
        m_comparingSince.start();
    // The first moments say little about the rest.
    constexpr qint64 tellingMs = 2000;
    const qint64 elapsed = m_comparingSince.elapsed();
    if (elapsed > tellingMs && state.done > 0 && state.total > state.done) {
        const auto seconds = qint64(double(elapsed) * double(state.total - state.done) / double(state.done) / 1000.0);
        const QString left = QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'));
        text += u' ' + Velmora::tr("(about %1 left)").arg(left);
    }
    m_statusBar->showProgress(state.done, state.total, text);
}

void FolderCompareWidget::showRunning()
{
    const bool running = m_comparison.isRunning() || m_fileCommands->isRunning();
    m_bar->showRunning(running, m_comparison.isCancelling());
    if (running)
        m_statusBar->showProgress(0, 0, {});
    else
        m_statusBar->clearProgress();
    m_comparingSince.invalidate();
}

void FolderCompareWidget::showSelection()
{
    const QList<qint32> nodes = m_view->selectedNodes();
    if (nodes.size() < 2) {
        m_statusBar->showSelection({});
        return;
    }
    m_statusBar->showSelection(Velmora::tr("%1 selected").arg(QLocale().toString(nodes.size())));
}

void FolderCompareWidget::showMessage(const QString &message)
{
    m_statusBar->showMessage(message);
    Q_EMIT statusMessage(message);
}

void FolderCompareWidget::log(const QString &line)
{
    m_logPanel->addLine(line);
}

} // namespace velmora
