#pragma once

#include <QString>

namespace velmora {

/// The folder in which a desktop looks for the current user's own menu entries, file types and icons; honours
/// XDG_DATA_HOME. Empty on systems that keep them elsewhere.
[[nodiscard]] QString desktopDataFolder();

/// Lets the desktop take notice of changed entries and file types below `dataFolder`. Runs the tools that the system
/// has for this and waits for each up to 5 seconds; without them the desktop notices later by itself.
void refreshDesktopData(const QString &dataFolder);

} // namespace velmora
