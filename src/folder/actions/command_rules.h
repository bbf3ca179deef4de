#pragma once

#include "folder/actions/folder_command.h"

namespace velmora {

/// Why `command` cannot be carried out on `selection`, for a tool tip; empty when it can as far as that can be told
/// without a look at any file.
[[nodiscard]] QString whyNotPossible(FolderCommand command, const FolderActionContext &context,
                                     const FolderSelection &selection);

} // namespace velmora
