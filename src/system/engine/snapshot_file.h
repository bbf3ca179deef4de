#pragma once

#include "core/cancel_flag.h"
#include "core/safe_file.h"
#include "system/engine/snapshot.h"

#include <QByteArray>

namespace velmora {

/// The two forms that snapshot files have. Both are JSON documents as Qt writes them, in UTF-8.
enum class SnapshotForm : quint8 {
    /// One object; each member is an item's key with its value as a string (".kvenv", ".kvstartup").
    TextObject,
    /// An array of objects, one for each service, with the string members "name", "displayName", "state" and
    /// "startMode" (".kvsvc").
    ServiceArray,
};

/// Why a file gave no snapshot.
enum class SnapshotFault : quint8 {
    None,
    CannotOpen, ///< `detail`: the system's own words
    TooLarge,   ///< longer than `largestSnapshotFile`
    NotJson,    ///< `detail`: the parser's own words
    WrongRoot,  ///< no object, or no array, where the form wants one
    NotText,    ///< a member that is no string; `detail`: the item's key, or the member's name
    NoName,     ///< an element of the array that is no object with a name
};

struct SnapshotReading {
    Snapshot snapshot; ///< empty where there is a fault
    SnapshotFault fault = SnapshotFault::None;
    QString detail;
    qsizetype repeated = 0; ///< services whose name comes again later in the list: the last one counts

    [[nodiscard]] bool ok() const noexcept { return fault == SnapshotFault::None; }
};

/// In bytes. A system has some hundred services, and an environment is bounded by the system; what is longer is
/// something else.
inline constexpr qint64 largestSnapshotFile = qint64(64) * 1024 * 1024;

/// Reads a snapshot from the bytes of its file. A byte-order mark and members that are not known are passed over; of
/// the members of a service only the name has to be there.
[[nodiscard]] SnapshotReading parseSnapshot(const QByteArray &bytes, SnapshotForm form);

/// The same from a file, which is read whole. Stops early, with any result, when `cancel` is set.
[[nodiscard]] SnapshotReading loadSnapshot(const QString &path, SnapshotForm form, const CancelFlag &cancel = {});

[[nodiscard]] QByteArray snapshotToJson(const Snapshot &snapshot, SnapshotForm form);

/// Who may read a file that is written.
enum class SnapshotReaders : quint8 {
    Everybody, ///< as the system and the file that is replaced have it
    OwnerOnly, ///< as far as the system's access bits can say so, also where a file is replaced that others may read
};

/// Writes a snapshot in one step (see `saveFile`).
[[nodiscard]] SaveResult saveSnapshot(const QString &path, const Snapshot &snapshot, SnapshotForm form,
                                      SnapshotReaders readers);

} // namespace velmora
