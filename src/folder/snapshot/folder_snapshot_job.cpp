#include "folder/snapshot/folder_snapshot_job.h"

#include "core/path_names.h"
#include "vfs/local_folder.h"

#include <QDir>
#include <QFileInfo>

namespace velmora {

FolderSnapshotOutcome compareSides(const Sides<QString> &paths, FolderSnapshotDigests digests, const CancelFlag &cancel,
                                   Progress &progress)
{
    FolderSnapshotOutcome outcome{readFolderSnapshotSides(paths, digests, cancel, progress), {}};
    for (const Side side : bothSides) {
        if (outcome.sides[side].isMissing || !outcome.sides[side].reading.ok())
            return outcome;
    }
    outcome.comparison = compareFolderSnapshots(
        {std::move(outcome.sides.left.reading.snapshot), std::move(outcome.sides.right.reading.snapshot)});
    return outcome;
}

FolderSnapshotRecording recordFolder(const QString &folder, const QString &target, FolderSnapshotDigests digests,
                                     const CancelFlag &cancel, Progress &progress)
{
    FolderSnapshotRecording recording;
    recording.isMissing = !QFileInfo(folder).isDir();
    if (recording.isMissing)
        return recording;
    const FolderSnapshotScan scan = scanFolderSnapshot(localFolder(folder), digests, cancel, progress);
    recording.files = qsizetype(scan.snapshot.entries.size());
    recording.problems = scan.problems.size();
    if (!scan.cancelled)
        recording.saved = saveFolderSnapshot(target, scan.snapshot, cancel);
    return recording;
}

LiveFiles findLiveFiles(const Sides<QString> &paths, const SessionHost::KindTest &test)
{
    LiveFiles live;
    for (const Side side : bothSides) {
        if (!paths[side].isEmpty() && QFileInfo(paths[side]).isFile())
            live.paths[side] = paths[side];
    }
    if (!live.paths.left.isEmpty() || !live.paths.right.isEmpty())
        live.kind = test(live.paths);
    return live;
}

QString livePath(const QString &root, const QString &relative)
{
    const QString folder = QDir::fromNativeSeparators(root);
    if (!QDir::isAbsolutePath(folder) || folder.startsWith(QLatin1String("//")))
        return {};
    const QString path = QDir::cleanPath(joinedPath(folder, relative));
    return isInside(path, QDir::cleanPath(folder)) ? path : QString();
}

} // namespace velmora
