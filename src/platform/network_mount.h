#pragma once

#include <QString>

namespace velmora {

/// Where the folder tree of another machine begins that `path` lies in: a mount point, or a drive letter on Windows.
/// Empty for what lies on this machine, and when it cannot be found out. `path` is absolute and clean, with "/" between
/// its parts. Asks this system alone: nothing is sent to the other machine, and links on the way are not followed.
[[nodiscard]] QString networkMountOf(const QString &path);

} // namespace velmora
