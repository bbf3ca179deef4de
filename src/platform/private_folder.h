#pragma once

#include <QString>

namespace velmora {

/// Whether `path` is a folder, no link to one, that belongs to the user of this process and that the system lets nobody
/// else look into; on Windows, where the place of temporary folders keeps others out, that it belongs to the user. The
/// path has "/". Any thread.
[[nodiscard]] bool isOwnPrivateFolder(const QString &path);

} // namespace velmora
