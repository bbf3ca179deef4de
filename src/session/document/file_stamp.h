#pragma once

#include <QString>

namespace velmora {

/// What tells that a file was written since it was read: its size and its time of last change.
struct FileStamp {
    qint64 size = -1;         ///< bytes, -1 when there is no such regular file
    qint64 modifiedMsecs = 0; ///< since 1970 in UTC

    [[nodiscard]] bool isFile() const noexcept { return size >= 0; }

    /// The stamp of the file at `path` now.
    [[nodiscard]] static FileStamp of(const QString &path);

    friend bool operator==(const FileStamp &, const FileStamp &) = default;
};

} // namespace velmora
