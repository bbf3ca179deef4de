#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "vfs/archive/archive_limits.h"
#include "vfs/archive/archive_problem.h"
#include "vfs/archive/archive_source.h"
#include "vfs/place/remote_source.h"
#include "vfs/place/snapshot_source.h"
#include "vfs/place/state_source.h"
#include "vfs/tree_source.h"

#include <QList>
#include <QString>

#include <memory>
#include <variant>

namespace velmora {

/// What was made of a path that leads to a tree which is neither a folder of this system nor an archive; nothing of a
/// path that leads to none. Where there is a fault it has no source.
using OtherOpening = std::variant<std::monostate, StateOpening, RemoteOpening, SnapshotOpening>;

/// Opens the tree that `path` leads to: a `GitPlace`, the address of a host's folder, or a snapshot file or a folder in
/// one. `before` may be what was opened last, and is taken again where it is known to be the same. For a worker.
[[nodiscard]] OtherOpening openOther(const QString &path, const OtherOpening &before, const CancelFlag &cancel,
                                     Progress &progress, const ArchiveLimits &limits = {});

[[nodiscard]] constexpr bool isThere(const OtherOpening &opening)
{
    return !std::holds_alternative<std::monostate>(opening);
}

/// The folder that the path led to; none where there is a fault.
[[nodiscard]] TreeFolder folderOf(const OtherOpening &opening);
[[nodiscard]] QList<ArchiveProblem> problemsOf(const OtherOpening &opening);
/// Null where nothing can be read of its files.
[[nodiscard]] std::shared_ptr<const ArchiveSource> archiveOf(const OtherOpening &opening);

} // namespace velmora
