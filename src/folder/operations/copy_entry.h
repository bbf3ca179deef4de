#pragma once

#include "platform/file_layer.h"

namespace velmora {

/// Copies a file or link, with time and permissions, to a new name. `tick` as that of `FileSink`. That the volume of
/// the copy has no access lists is no error: the copy gives nobody more than the source.
[[nodiscard]] FileError copyEntry(FolderHandle &from, const QString &name, const NodeState &node, FolderHandle &to,
                                  const QString &newName, const FileSink::Tick &tick);

} // namespace velmora
