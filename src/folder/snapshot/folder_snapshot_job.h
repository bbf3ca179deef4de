#pragma once

#include "core/safe_file.h"
#include "folder/engine/folder_snapshot_sides.h"
#include "session/session_host.h"

namespace velmora {

/// What comparing two sides came to. The snapshots have moved into the comparison.
struct FolderSnapshotOutcome {
    Sides<FolderSnapshotSide> sides;
    std::optional<FolderSnapshotComparison> comparison; ///< none where a side has a fault
};

[[nodiscard]] FolderSnapshotOutcome compareSides(const Sides<QString> &paths, FolderSnapshotDigests digests,
                                                 const CancelFlag &cancel, Progress &progress);

/// What recording a folder came to.
struct FolderSnapshotRecording {
    bool isMissing = false; ///< there is no such folder
    qsizetype files = 0;
    qsizetype problems = 0; ///< folders and files that could not be read
    SaveResult saved = {};
};

[[nodiscard]] FolderSnapshotRecording recordFolder(const QString &folder, const QString &target,
                                                   FolderSnapshotDigests digests, const CancelFlag &cancel,
                                                   Progress &progress);

/// The files of one row as they are now.
struct LiveFiles {
    Sides<QString> paths; ///< absolute; empty where there is none
    QString kind;         ///< of the session that suits them; empty where nobody can tell
};

/// Looks which of `paths` are files, and asks `test` about them.
[[nodiscard]] LiveFiles findLiveFiles(const Sides<QString> &paths, const SessionHost::KindTest &test);

/// Where the file `relative` of a snapshot's folder would be; empty where that is no folder of this computer: what a
/// snapshot file says is not trusted, and asking another computer for a file tells it who asks.
[[nodiscard]] QString livePath(const QString &root, const QString &relative);

} // namespace velmora
