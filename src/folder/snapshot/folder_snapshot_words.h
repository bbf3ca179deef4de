#pragma once

#include "core/iso_times.h"
#include "core/progress.h"
#include "folder/engine/folder_snapshot_sides.h"

#include <QString>

namespace velmora {

/// A message, and what is said beside it. Empty where there is nothing to say.
struct FolderSnapshotWords {
    QString text;
    QString detail;
};

/// Why a side cannot be compared; `path` is that side.
[[nodiscard]] FolderSnapshotWords faultWords(const FolderSnapshotSide &side, const QString &path);
/// What came of a comparison.
[[nodiscard]] FolderSnapshotWords resultWords(const FolderSnapshotComparison &found, qsizetype problems,
                                              qsizetype repeated);
/// How many files and folders could not be read; empty for 0.
[[nodiscard]] QString problemsText(qsizetype problems);
/// What is being done.
[[nodiscard]] QString progressText(const ProgressState &state);

/// What is known of a file, in one line.
[[nodiscard]] QString entryText(const FolderSnapshotEntry &entry, IsoTimes &times);
/// The same in full, one fact a line.
[[nodiscard]] QString entryDetails(const FolderSnapshotEntry &entry, IsoTimes &times);

} // namespace velmora
