#pragma once

#include "settings/options/folder_session_options.h"

#include <optional>
#include <span>

namespace velmora {

/// One built-in way of comparing folders.
struct FolderPreset {
    const char *name;     ///< under which it is stored: "@preset/folder/..."
    const char *menuText; ///< source text in the context "Velmora", not yet translated
    CompareMethod method;
    std::optional<qint32> timeToleranceSec; ///< the presets without one keep the tolerance
};

/// The presets in the order of their menu.
[[nodiscard]] std::span<const FolderPreset> folderPresets();

/// Sets the method, and the tolerance if it has one, of the preset `name`, which may be one of the names of earlier
/// versions. Everything else stays. False, and nothing changed, for an unknown name; names are compared exactly.
[[nodiscard]] bool applyFolderPreset(const QString &name, FolderSessionOptions &options);

} // namespace velmora
