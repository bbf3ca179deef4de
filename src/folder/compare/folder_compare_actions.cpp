#include "folder/actions/action_words.h"
#include "folder/actions/manual_alignment_dialog.h"
#include "folder/compare/contents_run.h"
#include "folder/compare/file_commands.h"
#include "folder/compare/folder_compare_bar.h"
#include "folder/compare/folder_compare_widget.h"
#include "folder/compare/folder_view.h"
#include "session/dialogs.h"
#include "session/translate.h"

#include <QDir>
#include <QMenu>
#include <QTime>

namespace velmora {

// Files ---------------------------------------------------------------------------------------------------------------

void FolderCompareWidget::fillActionsMenu()
{
    QMenu &menu = m_bar->actionsMenu();
    menu.addActions({m_bar->compareContents, m_bar->align, m_bar->advancedFilters, m_bar->focusFilter});
    menu.addAction(m_bar->showVersions);
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

void FolderCompareWidget::onContentsCompareStarted(CompareMethod method)
{
    const QString word = methodWord(method);
    showMessage(Velmora::tr("Comparing contents (%1)...").arg(word));
    log(Velmora::tr("%1 content compare (%2): %3 <-> %4")
            .arg(logTime(QTime::currentTime()), word, m_comparison.spec().roots.left.shown(),
                 m_comparison.spec().roots.right.shown()));
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
