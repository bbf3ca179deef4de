#pragma once

#include "platform/file_layer.h"

#include <QLockFile>
#include <QStringList>

#include <vector>

namespace velmora {

/// The folder of a journal: one folder for each run, named by the run's identifier.

/// The names in the journal's folder.
inline const QString journalFileName = QStringLiteral("journal.jsonl");
inline const QString keptFolderName = QStringLiteral("kept");
inline const QString keptBytesName = QStringLiteral("kept-bytes");
inline const QString undoneMarkName = QStringLiteral("undone");
inline const QString partlyUndoneMarkName = QStringLiteral("undone-in-part");
inline const QString interruptedMarkName = QStringLiteral("interrupted");
inline const QString continuedMarkName = QStringLiteral("continued");
inline const QString toldMarkName = QStringLiteral("told");
inline const QString lockName = QStringLiteral("lock");

/// What only the owner may look into.
inline constexpr NodeState ownersOnly{NodeKind::Folder, 0, 0, std::nullopt, 0700, false};

/// Opens the folder `path`; makes it and those above it where they are missing, for the owner alone.
[[nodiscard]] std::unique_ptr<FolderHandle> openOrMakeFolder(FileLayer &files, const QString &path, FileError &error);

/// Removes a folder with everything in it.
[[nodiscard]] FileError removeTree(FolderHandle &parent, const QString &name);

/// All of a small file; nothing when it is longer than `most` or cannot be read.
[[nodiscard]] std::optional<QByteArray> readSmallFile(FolderHandle &folder, const QString &name, qint64 most);
[[nodiscard]] FileError writeSmallFile(FolderHandle &folder, const QString &name, const QByteArray &bytes);
/// Makes an empty file unless it is there already.
[[nodiscard]] FileError mark(FolderHandle &folder, const QString &name);
/// Counts anew what a run that has come to its end still keeps: undoing takes it out.
void countKeptAgain(FolderHandle &run);

/// The identifiers of the runs in a journal's folder, the oldest first.
[[nodiscard]] QStringList runsIn(FolderHandle &folder, FileError &error);

/// Makes the folder of a run under the first free number from `number` on; empty when that fails.
[[nodiscard]] QString makeRunFolder(FolderHandle &folder, qint64 number, FileError &error);

/// Takes a lock, waiting so many milliseconds for its holder. One that has no holder's name in it, as a crash right
/// after its making leaves it, is taken over.
[[nodiscard]] bool takeLock(QLockFile &lock, int milliseconds);

/// Takes the lock of the run whose folder has the path `run`; null when another holds it or it cannot be made.
[[nodiscard]] std::unique_ptr<QLockFile> lockRun(const QString &run);

/// A run that has been begun before.
struct OldRun {
    QString id;
    qint64 keptBytes = 0;
    qint64 modifiedNs = 0;
    bool isFinished = false; ///< by its own account; otherwise it is at work, or a crash ended it
};

/// The oldest first.
[[nodiscard]] std::vector<OldRun> oldRuns(FolderHandle &folder, FileError &error);

/// Removes a run from the journal's folder, whose path is `path`, unless it is at work. False when it stays.
[[nodiscard]] bool forget(FolderHandle &folder, const QString &path, const OldRun &run);

/// Removes the copy beside its target that a run which a crash ended was making, and marks the run as finished and
/// interrupted. Does nothing while it is at work. Where the folder of the copy is out of reach the next call tries
/// again.
void removeLeftover(FileLayer &files, FolderHandle &folder, const QString &path, const OldRun &run);
/// The same for all runs of the journal's folder `path`.
void removeLeftovers(FileLayer &files, const QString &path);

} // namespace velmora
