#pragma once

#include <Qt>
#include <QtGlobal>

#include <vector>

namespace velmora {

class RowTree;
class TreeFilter;

/// One row that is visible.
struct TreeRow {
    qint32 node = -1;
    quint16 depth = 0; ///< of the node
    /// Bit d is set when a further row of depth d, within the same node of depth d - 1, comes below this one: a line is
    /// drawn down there. Depths above 63 have no lines.
    quint64 lines = 0;
};

/// The order of siblings.
struct TreeOrder {
    int column = -1; ///< -1 for that of the tree itself
    Qt::SortOrder direction = Qt::AscendingOrder;
};

/// The rows of a tree from top to bottom: what is in a node follows it where it is open. Linear in the number of rows
/// and of what is closed or hidden beside them; an order costs the sorting of the siblings that are visible.
[[nodiscard]] std::vector<TreeRow> visibleRows(const RowTree &tree, const TreeFilter &filter, TreeOrder order);

} // namespace velmora
