#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "vfs/archive/archive_opening.h"
#include "vfs/git/git_call.h"
#include "vfs/place/snapshot_source.h"
#include "vfs/remote/ssh_call.h"
#include "vfs/tree_source.h"

#include <QString>

#include <optional>

namespace velmora {

/// What stands at a path that a person has given.
struct TreeAt {
    TreeFolder folder;                       ///< none where there is a fault
    ArchiveOpening opening;                  ///< of an archive; of a state or a host what could be made of it
    GitFault gitFault;                       ///< of a state
    RemoteFault remoteFault;                 ///< of a folder of a host
    std::optional<SnapshotOpening> snapshot; ///< of a snapshot file
    bool isFolder = false;                   ///< a folder of this system
    bool isState = false;                    ///< a state of a repository
};

/// The tree at `request.path`: a folder, an archive, or a folder in one ("/home/a.tar.gz/docs"); an archive within an
/// archive is a folder there. A `GitPlace` is the folder in the state that it names, an address that of a host.
/// A snapshot file is the tree that it tells of. `ArchiveFault::Missing` where the path ends in nothing, or in a file
/// that is no archive. For a worker.
[[nodiscard]] TreeAt treeAt(const ArchiveRequest &request, const CancelFlag &cancel, Progress &progress);

/// Both at once, on two threads where there are processors for them.
[[nodiscard]] Sides<TreeAt> treesAt(const Sides<ArchiveRequest> &requests, const CancelFlag &cancel,
                                    Progress &progress);

} // namespace velmora
