#pragma once

#include "filetypes/registry/engine/registry_tree.h"

#include <QByteArray>

namespace velmora {

/// A tree as a `.reg` file of version 5, in UTF-16 with a mark and lines of at most 80 characters where they are
/// hexadecimal digits, as the registry editor of Windows writes it. What `readRegistry` makes of it is the tree again.
[[nodiscard]] QByteArray registryFile(const RegistryTree &tree);

} // namespace velmora
