#pragma once

#include "core/progress.h"
#include "filetypes/registry/engine/registry_file.h"
#include "platform/live_registry.h"

namespace velmora {

/// The entries of a key of a registry, with all that is in it. Keys within that could not be read count as bad lines of
/// no number.
[[nodiscard]] RegistryReading readLiveKey(const LiveRegistry &registry, const LiveKey &key, const CancelFlag &cancel,
                                          Progress &progress);

/// What a patch came to.
struct RegistryWriting {
    qsizetype done = 0; ///< keys and values that were written or deleted
    QString failed;     ///< the path of the key where it ended early; empty when it went through
    QString error;      ///< in the system's own words
    [[nodiscard]] bool ok() const noexcept { return failed.isEmpty(); }
};

/// Carries out a patch (`registryPatch`) in a view of a registry, key by key in its order, and ends with the first
/// thing that fails.
[[nodiscard]] RegistryWriting writeToRegistry(LiveRegistry &registry, RegistryView view, const RegistryTree &patch);

} // namespace velmora
