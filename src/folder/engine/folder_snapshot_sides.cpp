#include "folder/engine/folder_snapshot_sides.h"

#include "vfs/local_folder.h"

#include <QFileInfo>

#include <utility>

namespace velmora {

namespace {

FolderSnapshotSide readLive(const QString &path, FolderSnapshotDigests digests, const CancelFlag &cancel,
                            Progress &progress)
{
    FolderSnapshotSide side;
    side.isLive = true;
    side.isMissing = !QFileInfo(path).isDir();
    if (side.isMissing)
        return side;
    FolderSnapshotScan scan = scanFolderSnapshot(localFolder(path), digests, cancel, progress);
    side.reading.snapshot = std::move(scan.snapshot);
    side.problems = std::move(scan.problems);
    if (scan.cancelled)
        side.reading.fault = FolderSnapshotFault::Cancelled;
    return side;
}

} // namespace

Sides<FolderSnapshotSide> readFolderSnapshotSides(const Sides<QString> &paths, FolderSnapshotDigests digests,
                                                  const CancelFlag &cancel, Progress &progress)
{
    Sides<FolderSnapshotSide> sides;
    for (const Side side : bothSides) {
        if (!isFolderSnapshotFile(paths[side])) {
            sides[side].isLive = true;
            continue;
        }
        sides[side].reading = loadFolderSnapshot(paths[side], cancel, progress);
        if (!sides[side].reading.ok())
            return sides;
        if (!sides[side].reading.snapshot.hasDigests())
            digests = FolderSnapshotDigests::None;
    }
    for (const Side side : bothSides) {
        if (sides[side].isLive)
            sides[side] = readLive(paths[side], digests, cancel, progress);
        if (sides[side].isMissing || !sides[side].reading.ok())
            break;
    }
    return sides;
}

} // namespace velmora
