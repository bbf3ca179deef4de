#pragma once

#include "platform/file_layer.h"

namespace velmora {

/// The meaning of errno's value.
[[nodiscard]] FileError fileErrorOf(int number);

/// Gives an entry another name, which must be free. On failure errno is set.
[[nodiscard]] bool renameToFree(int fromFolder, const char *name, int toFolder, const char *newName);

} // namespace velmora
