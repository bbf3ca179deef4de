#pragma once

#include <QByteArray>

#include <optional>

namespace velmora {

enum class ArchiveEntryKind : quint8 {
    File,
    Folder,
    Link,     ///< a symbolic one
    HardLink, ///< another name for the content of an entry before it
    Special,  ///< a pipe or device
};

/// One entry as the directory of an archive has it. Nothing in it is trusted.
struct ArchiveEntry {
    QByteArray name;       ///< as it stands in the archive
    QByteArray target;     ///< of links
    QByteArray method;     ///< how it is packed, where the format has a word for it
    qint64 size = 0;       ///< unpacked
    qint64 packed = -1;    ///< bytes in the archive; -1 where the format does not tell
    qint64 modifiedMs = 0; ///< milliseconds since 1970-01-01 UTC; 0 where the archive does not tell
    qint64 position = 0;   ///< its number in the archive from 0; in a zip with a directory, where its header stands
    std::optional<quint32> crc;  ///< CRC-32 of the content
    std::optional<quint32> mode; ///< permissions as `chmod` has them
    ArchiveEntryKind kind = ArchiveEntryKind::File;
    bool isEncrypted = false;
    bool cannotList = false; ///< a folder that nobody may look into: what is in it is not known
};

} // namespace velmora
