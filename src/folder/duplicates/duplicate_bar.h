#pragma once

#include "session/session_bar.h"

class QMenu;

namespace velmora {

/// The commands of a duplicate finder.
class DuplicateBar final : public SessionBar {
    Q_OBJECT
public:
    explicit DuplicateBar(QWidget *session);

    QAction *scan = nullptr;
    QAction *deleteExtra = nullptr; ///< on while check boxes are shown
    QAction *undo = nullptr;
    QAction *open = nullptr;
    QAction *reveal = nullptr;
    QAction *compareFiles = nullptr;
    QAction *copyPaths = nullptr;
    QAction *exportAll = nullptr;
    QAction *addFolder = nullptr;
    QAction *focusFilter = nullptr;
    QAction *toggleTick = nullptr;
    QAction *tickFolder = nullptr;
    QAction *clearFolder = nullptr;

    /// The actions for the selected rows.
    void fillRowMenu(QMenu &menu) const;

private:
    void addRun();
    void addRowActions();
};

} // namespace velmora
