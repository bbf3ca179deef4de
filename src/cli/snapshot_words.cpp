#include "cli/snapshot_words.h"

namespace velmora::cli {

QString snapshotFaultText(const FolderSnapshotReading &reading)
{
    switch (reading.fault) {
    case FolderSnapshotFault::CannotOpen:
        return reading.error.isEmpty() ? QStringLiteral("cannot be read") : reading.error;
    case FolderSnapshotFault::NotJson:
        return QStringLiteral("is no snapshot: no JSON at byte %1").arg(reading.at);
    case FolderSnapshotFault::NoEntries:
        return QStringLiteral("is no snapshot: it has no list of entries");
    case FolderSnapshotFault::BadEntry:
        return QStringLiteral("is no snapshot: entry %1 has no size, or its path is none within a folder")
            .arg(reading.at);
    case FolderSnapshotFault::None:
    case FolderSnapshotFault::Cancelled:
        break;
    }
    return {};
}

} // namespace velmora::cli
