#pragma once

#include "core/sides.h"
#include "session/list/list_bar.h"

namespace velmora {

/// The commands of a folder snapshot session. Those that choose a snapshot file have their buttons beside the fields.
class FolderSnapshotBar final : public ListBar {
    Q_OBJECT
public:
    explicit FolderSnapshotBar(QWidget *session);

    QAction *create = nullptr;
    QAction *open = nullptr;
    QAction *showInFileManager = nullptr;
    Sides<QAction *> load;
    Sides<QAction *> focus;

private:
    void addRuns();
    void addSides();
};

} // namespace velmora
