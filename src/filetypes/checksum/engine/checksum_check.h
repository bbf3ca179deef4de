#pragma once

#include "filetypes/checksum/engine/checksum_list.h"

namespace velmora {

/// What became of one file of a list, or of one beside them.
enum class ListedStatus : quint8 {
    Ok,
    Differs,
    Missing,
    Unreadable, ///< it is there, and cannot be read to its end
    Outside,    ///< its name leads out of the folder; nothing was opened
    NotListed,  ///< it stands in the folder of a listed file, and the list does not name it
};
inline constexpr std::size_t listedStatusCount = std::size_t(ListedStatus::NotListed) + 1;

struct CheckedFile {
    ListedStatus status = ListedStatus::Missing;
    ChecksumEntry entry; ///< without a digest when it is not listed
    QByteArray found;    ///< the digest of the file; empty when it was not read
};

/// What checking a list came to.
struct ChecksumCheck {
    enum class Fault : quint8 {
        None,
        NotOpened, ///< the list cannot be read
        TooLarge,  ///< more than 256 MiB
        NoList,    ///< there is no checksum in it
        Cancelled,
    };

    Fault fault = Fault::None;
    QString folder;           ///< in which the files were looked for
    QList<CheckedFile> files; ///< in the order of the list, then those that are not listed, by name
    qsizetype badLines = 0;
    qsizetype firstBadLine = 0; ///< counted from 1; 0 for none
    std::array<qsizetype, listedStatusCount> counts{};

    [[nodiscard]] qsizetype count(ListedStatus status) const { return counts[std::size_t(status)]; }
    /// Files that are not what the list says.
    [[nodiscard]] qsizetype failures() const
    {
        return files.size() - count(ListedStatus::Ok) - count(ListedStatus::NotListed);
    }
};

/// Reads the list at `path` and all files that it names, several at the same time, below `folder`. When that is empty
/// it is the list's own, or the nearest one above in which there is any of the files: lists of packages lie elsewhere
/// than what they are about, which is then no folder of their own, and no file in it counts as not listed. Progress
/// counts bytes.
[[nodiscard]] ChecksumCheck checkChecksumList(const QString &path, const QString &folder, const CancelFlag &cancel,
                                              Progress &progress);

/// The number of checksums in the file at `path` if it is a list: no larger than 256 MiB, and most of its lines are
/// checksums; 0 otherwise. Reads no more than its first 64 KiB.
[[nodiscard]] qsizetype looksLikeChecksumList(const QString &path);

/// The checksums of a folder.
struct FolderChecksums {
    QList<ChecksumEntry> entries; ///< by name
    QStringList unreadable;       ///< names of files and folders that cannot be read
    bool cancelled = false;
};

/// Computes the checksums of all files in `folder` and below, hidden ones too, but for the one at the path `except`.
/// Links to folders are not followed. Progress counts bytes.
[[nodiscard]] FolderChecksums folderChecksums(const QString &folder, const QList<ChecksumAlgorithm> &algorithms,
                                              const QString &except, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
