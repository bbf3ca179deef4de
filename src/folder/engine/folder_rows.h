#pragma once

#include "core/rows_view.h"
#include "folder/engine/folder_tree.h"

#include <vector>

namespace velmora {

/// One row of the view.
struct FolderRow {
    qint32 node = -1;
    /// Bit d is set when a further row of depth d, under the same folder of depth d - 1, comes below this one: a line
    /// is drawn down there. Depths above 63 have no lines.
    quint64 lines = 0;
};

/// The rows of a tree from top to bottom, in ascending order of their nodes. Linear in the number of nodes.
[[nodiscard]] std::vector<FolderRow> visibleRows(const FolderTree &tree, RowsView view);

/// Whether `view` shows an entry that no filter hides.
[[nodiscard]] bool isInView(const FolderTree &tree, qint32 node, RowsView view);

} // namespace velmora
