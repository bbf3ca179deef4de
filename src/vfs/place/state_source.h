#pragma once

#include "core/cancel_flag.h"
#include "vfs/archive/archive_limits.h"
#include "vfs/archive/archive_problem.h"
#include "vfs/archive/archive_source.h"
#include "vfs/git/git_place.h"
#include "vfs/git/git_tree.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

namespace velmora {

/// A state of a repository as a tree: a commit read as the archive that one could make of it. Links are followed inside
/// it, submodules are empty folders, and every file has the time of the commit; the index has no times.
struct StateOpening {
    std::shared_ptr<const ArchiveSource> source; ///< null when there is a fault
    QByteArray tree;                             ///< its name
    QString inside;                              ///< the folder that the place is, as "/docs"; empty for the root
    QList<ArchiveProblem> problems;
    GitFault fault;

    /// The folder that the place is; none when there is a fault.
    [[nodiscard]] TreeFolder folder() const;
};

/// Opens the state of `place`; its contents are read when they are asked for. `before` may be what was opened last, and
/// is taken again while the state is the same. For a worker.
[[nodiscard]] StateOpening openState(const GitPlace &place, const StateOpening &before, const CancelFlag &cancel,
                                     const ArchiveLimits &limits = {});

} // namespace velmora
