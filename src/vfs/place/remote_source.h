#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "vfs/archive/archive_limits.h"
#include "vfs/archive/archive_problem.h"
#include "vfs/archive/archive_source.h"
#include "vfs/remote/ssh_call.h"

#include <QList>

#include <memory>

namespace velmora {

/// A folder on a host as a tree: what it was when it was listed. Links are followed inside it; nothing can be written.
struct RemoteOpening {
    std::shared_ptr<const ArchiveSource> source; ///< null when there is a fault
    QList<ArchiveProblem> problems;
    RemoteFault fault;

    /// The folder of the host; none when there is a fault.
    [[nodiscard]] TreeFolder folder() const;
};

/// Lists the folder with all that is below; contents are fetched when they are asked for. For a worker.
[[nodiscard]] RemoteOpening openRemote(const RemotePlace &place, const CancelFlag &cancel, Progress &progress,
                                       const ArchiveLimits &limits = {});

} // namespace velmora
