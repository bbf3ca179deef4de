#pragma once

#include "core/rows_view.h"
#include "folder/engine/folder_tree.h"

namespace velmora {

/// Whether `view` shows an entry that no filter hides.
[[nodiscard]] bool isInView(const FolderTree &tree, qint32 node, RowsView view);

} // namespace velmora
