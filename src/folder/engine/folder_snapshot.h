#pragma once

#include "core/cancel_flag.h"
#include "core/keyed_rows.h"
#include "core/progress.h"
#include "core/sides.h"
#include "folder/engine/folder_diff_item.h"
#include "vfs/snapshot/folder_snapshot_file.h"

#include <QList>
#include <QString>

#include <memory>
#include <vector>

namespace velmora {

struct TreeFolder;

/// Whether a scan reads the files.
enum class FolderSnapshotDigests : quint8 { None, Sha256 };

/// What a scan came to.
struct FolderSnapshotScan {
    FolderSnapshot snapshot;
    QList<FolderProblem> problems; ///< folders that cannot be read, then files, which have no digest; by path
    bool cancelled = false;        ///< the snapshot is then of no use
};

/// Records the files of `folder` and below, on several threads. Links to folders are not followed; what a link to a
/// file leads to is recorded under the link's name. Files with the attributes "hidden" or "system" are left out.
[[nodiscard]] FolderSnapshotScan scanFolderSnapshot(const TreeFolder &folder, FolderSnapshotDigests digests,
                                                    const CancelFlag &cancel, Progress &progress);

/// The same of every regular file, hidden ones too, and of no link, without digests.
[[nodiscard]] FolderSnapshotScan scanOwnFiles(const TreeFolder &folder, const CancelFlag &cancel, Progress &progress);

/// Computes the digests of entries, files of `folder`, on several threads; those that cannot be read, which are
/// returned, get none.
[[nodiscard]] QList<FolderProblem> computeDigests(const TreeFolder &folder, std::vector<FolderSnapshotEntry> &entries,
                                                  const CancelFlag &cancel, Progress &progress);

/// What is told of a row beside its status.
enum class FolderSnapshotRemark : quint8 {
    None,
    Moved,       ///< only one side has the path; the other has a file of the same digest that this side lacks
    ContentOnly, ///< the digests differ although size and time do not
    TimeOnly,    ///< the digests agree although the times differ
};

/// One path of either side.
struct FolderSnapshotRow {
    static constexpr qint32 none = -1;

    Sides<qint32> entries{none, none}; ///< indices into the snapshots
    qint32 partner = none;             ///< of a moved file, its entry on the other side
    PairStatus status = PairStatus::Same;
    FolderSnapshotRemark remark = FolderSnapshotRemark::None;
};

/// How two snapshots compare.
struct FolderSnapshotComparison {
    Sides<std::shared_ptr<const FolderSnapshot>> snapshots;
    std::vector<FolderSnapshotRow> rows; ///< in the order of the paths
    PairCounts counts;
    qsizetype moved = 0;       ///< files, each of which has two rows
    qsizetype contentOnly = 0; ///< rows with that remark

    /// The entry of a row on that side; null where it has none.
    [[nodiscard]] const FolderSnapshotEntry *entry(qsizetype row, Side side) const;
    /// The entry that a moved file has on the other side.
    [[nodiscard]] const FolderSnapshotEntry *partner(qsizetype row) const;
    [[nodiscard]] const QString &path(qsizetype row) const;
};

/// Pairs the entries by path. A pair is the same when sizes and times are equal and, where both have one, the digests.
/// Linear in the entries, but for sorting what has moved.
[[nodiscard]] FolderSnapshotComparison compareFolderSnapshots(Sides<FolderSnapshot> snapshots);

} // namespace velmora
