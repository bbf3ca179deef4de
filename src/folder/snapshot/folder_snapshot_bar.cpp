#include "folder/snapshot/folder_snapshot_bar.h"

#include "session/translate.h"

namespace velmora {

FolderSnapshotBar::FolderSnapshotBar(QWidget *session) : ListBar(session)
{
    addRuns();
    addSeparator();
    addListCommands();
    addSeparator();
    open = add({"openAction",
                Velmora::tr("Compare the files"),
                QStringLiteral("open.png"),
                {},
                Velmora::tr("Compare the files of the current row as they are now (Return)")});
    showInFileManager = add({"showInFileManagerAction", Velmora::tr("Show in file manager")});
    addSides();
    refreshTheme();
}

void FolderSnapshotBar::addRuns()
{
    addCompare(Velmora::tr("Compare the two sides"));
    create = add({"createAction",
                  Velmora::tr("Create snapshot from left…"),
                  QStringLiteral("capture.png"),
                  {Qt::CTRL | Qt::Key_S},
                  Velmora::tr("Record the files of the left folder in a snapshot file")});
    showTextBeside(create);
    addCancel(Velmora::tr("Cancel what is being done"));
}

void FolderSnapshotBar::addSides()
{
    load.left = add({"loadLeftAction",
                     Velmora::tr("Load left side..."),
                     QStringLiteral("load.png"),
                     {Qt::CTRL | Qt::Key_O},
                     Velmora::tr("Load a snapshot file as the left side"),
                     false});
    load.right = add({"loadRightAction",
                      Velmora::tr("Load right side..."),
                      QStringLiteral("load.png"),
                      {Qt::CTRL | Qt::SHIFT | Qt::Key_O},
                      Velmora::tr("Load a snapshot file as the right side"),
                      false});
    focus.left = add({"focusLeftAction", Velmora::tr("Left side"), {}, {Qt::ALT | Qt::Key_L}});
    focus.right = add({"focusRightAction", Velmora::tr("Right side"), {}, {Qt::ALT | Qt::Key_R}});
}

} // namespace velmora
