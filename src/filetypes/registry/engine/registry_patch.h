#pragma once

#include "filetypes/registry/engine/registry_compare.h"

namespace velmora {

/// What makes one side of a comparison into the other one, as the content of a `.reg` file: values that are to be
/// written or deleted, and keys that are to be deleted with all that is in them. Noise stays as it is. `changed` is the
/// side that is to become like the other.
[[nodiscard]] RegistryTree registryPatch(const RegistryComparison &comparison, Side changed);

/// What of `tree` the patch would touch, and what takes it back: written values as they are now, deletions of those
/// that are not there yet, and deleted keys whole.
[[nodiscard]] RegistryTree registryUndo(const RegistryTree &tree, const RegistryTree &patch);

} // namespace velmora
