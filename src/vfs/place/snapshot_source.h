#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "vfs/archive/archive_limits.h"
#include "vfs/archive/archive_problem.h"
#include "vfs/snapshot/folder_snapshot_file.h"
#include "vfs/tree_source.h"

#include <QList>
#include <QString>
#include <QStringView>

#include <cstddef>
#include <memory>
#include <optional>

namespace velmora {

/// A snapshot as a tree: its files with the folders that their paths tell of. It holds no contents; where it has
/// digests, these tell contents apart. Takes no room beside the entries.
class SnapshotSource final : public TreeSource {
public:
    /// No path of `snapshot` is both a file and a folder.
    SnapshotSource(Location location, FolderSnapshot snapshot);

    [[nodiscard]] FolderRead readFolder(const QString &path, HiddenEntries hidden,
                                        const FileAccess::Sink &sink) const override;
    [[nodiscard]] std::optional<FolderEntry> describe(const QString &path, HiddenEntries hidden) const override;
    /// Opens nothing.
    [[nodiscard]] std::unique_ptr<FileOpener> makeOpener() const override;
    [[nodiscard]] std::optional<ContentIdentity> contentIdentity(const QString &path) const override;
    [[nodiscard]] std::optional<ContentIdentity::Algorithm> identityKind() const override;
    [[nodiscard]] ContentAccess contentAccess() const override { return m_access; }

    [[nodiscard]] const FolderSnapshot &snapshot() const noexcept { return m_snapshot; }

private:
    /// The first entry from `from` on whose path is not before `path`.
    [[nodiscard]] std::size_t lowerBound(QStringView path, std::size_t from = 0) const;
    /// The first entry from `from` on, which begins with `prefix` or lies behind, that does not begin with it.
    [[nodiscard]] std::size_t endOf(QStringView prefix, std::size_t from) const;
    [[nodiscard]] const FolderSnapshotEntry *find(QStringView path) const;

    FolderSnapshot m_snapshot;
    ContentAccess m_access;
};

/// A snapshot file, or a folder in it.
struct SnapshotPlace {
    QString file;   ///< absolute, with "/"
    QString inside; ///< as "/docs"; empty for the root
};

/// What `path` means as "/home/a.kvsnapshot/docs"; nothing where no such file is on the way.
[[nodiscard]] std::optional<SnapshotPlace> snapshotPlaceOf(const QString &path);

struct SnapshotOpening {
    std::shared_ptr<const SnapshotSource> source; ///< null when there is a fault, or no folder `inside`
    QString inside;
    FolderSnapshotReading reading; ///< without entries
    QList<ArchiveProblem> problems;
    std::optional<FolderEntry> stamp; ///< of the file

    /// The folder that the place is; none when there is a fault.
    [[nodiscard]] TreeFolder folder() const;
};

/// Opens what stands at `place`, entry by entry. `before` may be what was opened last, and is taken again while the
/// file is the same. For a worker.
[[nodiscard]] SnapshotOpening openSnapshot(const SnapshotPlace &place, const SnapshotOpening &before,
                                           const CancelFlag &cancel, Progress &progress,
                                           const ArchiveLimits &limits = {});

} // namespace velmora
