#pragma once

#include <QByteArray>
#include <QString>

namespace velmora {

/// The kind of session that shows a file best: "text", "table", "image", "version", "mp3", "archive" or "binary".
/// Tables are known by their names, pictures, programs, music and archives by their first bytes, and texts by having
/// nothing in these that no text holds.
[[nodiscard]] QString kindOfContent(const QString &path, const QByteArray &head);

/// The kind that suits two files: what both are, or "binary" when one is; "text" for a text beside a table,
/// "binary" for a program or music alone, which there is nothing to compare with, "archivebrowse" for an archive alone.
/// Reads the first KiB of each; a file that cannot be read says nothing. Empty paths are allowed.
[[nodiscard]] QString kindOfPair(const QString &left, const QString &right);

/// Whether a file holds conflict markers and is short enough to be asked before it is opened; reads it whole.
[[nodiscard]] bool isMarkedMerge(const QString &path);

} // namespace velmora
