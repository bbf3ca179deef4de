#pragma once

#include "folder/engine/duplicate_scan.h"
#include "platform/file_access.h"

#include <vector>

namespace velmora {

/// A folder that was listed for a scan.
struct ScannedFolder {
    QString path;
    qint32 parent = -1; ///< index into the table; -1 of a root
    qint32 root = 0;
    bool isReference = false;
    bool isWhole = true; ///< false where something in it was passed over, or could not be listed
    quint32 firstFile = 0;
    quint32 endFile = 0;
};

/// A file that was listed for a scan.
struct ScannedFile {
    QString name;
    qint64 size = 0;
    qint64 modifiedMs = 0;
    FileIdentity identity; ///< both numbers 0 where the listing does not tell
    qint32 folder = 0;
    bool isLink = false;

    [[nodiscard]] bool hasIdentity() const noexcept { return identity != FileIdentity(); }
};

/// All folders, each behind the one that it is in, and all files, in the order of the folders and in these by name.
struct ScannedFiles {
    std::vector<ScannedFolder> folders;
    std::vector<ScannedFile> files;

    [[nodiscard]] QString pathOf(quint32 file) const;
};

/// Lists what a scan goes through. `scan.roots` are its roots; files, problems and the cancelled flag are set in it.
/// `inner`: folders below the roots that are a root of their own kind, whose role holds for what is in them.
[[nodiscard]] ScannedFiles listForDuplicates(const DuplicateQuestion &question, const QList<DuplicateRoot> &inner,
                                             DuplicateScan &scan, const CancelFlag &cancel, Progress &progress);

/// Whether the folder is one where a system keeps what was deleted, by its path.
[[nodiscard]] bool isRecycleBin(const QString &folder);

} // namespace velmora
