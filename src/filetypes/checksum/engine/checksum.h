#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <functional>
#include <optional>

namespace velmora {

class FileAccess;

enum class ChecksumAlgorithm : quint8 { Md5, Sha1, Sha256, Crc32 };

/// All of them, in the order in which they are offered.
inline constexpr std::array checksumAlgorithms{ChecksumAlgorithm::Md5, ChecksumAlgorithm::Sha1,
                                               ChecksumAlgorithm::Sha256, ChecksumAlgorithm::Crc32};

/// What reading a file for its checksum came to.
struct FileChecksum {
    enum class End : quint8 {
        Whole,     ///< `digest` is that of the whole file
        NotOpened, ///< there is no regular file of this path, or it may not be read
        Broken,    ///< a part of it could not be read
        Cancelled,
    };

    End end = End::NotOpened;
    QByteArray digest = {}; ///< most significant byte first; empty unless `end` is Whole

    [[nodiscard]] bool isWhole() const noexcept { return end == End::Whole; }
    /// The form in which people read it: upper-case hexadecimal.
    [[nodiscard]] QString text() const { return QString::fromLatin1(digest.toHex().toUpper()); }
};

/// Computes the checksum of the file at `path`, which may be relative. Reads 1 MiB at a time, so that memory does not
/// grow with the file, and looks at `cancel` before each. `advanced`, where there is one, is called with the bytes
/// read so far. Pipes and devices, which may never end, are not opened.
[[nodiscard]] FileChecksum fileChecksum(const QString &path, ChecksumAlgorithm algorithm, const FileAccess &files,
                                        const CancelFlag &cancel, const std::function<void(qint64)> &advanced = {});

/// The checksums of the files of two sides; none for an empty path, and of the right side when the left one failed.
struct ChecksumPair {
    std::optional<FileChecksum> left;
    std::optional<FileChecksum> right;
};

/// Computes both, one after the other. Progress counts the bytes of both files and names the one that is read.
[[nodiscard]] ChecksumPair fileChecksums(const QString &left, const QString &right, ChecksumAlgorithm algorithm,
                                         const FileAccess &files, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
