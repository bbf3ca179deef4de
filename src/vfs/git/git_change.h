#pragma once

#include "core/sides.h"
#include "vfs/git/git_scratch.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace velmora {

enum class GitStatus : quint8 {
    Same,
    Modified,
    Added,
    Deleted,
    Renamed,
    Copied,
    TypeChanged, ///< a file became a link or a submodule, or the other way round
};

/// The letter that git has for it; a blank for `Same`.
[[nodiscard]] char gitStatusLetter(GitStatus status);

/// How many lines come and go.
struct GitLines {
    qint64 added = 0;
    qint64 removed = 0;

    friend bool operator==(const GitLines &, const GitLines &) = default;
};

/// One file of two states.
struct GitChange {
    GitStatus status = GitStatus::Same;
    int likeness = 0;     ///< in percent; of what was renamed or copied
    Sides<QString> paths; ///< empty on the side that lacks it; different when it was renamed or copied
    Sides<GitEntry> entries;
    Sides<qint64> sizes{-1, -1};   ///< bytes; -1 while not known, and where there are none
    std::optional<GitLines> lines; ///< nothing while not known, and for what is no text

    /// What it is called now, or was last.
    [[nodiscard]] const QString &path() const { return paths.right.isEmpty() ? paths.left : paths.right; }
    /// Whether the content is the same and only its name or mode differs.
    [[nodiscard]] bool hasSameContent() const { return entries.left.name == entries.right.name; }
};

/// Reads what `git diff-tree --raw -z` writes; nothing when it is anything else.
[[nodiscard]] std::optional<std::vector<GitChange>> parseRawChanges(const QByteArray &raw);

/// Reads what `git diff-tree --numstat -z` writes of the same trees, and fills in the lines. False when it is anything
/// else.
[[nodiscard]] bool takeLineCounts(const QByteArray &counts, std::vector<GitChange> &changes);

/// Reads what `git ls-tree -r -z` writes; nothing when it is anything else.
[[nodiscard]] std::optional<std::vector<GitFile>> parseTreeListing(const QByteArray &listing);

/// Why a name of a tree can be listed but must not become a file: it leads out of the folder, into the folder of a
/// repository, or is none at all.
[[nodiscard]] bool leadsElsewhere(const QString &path);

} // namespace velmora
