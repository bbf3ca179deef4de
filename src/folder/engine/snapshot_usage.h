#pragma once

#include "folder/engine/usage_tree.h"

namespace velmora {

struct FolderSnapshot;

/// What the files of a snapshot took when it was made, as a tree to compare a scan with. Siblings are in the order of
/// their paths; nothing is known of room on the medium. Linear.
[[nodiscard]] UsageTree snapshotUsage(const FolderSnapshot &snapshot);

} // namespace velmora
