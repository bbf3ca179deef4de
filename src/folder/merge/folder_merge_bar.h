#pragma once

#include "session/session_bar.h"

class QMenu;

namespace velmora {

/// The commands of a folder merge session.
class FolderMergeBar final : public SessionBar {
    Q_OBJECT
public:
    explicit FolderMergeBar(QWidget *session);

    QAction *mergeTo = nullptr;
    QAction *undo = nullptr;
    QAction *takeLeft = nullptr;
    QAction *takeBase = nullptr;
    QAction *takeRight = nullptr;
    QAction *leaveOut = nullptr;
    QAction *asFound = nullptr;
    QAction *selectFolder = nullptr;
    QAction *openMerge = nullptr;

    /// What can be done with the selected rows.
    void fillRowMenu(QMenu &menu) const;

private:
    void addRun();
    void addChoices();
};

} // namespace velmora
