#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "vfs/archive/archive_problem.h"

#include <QHash>
#include <QList>

#include <map>

namespace velmora {

class ArchiveSource;

/// What came of reading every entry.
struct ArchiveTest {
    qint64 files = 0;               ///< that were read
    qint64 bytes = 0;               ///< of all of them
    qint64 bytesWithin = 0;         ///< of these what is in archives within, which are counted themselves, too
    qint64 failed = 0;              ///< files that cannot be read whole
    QList<ArchiveProblem> problems; ///< one for each of them, and those of the archive; a thousand at most
    /// The CRC-32 of each entry that could be read whole, by its number in the archive that it is in.
    std::map<const ArchiveSource *, QHash<qint32, quint32>> checksums;
    bool hasChecksums = false; ///< of its own: else nothing tells a changed content
    bool isComplete = false;   ///< nobody stopped it, and no limit
};

/// Reads every entry of an archive, and of those within, to its end: the checksums are looked at on the way. Progress
/// counts bytes.
[[nodiscard]] ArchiveTest testArchive(const ArchiveSource &archive, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
