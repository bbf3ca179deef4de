#pragma once

#include <QString>

namespace velmora {

struct SessionPaths;

/// Sessions open copies of what has no path of its own: entries of archives, files of a commit or of a host. They lie
/// in passing folders (`core/passing_folder.h`), and people know them by where they are from. Callable from any
/// thread.

/// Notes where the copy at `path`, which may be a folder, is from. Does nothing for what is no copy.
void noteOrigin(const QString &path, const QString &origin);
/// The same of a file, and keeps it from being written.
void noteCopy(const QString &path, const QString &origin);

/// Where a copy is from, in words for people; empty for what is none.
[[nodiscard]] QString originOfCopy(const QString &path);

/// Whether a session on these paths cannot be gone back to, as one of them is a copy, of this run or an earlier one.
[[nodiscard]] bool isOnCopies(const SessionPaths &paths);

} // namespace velmora
