#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "core/sides.h"
#include "folder/engine/folder_snapshot.h"
#include "vfs/snapshot/folder_snapshot_file.h"

#include <QList>
#include <QString>

namespace velmora {

/// What a comparison has for a side: a folder as it is now, or a snapshot file.
struct FolderSnapshotSide {
    FolderSnapshotReading reading;
    QList<FolderProblem> problems; ///< of a live folder
    bool isLive = false;
    bool isMissing = false; ///< there is neither a folder nor a snapshot of that path
};

/// Gets both sides, files first: a live folder is read for digests only where they can be compared with others.
[[nodiscard]] Sides<FolderSnapshotSide> readFolderSnapshotSides(const Sides<QString> &paths,
                                                                FolderSnapshotDigests digests, const CancelFlag &cancel,
                                                                Progress &progress);

} // namespace velmora
