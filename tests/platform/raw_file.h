#pragma once

#include <QByteArray>
#include <QString>

namespace velmora::test {

/// Makes folders and files as the system lets them be made, past what Qt and the C library take for a path: names that
/// stand for devices or end in a dot or blank, and paths of any length. Paths are absolute and use "/".
[[nodiscard]] bool makeRawFolder(const QString &path);
[[nodiscard]] bool makeRawFile(const QString &path, const QByteArray &bytes);
/// Removes a folder with all that is in it.
[[nodiscard]] bool removeRawTree(const QString &path);

} // namespace velmora::test
