#pragma once

#include "vfs/archive/archive_entry.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace velmora {

/// What a host says of a folder and everything below.
struct RemoteTreeListing {
    std::vector<ArchiveEntry> entries; ///< names are relative, as bytes; links have targets where the host tells
    qint64 unlisted = 0;               ///< entries that could not be told, for line feeds in their names
    bool isMarked = false;             ///< the output is one of `treeCommand`
    bool isWhole = false;              ///< nothing failed on the host, and the output ends as it should
};

/// The status that the command ends with when there is no such folder, when there is something else in its place, and
/// when the user may not look into it.
constexpr int noFolderStatus = 91;
constexpr int otherThanFolderStatus = 92;
constexpr int noAccessStatus = 93;

/// What lists a folder on the host, links followed to it and none below. With the find of GNU each entry is three words
/// with a NUL behind: type ("u" for a folder that cannot be listed), size and time in seconds with a fraction; the
/// path; the target of a link. Elsewhere, with stat, a line: mode in hexadecimal, size, time in seconds, path.
[[nodiscard]] QString treeCommand(const QString &folder);

/// Reads what `treeCommand` writes, after whatever a login writes before it; at most `most` entries and one. Names are
/// not checked.
[[nodiscard]] RemoteTreeListing parseTreeListing(const QByteArray &output, qint64 most);

} // namespace velmora
