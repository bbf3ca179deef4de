#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/engine/folder_merge.h"

#include <QList>
#include <QString>

#include <vector>

namespace velmora {

/// What merging the conflicts of a folder merge line by line has brought.
struct TextConflicts {
    qint64 texts = 0;             ///< conflicts of which all three versions are texts
    std::vector<qsizetype> clean; ///< those without a conflict within, as indexes into the files, ascending
};

/// Merges the conflicts of `files` that have three versions, each of which is a text (without zero bytes, 16 MiB at
/// most), by `mergeChunks`, where changes that touch are in each other's way. What comes out clean is written below the
/// folder `into`, under its path, with the permissions that one of the versions has changed; `into` is a folder for
/// nothing else. What cannot be read or written stays a conflict.
///
/// Synchronous; progress counts the conflicts, as of `FolderPhase::Comparing`.
[[nodiscard]] TextConflicts mergeTextConflicts(const MergeVersions<QString> &folders,
                                               const QList<FolderMergeFile> &files, const QString &into,
                                               const CancelFlag &cancel, Progress &progress);

} // namespace velmora
