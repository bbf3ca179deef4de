#include "folder/duplicates/duplicate_bar.h"

#include "session/translate.h"

#include <QMenu>

namespace velmora {

DuplicateBar::DuplicateBar(QWidget *session) : SessionBar(session)
{
    addRun();
    addSeparator();
    addRowActions();
    refreshTheme();
}

void DuplicateBar::addRun()
{
    scan = add({"scanAction",
                Velmora::tr("Scan duplicates"),
                QStringLiteral("find.png"),
                {Qt::Key_F5},
                Velmora::tr("Look for files of the same contents")});
    showTextBeside(scan);
    addCancel();
    addFolder = add({"addFolderAction",
                     Velmora::tr("Add a folder…"),
                     QStringLiteral("new_folder.png"),
                     {},
                     Velmora::tr("Look in another folder, too")});
    addSeparator();
    addDifferenceSteps();
    previousDifference->setToolTip(hintWithKeys(Velmora::tr("Previous group"), previousDifference->shortcuts()));
    nextDifference->setToolTip(hintWithKeys(Velmora::tr("Next group"), nextDifference->shortcuts()));
    addSeparator();
    deleteExtra = add({"deleteExtraAction",
                       Velmora::tr("Delete extra copies…"),
                       QStringLiteral("delete.png"),
                       {},
                       Velmora::tr("Choose copies that are to be deleted")});
    deleteExtra->setCheckable(true);
    showTextBeside(deleteExtra);
    undo = add(
        {"undoRunAction",
         Velmora::tr("Undo"),
         QStringLiteral("undo.png"),
         {},
         hintWithKeys(Velmora::tr("Bring back what this tab has deleted last"), {QKeySequence(QKeySequence::Undo)})});
}

void DuplicateBar::addRowActions()
{
    open = add({"openFileAction", Velmora::tr("Open"), QStringLiteral("open.png"), {}, Velmora::tr("Open the file")});
    reveal = add({"showInFileManagerAction",
                  Velmora::tr("Show in file manager"),
                  QStringLiteral("folder.png"),
                  {Qt::CTRL | Qt::Key_R}});
    compareFiles = add(
        {"compareEntriesAction",
         Velmora::tr("Compare two"),
         QStringLiteral("compare.png"),
         {},
         Velmora::tr("Compare the two selected files or folders, or the selected one with the first of its group")});
    exportAll = add({"exportAction",
                     Velmora::tr("Export…"),
                     QStringLiteral("save.png"),
                     {},
                     Velmora::tr("Save all groups as CSV or JSON")});
    copyPaths = add({"copyPathsAction", Velmora::tr("Copy paths"), {}, {QKeySequence::Copy}});
    focusFilter = add({"focusFilterAction", Velmora::tr("Filter")});
    toggleTick = add({"toggleTickAction", Velmora::tr("Check or uncheck")});
    tickFolder = add({"tickFolderAction", Velmora::tr("Check all copies in this folder")});
    clearFolder = add({"clearFolderAction", Velmora::tr("Uncheck all copies in this folder")});
}

void DuplicateBar::fillRowMenu(QMenu &menu) const
{
    menu.addActions({open, reveal, compareFiles, copyPaths});
    menu.addSeparator();
    menu.addActions({toggleTick, tickFolder, clearFolder});
}

} // namespace velmora
