#pragma once

#include "vfs/git/git_repository.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace velmora {

/// A name of a repository that leads to a commit.
struct GitRef {
    enum class Kind : quint8 { Branch, RemoteBranch, Tag, Stash };

    Kind kind = Kind::Branch;
    QString name; ///< as a person writes it: "main", "origin/main", "v1.0", "stash@{0}"
    qint64 timeMs = 0;
    QString subject;        ///< the first line of its commit, or what a stash says of itself
    bool isCurrent = false; ///< the branch that is checked out
};

struct GitRefs {
    std::vector<GitRef> refs; ///< stashes, branches, tags, branches of elsewhere; of each kind the latest first
    bool areMore = false;     ///< than are listed
    GitFault fault;
};

[[nodiscard]] GitRefs listRefs(const GitRepository &repository, const CancelFlag &cancel);

/// One commit.
struct GitCommit {
    QByteArray name;
    QList<QByteArray> parents;
    qint64 timeMs = 0; ///< when it was written by its author
    QString author;
    QString subject;
    bool isOnLeft = false; ///< only the left side has it; else only the right one
};

struct GitCommits {
    std::vector<GitCommit> commits; ///< the latest first
    bool areMore = false;
    GitFault fault;
};

/// The commits that one of two commits stands on and the other does not. `left` and `right` are names of commits.
[[nodiscard]] GitCommits commitsBetween(const GitRepository &repository, const QByteArray &left,
                                        const QByteArray &right, const CancelFlag &cancel);

/// The name of the tree without files: what the first commit is compared with.
[[nodiscard]] QString emptyTreeName(const GitRepository &repository);

} // namespace velmora
