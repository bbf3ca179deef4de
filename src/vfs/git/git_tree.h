#pragma once

#include "vfs/git/git_change.h"
#include "vfs/git/git_place.h"
#include "vfs/git/git_repository.h"
#include "vfs/git/git_scratch.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <memory>
#include <vector>

namespace velmora {

/// The tree of one state.
struct GitTree {
    GitRepository repository;
    std::shared_ptr<const GitScratch> scratch; ///< where it is made of what the disk has; null when it is not
    QByteArray name;                           ///< of the tree
    qint64 timeMs = 0;                         ///< of its commit; 0 for what is none
    QString inside;                            ///< the folder in it that the place is, as "/docs"; empty for its root
    GitFault fault;

    /// What a call needs to read the tree.
    [[nodiscard]] GitCallExtras extras() const;
};

/// Finds the tree of a place, whose path may be one that only the state has: the repository is that of the nearest
/// folder around it which is there. For a worker.
[[nodiscard]] GitTree findGitTree(const GitPlace &place, const CancelFlag &cancel);

/// Asks for the sizes of the contents whose names are the lines of `extras.input`. Those that the repository lacks get
/// none.
[[nodiscard]] GitFault findContentSizes(const GitRepository &repository, const GitCallExtras &extras,
                                        const CancelFlag &cancel, QHash<QByteArray, qint64> &sizes);

/// A file and the size of its content: -1 of what has none, and where the repository lacks it.
struct SizedGitFile {
    GitFile file;
    qint64 size = -1;
};

struct GitTreeFiles {
    std::vector<SizedGitFile> files; ///< by their paths
    GitFault fault;
};

/// Everything in a tree. For a worker.
[[nodiscard]] GitTreeFiles listGitTree(const GitTree &tree, const CancelFlag &cancel);

} // namespace velmora
