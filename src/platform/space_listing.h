#pragma once

#include "platform/file_access.h"

#include <functional>

namespace velmora {

/// An entry of a folder as it stands, links not followed, with the room that it takes.
struct SpaceEntry {
    enum class Kind : quint8 { File, Folder, Link };

    QString name;
    Kind kind = Kind::File;
    // Of files alone:
    qint64 size = 0;      ///< bytes
    qint64 allocated = 0; ///< bytes on the medium; fewer than `size` where a file has holes or is compressed
    quint64 links = 1;    ///< names that the file has; 1 where a listing does not tell
    FileIdentity identity;
};

/// Takes one entry; false stops the reading.
using SpaceSink = std::function<bool(SpaceEntry &&)>;

/// Gives `sink` the entries of a folder in no order. Left out are pipes, sockets and devices, entries that vanish
/// meanwhile, files of the operating system, and unless `withHidden` hidden entries. `path` as `FileAccess` has it.
[[nodiscard]] FolderRead readSpace(const QString &path, bool withHidden, const SpaceSink &sink);

} // namespace velmora
