#pragma once

#include <QString>

#include <functional>

namespace velmora {

class UserRegistry;

/// The entries that a file manager's context menu may hold for this program, however the system keeps them.
///
/// Without functions there is nothing that could be switched.
struct ShellMenu {
    std::function<bool()> isRegistered;
    /// For the program at this path; false when that failed.
    std::function<bool(const QString &program)> registerMenu;
    std::function<bool()> unregisterMenu;
    QString folder; ///< below which files are put; empty when it is not files

    [[nodiscard]] bool isThere() const { return bool(isRegistered); }
};

/// Kept in a registry, which outlives it.
[[nodiscard]] ShellMenu registryShellMenu(UserRegistry &registry);

/// Kept in files of a desktop below `dataFolder`.
[[nodiscard]] ShellMenu desktopShellMenu(const QString &dataFolder);

/// What this system has.
[[nodiscard]] ShellMenu systemShellMenu();

} // namespace velmora
