#pragma once

#include "app/desktop/desktop_files.h"

namespace velmora {

/// The files that make `program` known to a desktop of the freedesktop.org kind: entries in the context menus of file
/// managers that hand the clicked item over as the left or the right side of a comparison, an application entry with
/// its icon, and the file types of sessions and workspaces. The first of them tells whether they are installed.
[[nodiscard]] QList<DesktopFile> desktopMenuFiles(const QString &program);

} // namespace velmora
