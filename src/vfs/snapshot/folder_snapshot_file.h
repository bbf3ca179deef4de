#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "core/safe_file.h"

#include <QByteArray>
#include <QLatin1String>
#include <QString>

#include <optional>
#include <vector>

class QIODevice;

namespace velmora {

/// One file as a snapshot records it.
struct FolderSnapshotEntry {
    QString path; ///< relative to the root, with "/"
    qint64 size = 0;
    std::optional<qint64> modifiedMs; ///< since 1970-01-01 UTC; nothing where a snapshot file has no time
    QByteArray digest = {};           ///< SHA-256, 32 bytes; empty when it is not known

    friend bool operator==(const FolderSnapshotEntry &, const FolderSnapshotEntry &) = default;
};

/// The files of a folder and below as they were at one time: no folders, nothing hidden. About 250 bytes an entry.
struct FolderSnapshot {
    QString root;                             ///< the absolute path of the folder; of a snapshot file not trusted
    QString created;                          ///< local time, ISO 8601
    std::vector<FolderSnapshotEntry> entries; ///< by path, in the order of the code units; no path twice

    [[nodiscard]] bool hasDigests() const;
};

/// The steps of scanning and reading as `Progress` has them.
enum class FolderSnapshotPhase : int {
    Walking, ///< entries, their total is not known
    Hashing, ///< bytes
    Loading, ///< bytes of a snapshot file
};

/// The extension of snapshot files, in small letters.
inline constexpr QLatin1String folderSnapshotSuffix(".kvsnapshot");

/// What keeps a snapshot file from being read.
enum class FolderSnapshotFault : quint8 {
    None,
    CannotOpen,
    NotJson,   ///< or it ends too early, is nested too deeply, is no UTF-8
    NoEntries, ///< it is no object with a list "entries"
    BadEntry,  ///< one of them is none: its path would lead out of the folder, or it has no size
    Cancelled,
};

/// What reading a snapshot file brought.
struct FolderSnapshotReading {
    FolderSnapshot snapshot; ///< empty where there is a fault
    FolderSnapshotFault fault = FolderSnapshotFault::None;
    qint64 at = 0;          ///< of NotJson the byte, of BadEntry the entry, counted from 1
    QString error;          ///< of CannotOpen, in the system's own words
    qsizetype repeated = 0; ///< entries whose path came again; the last one counts
    QString firstRepeated;  ///< the path of one of them

    [[nodiscard]] bool ok() const noexcept { return fault == FolderSnapshotFault::None; }
};

// The file is one JSON object: "version" (1), "root", "created" (both as in `FolderSnapshot`) and "entries", a list of
// objects with "path", "size" (bytes), "modified" (as `IsoTimes` has it) and, where there is one, "sha256"
// (hexadecimal, small letters). Keys are written in the order of their letters; read, in any, and others are passed
// over.

/// Writes a snapshot, entry by entry. False when `device` did not take it or `cancel` was set.
[[nodiscard]] bool writeFolderSnapshot(QIODevice &device, const FolderSnapshot &snapshot, const CancelFlag &cancel);

/// The same into a file, which is there whole or not touched.
[[nodiscard]] SaveResult saveFolderSnapshot(const QString &path, const FolderSnapshot &snapshot,
                                            const CancelFlag &cancel);

/// Reads a snapshot, entry by entry. `device` is open.
[[nodiscard]] FolderSnapshotReading readFolderSnapshot(QIODevice &device, const CancelFlag &cancel, Progress &progress);

/// The same from a file. Pipes and devices are not opened.
[[nodiscard]] FolderSnapshotReading loadFolderSnapshot(const QString &path, const CancelFlag &cancel,
                                                       Progress &progress);

/// Whether `path` stands for a snapshot file: it has the extension, and there is a file of that name.
[[nodiscard]] bool isFolderSnapshotFile(const QString &path);

} // namespace velmora
