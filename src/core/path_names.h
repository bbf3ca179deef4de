#pragma once

#include <QString>
#include <QStringView>

namespace velmora {

// Paths as texts; no disk is looked at. "/" parts the names on every system: a path that a person gave, which on
// Windows may have "\", goes through `QDir::fromNativeSeparators` first.

/// What stands behind the last "/"; the whole without one.
[[nodiscard]] QString bareName(const QString &path);

/// The folder that `path` is in: "a/b" for "a/b/c", "/" for "/a", empty for a bare name.
[[nodiscard]] QString parentPath(const QString &path);

/// The path of `name` in `folder`, which may be empty or end with "/".
[[nodiscard]] QString joinedPath(const QString &folder, const QString &name);

/// Whether `path` leads to something in `folder` or below; not to `folder` itself. Letters count as they are.
[[nodiscard]] bool isInside(const QString &path, const QString &folder);

/// Whether a text leads elsewhere by a word before ":", as "sftp://host/folder" and "git:HEAD:folder" do: its "/" is
/// the same on every system. One letter is a drive.
[[nodiscard]] bool isAddress(QStringView text);

/// A path as the system writes it, for people; an address as it stands.
[[nodiscard]] QString nativePath(const QString &path);
/// The reverse: with "/".
[[nodiscard]] QString pathFromNative(const QString &text);

} // namespace velmora
