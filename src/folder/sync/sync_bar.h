#pragma once

#include "session/session_bar.h"

class QMenu;

namespace velmora {

/// The commands of a sync session.
class SyncBar final : public SessionBar {
    Q_OBJECT
public:
    explicit SyncBar(QWidget *session);

    QAction *analyze = nullptr;
    QAction *syncNow = nullptr;
    QAction *undo = nullptr;
    QAction *copyToRight = nullptr;
    QAction *copyToLeft = nullptr;
    QAction *deleteOne = nullptr; ///< on the side that has the entry
    QAction *skip = nullptr;
    QAction *asPlanned = nullptr;
    QAction *open = nullptr;

    /// The actions for the selected rows.
    void fillRowMenu(QMenu &menu) const;

private:
    void addRun();
    void addRowActions();
};

} // namespace velmora
