#pragma once

#include "platform/descriptor_unix.h"
#include "platform/file_error_unix.h"

namespace velmora {

/// Moves the entry `name` of `folder` to the bin of its volume. `folderPath` leads to the folder. As
/// freedesktop.org has it: the home's bin for what is on its volume, else the one at the top of the volume.
/// `notice` is told of its place there right before.
[[nodiscard]] RecycleResult recycleInto(int folder, const std::string &folderPath, const std::string &name,
                                        const FolderHandle::BinNotice &notice);

/// Removes the note of an entry that has been taken out, and with the last one the bin itself where it lies at the top
/// of a volume and was made for this user. `files`: the bin's folder of entries.
void forgetInBin(int files, const std::string &name);

} // namespace velmora
