#pragma once

#include <QString>

namespace velmora {

class UserRegistry;

/// Adds the two entries of Explorer's context menu, for files and for folders, that hand the clicked item to `program`
/// as the left or the right side of a comparison. False when any of them could not be written.
[[nodiscard]] bool registerExplorerMenu(UserRegistry &registry, const QString &program);

/// Takes the entries away again. Always true.
bool unregisterExplorerMenu(UserRegistry &registry);

[[nodiscard]] bool isExplorerMenuRegistered(const UserRegistry &registry);

} // namespace velmora
