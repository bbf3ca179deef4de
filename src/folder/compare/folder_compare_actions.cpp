#include "folder/actions/action_words.h"
#include "folder/actions/compare_contents_dialog.h"
#include "folder/actions/contents_results_dialog.h"
#include "folder/actions/manual_alignment_dialog.h"
#include "folder/compare/file_commands.h"
#include "folder/compare/folder_compare_bar.h"
#include "folder/compare/folder_compare_widget.h"
#include "folder/compare/folder_status_bar.h"
#include "folder/compare/folder_view.h"
#include "session/dialogs.h"
#include "session/translate.h"

#include <QDir>
#include <QLocale>
#include <QMenu>
#include <QTime>

namespace velmora {

namespace {

/// What a method is called in the log and the status line.
QString methodWord(CompareMethod method)
{
    switch (method) {
    case CompareMethod::Crc:
        return Velmora::tr("CRC");
    case CompareMethod::Binary:
        return Velmora::tr("binary");
    case CompareMethod::Rules:
        break;
    }
    return Velmora::tr("rules");
}

} // namespace

// Files ---------------------------------------------------------------------------------------------------------------

void FolderCompareWidget::connectFileCommands()
{
    connect(m_fileCommands, &FileCommands::logLine, this, &FolderCompareWidget::log);
    connect(m_fileCommands, &FileCommands::statusChanged, this,
            [this](const QString &text) { showMessage(text.isEmpty() ? m_summary : text); });
    connect(m_fileCommands, &FileCommands::progressed, m_statusBar,
            [this](qint64 done, qint64 total) { m_statusBar->showProgress(done, total, {}); });
    connect(m_fileCommands, &FileCommands::runningChanged, this, [this] {
        showRunning();
        Q_EMIT editStateChanged();
    });
    connect(m_fileCommands, &FileCommands::othersTouched, this, &FolderCompareWidget::onRefresh);
    connect(m_bar->compareContents, &QAction::triggered, this, &FolderCompareWidget::askContentsCompare);
    connect(m_bar->align, &QAction::triggered, this, &FolderCompareWidget::onManualAlign);
    connect(&m_comparison, &FolderComparison::contentsCompared, this, &FolderCompareWidget::takeContents);
    connect(m_statusBar, &FolderStatusBar::readWanted, this, &FolderCompareWidget::readUnread);
    connect(&m_comparison, &FolderComparison::recompared, this, [this] {
        if (!m_contentsToRead.isEmpty())
            startContentCompare(std::exchange(m_contentsToRead, {}), m_contentsMethod);
    });
    fillActionsMenu();
}

void FolderCompareWidget::fillActionsMenu()
{
    QMenu &menu = m_bar->actionsMenu();
    menu.addActions({m_bar->compareContents, m_bar->align, m_bar->advancedFilters, m_bar->focusFilter});
    menu.addSeparator();
    menu.addActions({m_bar->copyToRight, m_bar->copyToLeft, m_bar->copyTo});
    menu.addActions({m_bar->moveToRight, m_bar->moveToLeft, m_bar->moveTo});
    menu.addActions({m_bar->deleteSelected, m_bar->deleteForGood, m_bar->rename, m_bar->newFolder});
    menu.addSeparator();
    menu.addActions({m_bar->mirrorToRight, m_bar->mirrorToLeft, m_bar->updateRight, m_bar->updateLeft,
                     m_bar->updateBoth, m_bar->syncFolders});
    menu.addSeparator();
    menu.addActions({m_bar->undoLast, m_bar->showInFileManager, m_bar->properties});
}

void FolderCompareWidget::onCopyToRight()
{
    copySelectedToSide(true);
}

void FolderCompareWidget::onCopyToLeft()
{
    copySelectedToSide(false);
}

void FolderCompareWidget::copySelectedToSide(bool leftToRight)
{
    m_fileCommands->carryOut(leftToRight ? FolderCommand::CopyToRight : FolderCommand::CopyToLeft);
}

void FolderCompareWidget::onDeleteSelected()
{
    m_fileCommands->carryOut(FolderCommand::Delete);
}

bool FolderCompareWidget::hasUnsavedChanges() const
{
    return m_fileCommands->isRunning();
}

void FolderCompareWidget::confirmClose(std::function<void(bool)> answered)
{
    if (!hasUnsavedChanges()) {
        answered(true);
        return;
    }
    Dialogs::instance().askYesNo(
        this, Velmora::tr("Close"),
        Velmora::tr("A command is still working on files. Stop it and close? What it has done so far stays done."),
        false, std::move(answered));
}

bool FolderCompareWidget::canEdit(EditCommand command) const
{
    return command == EditCommand::Undo && !m_fileCommands->isRunning() && m_fileCommands->canUndo();
}

void FolderCompareWidget::edit(EditCommand command)
{
    if (command == EditCommand::Undo)
        m_fileCommands->carryOut(FolderCommand::UndoLast);
}

// Contents ------------------------------------------------------------------------------------------------------------

QStringList FolderCompareWidget::selectedNames() const
{
    QStringList names;
    for (const qint32 node : m_view->selectedNodes())
        names.append(m_comparison.tree().item(node).name);
    return names;
}

void FolderCompareWidget::askContentsCompare()
{
    const FolderTree &tree = m_comparison.tree();
    if (tree.isEmpty()) {
        showMessage(Velmora::tr("Select two folders to compare"));
        return;
    }
    // Without a selection everything is meant.
    QStringList names = selectedNames();
    QList<FolderDiffItem> items = m_fileCommands->selection().items;
    if (names.isEmpty()) {
        for (qint32 node = 0; node < tree.size(); node = tree.node(node).end) {
            names.append(tree.item(node).name);
            items.append(tree.item(node));
        }
    }
    auto *dialog = new CompareContentsDialog(sourcesOf(m_comparison.spec().roots), items, m_contentsMethod, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog, names] {
        m_contentsMethod = dialog->method();
        m_showsContentsResults = dialog->showsResults();
        startContentCompare(names, m_contentsMethod);
    });
    dialog->open();
}

void FolderCompareWidget::startContentCompare(const QStringList &names, CompareMethod method)
{
    const FolderTree &tree = m_comparison.tree();
    QList<qint32> nodes;
    QStringList unread;
    for (const QString &name : names) {
        if (const qint32 node = tree.find(name); node >= 0)
            nodes.append(node);
    }
    std::sort(nodes.begin(), nodes.end());
    m_contentsUnmatched = 0;
    qint32 reached = 0;
    for (const qint32 node : std::as_const(nodes)) {
        for (qint32 i = std::max(node, reached); i < tree.node(node).end; ++i) {
            if (tree.node(i).unloaded)
                unread.append(tree.item(i).name);
            else if (!tree.item(i).isDir && !isPair(tree.item(i)))
                ++m_contentsUnmatched;
        }
        reached = std::max(reached, tree.node(node).end);
    }
    onContentsCompareStarted(method);
    if (unread.isEmpty()) {
        m_comparison.compareContents(nodes, method);
        return;
    }
    m_contentsToRead = names;
    m_comparison.recompare(unread);
}

void FolderCompareWidget::onContentsCompareStarted(CompareMethod method)
{
    const QString word = methodWord(method);
    showMessage(Velmora::tr("Comparing contents (%1)...").arg(word));
    log(Velmora::tr("%1 content compare (%2): %3 <-> %4")
            .arg(logTime(QTime::currentTime()), word, m_comparison.spec().roots.left.shown(),
                 m_comparison.spec().roots.right.shown()));
}

void FolderCompareWidget::readUnread()
{
    m_contentsUnmatched = 0;
    m_showsContentsResults = false;
    showMessage(Velmora::tr("Reading files of the same size and time..."));
    log(Velmora::tr("%1 read files of the same size and time: %2")
            .arg(logTime(QTime::currentTime()), QLocale().toString(m_comparison.tree().counts().unread)));
    m_comparison.readUnread();
}

void FolderCompareWidget::takeContents(const ContentsResult &result, bool cancelled)
{
    ContentsResults shown;
    shown.cancelled = cancelled;
    shown.unmatched = m_contentsUnmatched;
    for (const FolderDiffItem &pair : result.pairs) {
        if (pair.status == FolderTree::unknownStatus)
            continue;
        if (pair.diffStatus() == FolderDiffStatus::Same) {
            ++shown.same;
        } else {
            ++shown.different;
            shown.differing.append(pair.name);
        }
    }
    for (const FolderProblem &problem : result.problems)
        shown.unreadable.append(QDir::toNativeSeparators(problem.path));
    if (cancelled) {
        tellCancelled();
    } else {
        const QLocale locale;
        showMessage(Velmora::tr("Contents compared: %1 same, %2 different")
                        .arg(locale.toString(shown.same), locale.toString(shown.different)));
    }
    if (m_showsContentsResults) {
        auto *dialog = new ContentsResultsDialog(shown, this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->open();
    }
}

// Alignment -----------------------------------------------------------------------------------------------------------

void FolderCompareWidget::onManualAlign()
{
    const QList<FolderDiffItem> selected = m_fileCommands->selection().items;
    const QString first = selected.isEmpty() ? QString() : selected.first().name;
    const QString folder = first.left(first.lastIndexOf(u'/') + 1);
    askManualAlignment(
        *this, selected, m_comparison.tree().items(),
        [this, folder](const QString &leftName, const QString &rightName) { alignPair(leftName, rightName, folder); });
}

void FolderCompareWidget::alignPair(const QString &leftName, const QString &rightName, const QString &folder)
{
    const FolderTree &tree = m_comparison.tree();
    const qint32 left = tree.find(folder + leftName);
    const qint32 right = tree.find(folder + rightName);
    m_options.alignOverrides.append({leftName, rightName});
    log(Velmora::tr("%1 manual align: %2 <-> %3").arg(logTime(QTime::currentTime()), leftName, rightName));
    if (left < 0 || right < 0 || left == right) {
        onRefresh();
        return;
    }
    m_comparison.refilter(spec());
    m_comparison.recompare(QList<BranchTask>{
        {tree.item(left).name, {tree.item(left).leftPath, tree.item(right).rightPath}}, {tree.item(right).name, {}}});
    m_view->selectNames({tree.item(left).name});
}

} // namespace velmora
