#pragma once

#include "core/progress.h"
#include "platform/file_layer.h"
#include "vfs/git/git_scratch.h"

#include <vector>

namespace velmora {

/// The files of a state that is no commit.
struct GitFiles {
    std::vector<GitFile> files; ///< of one path none twice
    qint64 conflicts = 0;       ///< of an index: files that a merge has left open; our version stands for them
    GitFault fault;
};

/// What the next commit would hold.
[[nodiscard]] GitFiles indexFiles(const GitRepository &repository, const CancelFlag &cancel);

enum class UntrackedFiles : quint8 {
    LeftOut,
    Listed, ///< those that the repository does not ignore
};

/// The files beside a repository. Their contents are taken as they stand, without the filters of the repository; where
/// the index tells that a file is as it was added, or its lines differ in nothing but the ends that git would turn,
/// its content is that of the index. No link is followed. Contents that the repository lacks are put into `scratch`.
[[nodiscard]] GitFiles workTreeFiles(const GitRepository &repository, const GitScratch &scratch,
                                     UntrackedFiles untracked, const CancelFlag &cancel, Progress &progress);

/// The files of any folder, all but what is in folders called ".git".
[[nodiscard]] GitFiles folderFiles(const GitRepository &repository, const GitScratch &scratch, const QString &folder,
                                   const CancelFlag &cancel, Progress &progress);

/// The mode of a regular file of the disk.
[[nodiscard]] quint32 gitModeOf(const NodeState &node);
/// What git stores for a link.
[[nodiscard]] QByteArray linkContent(const QString &target);

} // namespace velmora
