#pragma once

#include <QString>

namespace velmora {

/// One side of a comparison as a person names it. A value.
struct GitSide {
    enum class Kind : quint8 {
        Revision, ///< what git takes for a commit or tree: a branch, a tag, "stash@{0}", "HEAD~2", "v1:docs"
        Index,    ///< what the next commit would hold
        WorkTree, ///< the files beside the repository
        Folder,   ///< any folder of the disk
    };

    Kind kind = Kind::Revision;
    QString name = {}; ///< of a revision; of a folder its absolute path with "/"

    friend bool operator==(const GitSide &, const GitSide &) = default;
};

/// The written form: ":index", ":worktree", ":folder:" with the path, or the revision; none of the first three can be
/// the name of a branch or tag. An absolute path, and one that begins with "./" or "../", is a folder, too.
[[nodiscard]] GitSide gitSideOf(const QString &text);
[[nodiscard]] QString gitSideText(const GitSide &side);

/// Whether git can be asked for a revision of that name: it is one line and not empty.
[[nodiscard]] bool canBeRevision(const QString &name);

} // namespace velmora
