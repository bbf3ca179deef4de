#pragma once

#include "folder/engine/usage_tree.h"

#include <QRectF>

#include <vector>

namespace velmora {

/// A rectangle of a map.
struct UsageTile {
    QRectF rect;
    qint32 node = 0;
    /// What is in it has rectangles of its own above this one, below a strip of `header` pixels for its name.
    bool isDivided = false;
    qreal header = 0;
};

/// Divides `room` among what is in `node` by size, as squarified treemaps do (Bruls, Huizing, van Wijk, 2000): what is
/// around comes before what is in it, and the first tile is the node's own. What would be smaller than a few pixels
/// is left out with what is in it, so that the cost is that of the room and not of the tree. `header`: the height of a
/// name.
[[nodiscard]] std::vector<UsageTile> usageMapLayout(const UsageTree &tree, qint32 node, const QRectF &room,
                                                    qreal header);

} // namespace velmora
