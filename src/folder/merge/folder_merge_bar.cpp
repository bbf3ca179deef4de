#include "folder/merge/folder_merge_bar.h"

#include "session/translate.h"

#include <QMenu>

namespace velmora {

FolderMergeBar::FolderMergeBar(QWidget *session) : SessionBar(session)
{
    addRun();
    addSeparator();
    addChoices();
    refreshTheme();
}

void FolderMergeBar::addRun()
{
    compare = add({"compareAction",
                   Velmora::tr("Compare"),
                   QStringLiteral("reload.png"),
                   {},
                   Velmora::tr("See what both versions have made of each file of the base")});
    showTextBeside(compare);
    mergeTo = add({"mergeToAction",
                   Velmora::tr("Merge to..."),
                   QStringLiteral("save.png"),
                   {Qt::CTRL | Qt::Key_Return},
                   Velmora::tr("Write the merged tree into a folder")});
    showTextBeside(mergeTo);
    addCancel();
    undo = add({"undoRunAction",
                Velmora::tr("Undo"),
                QStringLiteral("undo.png"),
                {},
                hintWithKeys(Velmora::tr("Take the last merge of this tab back"), {QKeySequence(QKeySequence::Undo)})});
    addSeparator();
    addDifferenceSteps();
    previousDifference->setToolTip(hintWithKeys(Velmora::tr("Previous conflict"), previousDifference->shortcuts()));
    nextDifference->setToolTip(hintWithKeys(Velmora::tr("Next conflict"), nextDifference->shortcuts()));
}

void FolderMergeBar::addChoices()
{
    takeLeft = add({"takeLeftAction",
                    Velmora::tr("Take left"),
                    QStringLiteral("copy_right.png"),
                    {Qt::CTRL | Qt::Key_1},
                    Velmora::tr("Take the left version of the selected files")});
    takeBase = add({"takeBaseAction",
                    Velmora::tr("Take base"),
                    {},
                    {Qt::CTRL | Qt::Key_2},
                    Velmora::tr("Take the base's version of the selected files")});
    takeRight = add({"takeRightAction",
                     Velmora::tr("Take right"),
                     QStringLiteral("copy_left.png"),
                     {Qt::CTRL | Qt::Key_3},
                     Velmora::tr("Take the right version of the selected files")});
    leaveOut = add({"leaveOutAction",
                    Velmora::tr("Leave out"),
                    QStringLiteral("minus.png"),
                    {Qt::Key_Delete},
                    Velmora::tr("Leave the selected files out of the merged tree")});
    asFound = add({"asFoundAction", Velmora::tr("As found"), {}, {Qt::CTRL | Qt::Key_Backspace}});
    selectFolder = add({"selectFolderAction",
                        Velmora::tr("Select the folder"),
                        {},
                        {Qt::CTRL | Qt::SHIFT | Qt::Key_A},
                        Velmora::tr("Select all files of the current one's folder; again, of the folder around it")});
    openMerge = add({"openMergeAction",
                     Velmora::tr("Open in Text merge"),
                     QStringLiteral("edit.png"),
                     {},
                     Velmora::tr("Merge the three versions of the current file by hand (Enter)")});
}

void FolderMergeBar::fillRowMenu(QMenu &menu) const
{
    menu.addActions({takeLeft, takeBase, takeRight, leaveOut, asFound});
    menu.addSeparator();
    menu.addActions({selectFolder, openMerge});
}

} // namespace velmora
