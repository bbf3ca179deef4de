#include "folder/compare/folder_compare_bar.h"

#include "session/translate.h"

#include <QMenu>
#include <QToolButton>

namespace velmora {

FolderCompareBar::FolderCompareBar(QWidget *session)
    : SessionBar(session), m_actionsMenu(new QMenu(this)), m_presetMenu(new QMenu(this))
{
    addNavigation();
    addSeparator();
    addViews();
    addSeparator();
    addFileCommands();
    addSeparator();
    addCommands();
    refreshTheme();
}

void FolderCompareBar::addNavigation()
{
    refresh = add({"refreshAction",
                   Velmora::tr("Refresh"),
                   QStringLiteral("reload.png"),
                   {},
                   Velmora::tr("Reload folder listing")});
    showTextBeside(refresh);
    addCancel(Velmora::tr("Cancel the current comparison"));
    addSwapSides(Velmora::tr("Swap left and right sides"));
    addSeparator();
    addDifferenceSteps();
}

void FolderCompareBar::addViews()
{
    addChoice({{&showAll,
                {"showAllAction", Velmora::tr("All"), QStringLiteral("all.png"), {}, Velmora::tr("Show all entries")}},
               {&showDifferences,
                {"showDifferencesAction",
                 Velmora::tr("Diff"),
                 QStringLiteral("diff.png"),
                 {},
                 Velmora::tr("Show entries that differ, and the folders around them")}},
               {&showIdentical,
                {"showIdenticalAction",
                 Velmora::tr("Same"),
                 QStringLiteral("same.png"),
                 {},
                 Velmora::tr("Show files that are the same")}}});
    addSeparator();
    expandAll = add({"expandAllAction",
                     Velmora::tr("Expand"),
                     QStringLiteral("expand_all.png"),
                     {Qt::CTRL | Qt::Key_Plus},
                     Velmora::tr("Expand all subfolders")});
    collapseAll = add({"collapseAllAction",
                       Velmora::tr("Collapse"),
                       QStringLiteral("collapse_all.png"),
                       {Qt::CTRL | Qt::Key_Minus},
                       Velmora::tr("Collapse all subfolders")});
}

void FolderCompareBar::addFileCommands()
{
    copyToRight = add({"copyToRightAction",
                       Velmora::tr("Copy to the right"),
                       QStringLiteral("copy_right.png"),
                       {Qt::CTRL | Qt::Key_Right},
                       Velmora::tr("Copy selected items from left to right")});
    copyToLeft = add({"copyToLeftAction",
                      Velmora::tr("Copy to the left"),
                      QStringLiteral("copy_left.png"),
                      {Qt::CTRL | Qt::Key_Left},
                      Velmora::tr("Copy selected items from right to left")});
    const auto hidden = [this](Look look) {
        look.hasButton = false;
        return add(look);
    };
    moveToRight =
        hidden({"moveToRightAction", Velmora::tr("Move to the right"), {}, {Qt::CTRL | Qt::SHIFT | Qt::Key_Right}});
    moveToLeft =
        hidden({"moveToLeftAction", Velmora::tr("Move to the left"), {}, {Qt::CTRL | Qt::SHIFT | Qt::Key_Left}});
    moveTo = hidden({"moveToAction", Velmora::tr("Move to folder...")});
    copyTo = hidden({"copyToAction", Velmora::tr("Copy to folder...")});
    deleteSelected = hidden(
        {"deleteAction", Velmora::tr("Delete..."), QStringLiteral("delete.png"), {QKeySequence(Qt::Key_Delete)}});
    deleteForGood =
        hidden({"deleteForGoodAction", Velmora::tr("Delete for good..."), {}, {Qt::SHIFT | Qt::Key_Delete}});
    rename =
        hidden({"renameAction", Velmora::tr("Rename..."), QStringLiteral("rename.png"), {QKeySequence(Qt::Key_F2)}});
    newFolder = hidden({"newFolderAction",
                        Velmora::tr("New folder..."),
                        QStringLiteral("new_folder.png"),
                        {Qt::CTRL | Qt::SHIFT | Qt::Key_N}});
    mirrorToRight =
        hidden({"mirrorToRightAction", Velmora::tr("Mirror to the right..."), QStringLiteral("mirror_right.png")});
    mirrorToLeft =
        hidden({"mirrorToLeftAction", Velmora::tr("Mirror to the left..."), QStringLiteral("mirror_left.png")});
    updateRight = hidden({"updateRightAction", Velmora::tr("Update the right side...")});
    updateLeft = hidden({"updateLeftAction", Velmora::tr("Update the left side...")});
    updateBoth = hidden({"updateBothAction", Velmora::tr("Update both sides...")});
    undoLast = hidden({"undoLastAction", Velmora::tr("Undo the last operation"), QStringLiteral("undo.png")});
    showInFileManager = hidden({"showInFileManagerAction", Velmora::tr("Show in file manager")});
    properties =
        hidden({"propertiesAction", Velmora::tr("Properties"), QStringLiteral("info.png"), {Qt::ALT | Qt::Key_Return}});
    compareContents = hidden({"compareContentsAction",
                              Velmora::tr("Compare contents..."),
                              QStringLiteral("compare.png"),
                              {QKeySequence(Qt::Key_F7)}});
    align = hidden({"alignAction", Velmora::tr("Align with other side"), QStringLiteral("align.png")});
    syncFolders = hidden({"syncFoldersAction", Velmora::tr("Synchronise these folders"), QStringLiteral("sync.png")});
    advancedFilters = hidden({"advancedFiltersAction", Velmora::tr("Size and date filters...")});
    showVersions = hidden({"showVersionsAction", Velmora::tr("File versions")});
    showVersions->setCheckable(true);
    showVersions->setToolTip(Velmora::tr("Show what version each program and library says it is"));
    focusFilter = hidden({"focusFilterAction", Velmora::tr("Filter by name"), QStringLiteral("filter.png")});
}

void FolderCompareBar::addCommands()
{
    actions = add({"actionsAction",
                   Velmora::tr("Actions"),
                   QStringLiteral("play.png"),
                   {Qt::Key_F4},
                   Velmora::tr("Compare actions")});
    giveMenu(actions, m_actionsMenu);
    rules = add({"rulesAction",
                 Velmora::tr("Rules"),
                 QStringLiteral("rules.png"),
                 {},
                 Velmora::tr("Session settings: rules, filters, handling")});
    preset = add({"presetAction",
                  Velmora::tr("Preset"),
                  QStringLiteral("preset.png"),
                  {Qt::CTRL | Qt::Key_P},
                  Velmora::tr("Built-in comparison presets")});
    giveMenu(preset, m_presetMenu);
    m_presetMenu->setAccessibleName(Velmora::tr("Comparison preset"));
    exportReport = add({"exportAction",
                        Velmora::tr("Export"),
                        QStringLiteral("report.png"),
                        {Qt::CTRL | Qt::Key_E},
                        Velmora::tr("Export diff report as HTML")});
    showFilter = add({"showFilterAction",
                      Velmora::tr("Filter bar"),
                      QStringLiteral("filter.png"),
                      {},
                      Velmora::tr("Show the filter bar")});
    showLog = add({"showLogAction",
                   Velmora::tr("Log"),
                   QStringLiteral("log.png"),
                   {Qt::CTRL | Qt::Key_L},
                   Velmora::tr("Show the action log")});
    showFilter->setCheckable(true);
    showLog->setCheckable(true);
    legend = add({"legendAction",
                  Velmora::tr("Legend"),
                  QStringLiteral("legend.png"),
                  {Qt::Key_F1},
                  Velmora::tr("Color and symbol legend")});
}

void FolderCompareBar::giveMenu(QAction *action, QMenu *menu)
{
    menu->setToolTipsVisible(true);
    action->setMenu(menu);
    connect(action, &QAction::triggered, this, [this, action] { openMenu(action); });
    if (auto *button = qobject_cast<QToolButton *>(widgetForAction(action))) {
        button->setPopupMode(QToolButton::InstantPopup);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    }
}

void FolderCompareBar::openMenu(QAction *action)
{
    // A bar that is too narrow for the button keeps it out of sight.
    const QWidget *button = widgetForAction(action);
    const QWidget *below = button && button->isVisible() ? button : this;
    action->menu()->popup(below->mapToGlobal(QPoint(0, below->height())));
}

} // namespace velmora
