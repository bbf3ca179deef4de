#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "core/sides.h"
#include "folder/engine/folder_diff_item.h"
#include "folder/engine/sync_planner.h"
#include "vfs/tree_source.h"

#include <QList>
#include <QString>

namespace velmora {

/// A file that has moved or got another name on one of the sides: each side has it where the other has nothing. The
/// names are those of the items, relative to both folders.
struct MovedFile {
    QString left;  ///< where the left side has it
    QString right; ///< where the right side has it

    friend bool operator==(const MovedFile &, const MovedFile &) = default;
};

/// Pairs files of which each is on one side only and that have the same content, as SHA-256 tells of all their bytes.
/// Of several that are the same, those of one bare name belong together first, then those of one time, then the others
/// in their order; each file is in one pair at most. Empty files are all alike and are in none, nor are links.
///
/// `items`: of a comparison of both `roots` that ran to its end. Reads every file that has one of its size on the other
/// side, the large ones only as far as their beginnings agree. Synchronous; obeys `cancel` within the time that a piece
/// of 256 KiB takes, and is of no use then. Progress as of `FolderPhase::Comparing`.
[[nodiscard]] QList<MovedFile> findMovedFiles(const Sides<TreeFolder> &roots, const QList<FolderDiffItem> &items,
                                              const CancelFlag &cancel, Progress &progress);

/// How many pairs size and time alone make likely; reads nothing.
[[nodiscard]] qint64 countLikelyMoves(const QList<FolderDiffItem> &items);

/// The plan with one item that moves a file in the place of each two that copy it to where it has moved and delete it
/// where it was. All else stays as it is, so that in a mode that deletes nothing there are no moves.
[[nodiscard]] QList<SyncPlanItem> withMoves(const QList<SyncPlanItem> &plan, const QList<MovedFile> &moved);

} // namespace velmora
