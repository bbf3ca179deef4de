#include "folder/git/git_bar.h"

#include "session/translate.h"

namespace velmora {

GitBar::GitBar(QWidget *session) : SessionBar(session)
{
    addCompare(Velmora::tr("Compare the two states"));
    addCancel(Velmora::tr("Cancel the comparison"));
    addSwapSides(Velmora::tr("Swap left and right"));
    addSeparator();
    addDifferenceSteps();
    addSeparator();
    sinceParting = addSwitch({"sincePartingAction",
                              Velmora::tr("Since they parted"),
                              QStringLiteral("history.png"),
                              {Qt::CTRL | Qt::SHIFT | Qt::Key_P},
                              Velmora::tr("Compare the right side with the commit where it parted from the left one")},
                             false);
    showTextBeside(sinceParting);
    untracked = addSwitch({"untrackedAction",
                           Velmora::tr("New files"),
                           QStringLiteral("new.png"),
                           {},
                           Velmora::tr("Show files of the work tree that the repository does not have yet; "
                                       "ignored ones stay left out")},
                          true);
    showSame = addSwitch({"showAllAction",
                          Velmora::tr("Unchanged"),
                          QStringLiteral("all.png"),
                          {},
                          Velmora::tr("Show files that are the same on both sides, too")},
                         false);
    showCommits = addSwitch({"showCommitsAction",
                             Velmora::tr("Commits"),
                             QStringLiteral("drawer.png"),
                             {Qt::Key_F4},
                             Velmora::tr("Show the commits between the two sides")},
                            true);
    openAsFolders = add({"openAsFoldersAction",
                         Velmora::tr("As folders"),
                         QStringLiteral("folder.png"),
                         {Qt::CTRL | Qt::SHIFT | Qt::Key_F},
                         Velmora::tr("Compare the two states as folders: with filters, reports and copies of files")});
    addSeparator();
    expandAll = add({"expandAllAction", Velmora::tr("Expand all"), QStringLiteral("expand_all.png")});
    collapseAll = add({"collapseAllAction", Velmora::tr("Collapse all"), QStringLiteral("collapse_all.png")});
    focusFilter = add({"focusFilterAction", Velmora::tr("Filter")});
    copyPaths = add({"copyPathsAction", Velmora::tr("Copy paths"), {}, {}, {}, false});
    open = add({"openAction", Velmora::tr("Open"), {}, {}, {}, false});
    openAsText = add({"openAsTextAction", Velmora::tr("Compare as text"), {}, {}, {}, false});
    openAsBytes = add({"openAsBytesAction", Velmora::tr("Compare byte for byte"), {}, {}, {}, false});
    refreshTheme();
}

QAction *GitBar::addSwitch(const Look &look, bool on)
{
    QAction *action = add(look);
    action->setCheckable(true);
    action->setChecked(on);
    return action;
}

} // namespace velmora
