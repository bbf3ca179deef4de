#include "folder/sync/sync_bar.h"

#include "session/translate.h"

#include <QMenu>

namespace velmora {

SyncBar::SyncBar(QWidget *session) : SessionBar(session)
{
    addRun();
    addSeparator();
    addRowActions();
    refreshTheme();
}

void SyncBar::addRun()
{
    analyze = add({"analyzeAction",
                   Velmora::tr("Analyze"),
                   QStringLiteral("reload.png"),
                   {Qt::Key_F5},
                   Velmora::tr("Scan folders and build a sync plan")});
    showTextBeside(analyze);
    syncNow = add({"syncNowAction",
                   Velmora::tr("Sync now"),
                   QStringLiteral("sync.png"),
                   {Qt::CTRL | Qt::Key_Return},
                   Velmora::tr("Run sync actions")});
    showTextBeside(syncNow);
    addCancel();
    undo = add({"undoRunAction",
                Velmora::tr("Undo"),
                QStringLiteral("undo.png"),
                {},
                hintWithKeys(Velmora::tr("Take the last sync of this tab back"), {QKeySequence(QKeySequence::Undo)})});
    addSwapSides(Velmora::tr("Swap left and right sides"));
    addSeparator();
    addDifferenceSteps();
}

void SyncBar::addRowActions()
{
    copyToRight = add({"copyToRightAction",
                       Velmora::tr("Copy to right"),
                       QStringLiteral("copy_right.png"),
                       {Qt::CTRL | Qt::Key_Right},
                       Velmora::tr("Have the selected entries copied to the right")});
    copyToLeft = add({"copyToLeftAction",
                      Velmora::tr("Copy to left"),
                      QStringLiteral("copy_left.png"),
                      {Qt::CTRL | Qt::Key_Left},
                      Velmora::tr("Have the selected entries copied to the left")});
    deleteOne = add({"deleteOneAction",
                     Velmora::tr("Delete where it is"),
                     QStringLiteral("delete.png"),
                     {Qt::Key_Delete},
                     Velmora::tr("Have the selected entries deleted that only one side has")});
    skip = add({"skipAction",
                Velmora::tr("Skip"),
                QStringLiteral("minus.png"),
                {Qt::Key_Space},
                Velmora::tr("Leave the selected entries as they are")});
    asPlanned = add({"asPlannedAction",
                     Velmora::tr("As planned"),
                     {},
                     {Qt::CTRL | Qt::Key_Backspace},
                     Velmora::tr("Give the selected entries the actions of the direction again")});
    open = add({"openEntryAction", Velmora::tr("Compare the entry")});
}

void SyncBar::fillRowMenu(QMenu &menu) const
{
    menu.addActions({copyToRight, copyToLeft, deleteOne, skip, asPlanned});
    menu.addSeparator();
    menu.addAction(open);
}

} // namespace velmora
