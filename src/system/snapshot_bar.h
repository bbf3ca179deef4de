#pragma once

#include "session/list/list_bar.h"

namespace velmora {

/// The commands of a snapshot session. Those of the two sides have their buttons beside the sides' fields.
class SnapshotBar final : public ListBar {
    Q_OBJECT
public:
    /// The commands of one side.
    struct SideActions {
        QAction *capture = nullptr;
        QAction *load = nullptr;
        QAction *save = nullptr;
    };

    /// `saveHint`: what a file that is saved holds, translated.
    SnapshotBar(const QString &saveHint, QWidget *session);

    QAction *focusLeft = nullptr;
    QAction *focusRight = nullptr;
    SideActions left;
    SideActions right;

    /// Lets `compare` be used, or says in its tool tip why it cannot be.
    void allowCompare(bool allowed, const QString &reason);

private:
    void addSides(const QString &saveHint);

    QString m_compareHint;
};

} // namespace velmora
