#pragma once

#include "vfs/git/git_side.h"

#include <QDir>
#include <QString>

#include <optional>

namespace velmora {

/// A folder as a state of a repository has it: what can stand where a folder is asked for. A value.
struct GitPlace {
    GitSide side; ///< of any kind but `Folder`
    QString path; ///< absolute, with "/": the folder, whether or not the disk has it now

    friend bool operator==(const GitPlace &, const GitPlace &) = default;
};

/// Whether a text is a place: "git:", a state as `gitSideText` has it, ":" and a path. No absolute path begins so; a
/// relative one that does is written with "./" before it.
[[nodiscard]] bool isGitPlace(const QString &text);
/// The path may be relative to `folder`, and is that when it is empty. Nothing for what is no place.
[[nodiscard]] std::optional<GitPlace> gitPlaceOf(const QString &text, const QDir &folder = {});
/// The reverse. Not for revisions with ":", which name a folder themselves.
[[nodiscard]] QString gitPlaceText(const GitPlace &place);

} // namespace velmora
