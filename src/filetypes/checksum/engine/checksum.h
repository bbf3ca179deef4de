#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"

#include <QByteArray>
#include <QList>
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

/// The bytes of a digest.
[[nodiscard]] constexpr qsizetype digestSize(ChecksumAlgorithm algorithm) noexcept
{
    constexpr std::array<qsizetype, checksumAlgorithms.size()> sizes{16, 20, 32, 4};
    return sizes[std::size_t(algorithm)];
}

/// The form in which people read a digest: upper-case hexadecimal.
[[nodiscard]] inline QString digestText(const QByteArray &digest)
{
    return QString::fromLatin1(digest.toHex().toUpper());
}

/// How reading a file for its checksum ended.
enum class ChecksumEnd : quint8 {
    Whole,     ///< the digest is that of the whole file
    NotOpened, ///< there is no regular file of this path, or it may not be read
    Broken,    ///< a part of it could not be read
    Cancelled,
};

/// What reading a file for its checksum came to.
struct FileChecksum {
    using End = ChecksumEnd;

    End end = End::NotOpened;
    QByteArray digest = {}; ///< most significant byte first; empty unless `end` is Whole

    [[nodiscard]] bool isWhole() const noexcept { return end == End::Whole; }
    [[nodiscard]] QString text() const { return digestText(digest); }
};

/// The same for several algorithms.
struct FileDigests {
    ChecksumEnd end = ChecksumEnd::NotOpened;
    QList<QByteArray> digests = {}; ///< one for each algorithm; empty unless `end` is Whole

    [[nodiscard]] bool isWhole() const noexcept { return end == ChecksumEnd::Whole; }
};

/// Computes the checksums of the file at `path`, which may be relative, in one pass. Reads 1 MiB at a time, so that
/// memory does not grow with the file, and looks at `cancel` before each; the system is told to read ahead where that
/// pays. `advanced`, where there is one, is called with the bytes read so far. Pipes and devices, which may never end,
/// are not opened.
[[nodiscard]] FileDigests fileDigests(const QString &path, const QList<ChecksumAlgorithm> &algorithms,
                                      const FileAccess &files, const CancelFlag &cancel,
                                      const std::function<void(qint64)> &advanced = {});

/// The same for one algorithm.
[[nodiscard]] FileChecksum fileChecksum(const QString &path, ChecksumAlgorithm algorithm, const FileAccess &files,
                                        const CancelFlag &cancel, const std::function<void(qint64)> &advanced = {});

/// The checksums of the files of two sides; none for an empty path, and of the right side when the left one failed.
struct ChecksumPair {
    std::optional<FileChecksum> left;
    std::optional<FileChecksum> right;
};

/// Computes both at the same time. Progress counts the bytes of both files and names one that is read.
[[nodiscard]] ChecksumPair fileChecksums(const QString &left, const QString &right, ChecksumAlgorithm algorithm,
                                         const FileAccess &files, const CancelFlag &cancel, Progress &progress);

/// A checksum that somebody has published.
struct ExpectedChecksum {
    ChecksumAlgorithm algorithm = ChecksumAlgorithm::Sha256;
    QByteArray digest;
};

/// What a pasted text says: hexadecimal digits, as many as a digest has, maybe in groups, behind a name such as
/// "sha256:" or before the name of a file, as lists have it. Nothing for any other text.
[[nodiscard]] std::optional<ExpectedChecksum> expectedChecksum(const QString &text);

} // namespace velmora
