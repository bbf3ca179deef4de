#pragma once

#include "session/session_bar.h"

class QMenu;

namespace velmora {

/// The commands of a folder comparison as buttons and keys.
///
/// The session connects the actions to its slots and fills the two menus; this class knows what they are called and
/// look like. Actions without a button are in the context menu or have keys alone.
class FolderCompareBar final : public SessionBar {
    Q_OBJECT
public:
    /// The actions' keys work everywhere in `session`, which owns the bar.
    explicit FolderCompareBar(QWidget *session);

    QAction *refresh;
    QAction *showAll;
    QAction *showDifferences;
    QAction *showIdentical;
    QAction *expandAll;
    QAction *collapseAll;
    QAction *copyToRight;
    QAction *copyToLeft;
    QAction *actions; ///< opens `actionsMenu`
    QAction *rules;
    QAction *preset; ///< opens `presetMenu`
    QAction *legend;
    QAction *exportReport;
    QAction *showLog;    ///< checkable
    QAction *showFilter; ///< checkable
    QAction *compareContents;
    QAction *align;
    QAction *deleteSelected;
    QAction *deleteForGood;
    QAction *rename;
    QAction *newFolder;
    QAction *moveToRight;
    QAction *moveToLeft;
    QAction *moveTo;
    QAction *copyTo;
    QAction *mirrorToRight;
    QAction *mirrorToLeft;
    QAction *updateRight;
    QAction *updateLeft;
    QAction *updateBoth;
    QAction *undoLast;
    QAction *showInFileManager;
    QAction *properties;
    QAction *advancedFilters;
    QAction *focusFilter;
    QAction *showVersions;
    QAction *syncFolders;

    [[nodiscard]] QMenu &actionsMenu() { return *m_actionsMenu; }
    [[nodiscard]] QMenu &presetMenu() { return *m_presetMenu; }

private:
    void addNavigation();
    void addViews();
    void addCommands();
    void addFileCommands();
    void giveMenu(QAction *action, QMenu *menu);
    void openMenu(QAction *action);

    QMenu *m_actionsMenu;
    QMenu *m_presetMenu;
};

} // namespace velmora
