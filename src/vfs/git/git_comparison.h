#pragma once

#include "core/progress.h"
#include "vfs/git/git_change.h"
#include "vfs/git/git_disk.h"
#include "vfs/git/git_repository.h"
#include "vfs/git/git_side.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace velmora {

/// What is to be compared.
struct GitRequest {
    QString path; ///< in the repository
    Sides<GitSide> sides;
    bool sinceParting = false; ///< compare the right side with the commit where it parted from the left one
    UntrackedFiles untracked = UntrackedFiles::Listed;
    bool listsSame = false; ///< what is the same on both sides, too
};

/// What a side is in the repository.
struct GitState {
    GitSide side;
    QByteArray tree; ///< the name of its tree
    QByteArray
        commit; ///< of a revision its commit, of the index and the work tree that which they stand on; may be empty
};

/// What phases of a run report.
enum class GitPhase : quint8 { ReadingDisk, Comparing };

struct GitComparison {
    GitRepository repository;
    std::shared_ptr<const GitScratch> scratch; ///< where contents of the disk are; null when none is
    Sides<GitState> states;
    std::vector<GitChange> changes; ///< in git's order, by their paths
    bool knowsCopies = true;        ///< false where so much changed that git would give up looking for renames, too
    QStringList oddNames;           ///< paths that lead elsewhere; at most a hundred
    qint64 conflicts = 0;           ///< files that a merge has left open, in the index or the work tree
    GitFault fault;

    /// What a call needs to read the trees of both sides.
    [[nodiscard]] GitCallExtras extras() const;
};

/// Compares two states. Renames are found as git finds them, at half of the content, and copies among what changed.
[[nodiscard]] GitComparison compareGit(const GitRequest &request, const CancelFlag &cancel, Progress &progress);

/// Fills in lines and sizes of the changes, for which their contents are read.
[[nodiscard]] GitFault fillDetails(GitComparison &comparison, const CancelFlag &cancel);

} // namespace velmora
