#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "vfs/archive/archive_opening.h"
#include "vfs/place/other_opening.h"
#include "vfs/tree_source.h"

#include <QString>

namespace velmora {

/// What stands at a path that a person has given.
struct TreeAt {
    TreeFolder folder;      ///< none where there is a fault
    ArchiveOpening opening; ///< of an archive; of another tree what could be made of it
    OtherOpening other;     ///< of another tree, and why there is none
    bool isFolder = false;  ///< a folder of this system
};

/// The file that `path` is or goes through, as it would to lead into an archive; empty when there is none.
[[nodiscard]] QString fileOnTheWay(QString path);

/// The tree at `request.path`: a folder, an archive, or a folder in one ("/home/a.tar.gz/docs"); an archive within an
/// archive is a folder there. Other trees are as `openOther` has them. `ArchiveFault::Missing` where the path ends in
/// nothing, or in a file that is no archive. For a worker.
[[nodiscard]] TreeAt treeAt(const ArchiveRequest &request, const CancelFlag &cancel, Progress &progress);

/// Both at once, on two threads where there are processors for them.
[[nodiscard]] Sides<TreeAt> treesAt(const Sides<ArchiveRequest> &requests, const CancelFlag &cancel,
                                    Progress &progress);

} // namespace velmora
