#pragma once

#include "vfs/git/git_call.h"
#include "vfs/tree_source.h"

#include <QString>

namespace velmora {

/// Where a repository is. A value.
struct GitRepository {
    QString workTree;      ///< absolute, with "/"; empty where there are no files beside it
    QString gitFolder;     ///< absolute
    QString objectsFolder; ///< absolute
    ContentIdentity::Algorithm algorithm = ContentIdentity::Algorithm::GitBlobSha1;

    /// What people know it by.
    [[nodiscard]] const QString &place() const noexcept { return workTree.isEmpty() ? gitFolder : workTree; }
    [[nodiscard]] GitCaller caller() const { return GitCaller(place()); }
    /// Letters of the name of an object.
    [[nodiscard]] int nameLength() const { return algorithm == ContentIdentity::Algorithm::GitBlobSha256 ? 64 : 40; }
};

struct GitOpening {
    GitRepository repository;
    GitFault fault;
};

/// The repository that holds `path`, a file or folder, or one of the folders around it.
[[nodiscard]] GitOpening openRepository(const QString &path, const CancelFlag &cancel);

} // namespace velmora
