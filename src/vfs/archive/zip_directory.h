#pragma once

#include "platform/file_access.h"
#include "vfs/archive/archive_entry.h"

#include <QByteArray>

#include <memory>
#include <optional>
#include <vector>

namespace velmora {

/// The directory at the end of a zip (APPNOTE.TXT of PKWARE, sections 4.3.12 to 4.3.16 and 4.5): names, sizes, times
/// and checksums of all entries without unpacking anything. Bytes before the archive, as in programs that unpack
/// themselves, are allowed.
class ZipDirectory {
public:
    /// Nothing when the file has no directory, or one that begins with something else or is not all in the file. At
    /// most `mostEntries` are taken; `isCut` says that there were more.
    [[nodiscard]] static std::optional<ZipDirectory> read(OpenFile &file, qint64 mostEntries);

    std::vector<ArchiveEntry> entries; ///< in the order of the directory; `position` is where the header stands
    bool isCut = false;
    bool isDamaged = false; ///< what comes after the entries is none of a directory

    /// Numbers of entries whose bytes belong to another entry, too, in ascending order.
    [[nodiscard]] std::vector<std::size_t> overlapping() const;

private:
    qint64 m_end = 0; ///< where the directory begins
};

/// The zip of one entry alone, made of the bytes of `file`, for a reader of whole archives: so any entry can be read
/// without those before it. `position` is where its header stands. Null when there is none.
[[nodiscard]] std::shared_ptr<OpenFile> zipOfEntry(std::shared_ptr<OpenFile> file, const ArchiveEntry &entry);

} // namespace velmora
