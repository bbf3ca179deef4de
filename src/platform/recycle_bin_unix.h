#pragma once

#include "platform/descriptor_unix.h"
#include "platform/file_layer.h"

namespace velmora {

/// The meaning of errno's value.
[[nodiscard]] FileError fileErrorOf(int number);

/// Gives an entry another name, which must be free. On failure errno is set.
[[nodiscard]] bool renameToFree(int fromFolder, const char *name, int toFolder, const char *newName);

/// Moves the entry `name` of `folder` to the bin of its volume. `folderPath` leads to the folder. As
/// freedesktop.org has it: the home's bin for what is on its volume, else the one at the top of the volume.
[[nodiscard]] RecycleResult recycleInto(int folder, const std::string &folderPath, const std::string &name);

/// Takes what `recycleInto` put at `binPath` back out.
[[nodiscard]] FileError restoreFrom(const QString &binPath, int toFolder, const char *newName);

} // namespace velmora
