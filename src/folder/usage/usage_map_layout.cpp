#include "folder/usage/usage_map_layout.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr qreal smallest = 3;    ///< pixels on a side
constexpr qreal border = 1;      ///< around what is in a folder
constexpr qreal leastNamed = 48; ///< how wide a folder is that shows its name

class Division {
public:
    Division(const UsageTree &tree, qreal header) : m_tree(tree), m_header(header) {}

    [[nodiscard]] std::vector<UsageTile> tiles(qint32 node, const QRectF &room)
    {
        m_waiting.push_back({room, node});
        while (!m_waiting.empty()) {
            const UsageTile tile = m_waiting.back();
            m_waiting.pop_back();
            take(tile);
        }
        return std::move(m_tiles);
    }

private:
    /// What has an area, and its rectangle.
    struct Part {
        qint32 node;
        qreal area;
    };

    void take(UsageTile tile)
    {
        const UsageTree::Node &here = m_tree.node(tile.node);
        QRectF inner = tile.rect.adjusted(border, border, -border, -border);
        tile.isDivided = here.end > tile.node + 1 && here.size > 0 && inner.width() >= 2 * smallest &&
                         inner.height() >= 2 * smallest;
        if (tile.isDivided && inner.width() >= leastNamed && inner.height() >= 3 * m_header) {
            tile.header = m_header;
            inner.setTop(inner.top() + m_header);
        }
        m_tiles.push_back(tile);
        if (tile.isDivided)
            divide(tile.node, inner);
    }

    /// Siblings come by descending size, so the first ones fill the first strip.
    void divide(qint32 folder, QRectF room)
    {
        const UsageTree::Node &around = m_tree.node(folder);
        const qreal scale = room.width() * room.height() / qreal(around.size);
        std::vector<Part> strip;
        qreal area = 0;
        for (qint32 node = folder + 1; node < around.end; node = m_tree.node(node).end) {
            const Part part{node, qreal(m_tree.node(node).size) * scale};
            if (part.area < smallest * smallest / 2)
                break; // and so are all after it
            const qreal side = std::min(room.width(), room.height());
            if (!strip.empty() && worst(strip, area, side) < worstWith(strip, part, area, side)) {
                place(strip, area, room);
                strip.clear();
                area = 0;
            }
            strip.push_back(part);
            area += part.area;
        }
        place(strip, area, room);
    }

    /// How far from a square the worst part of a strip along `side` is; 1 for a square.
    [[nodiscard]] static qreal worst(const std::vector<Part> &strip, qreal area, qreal side)
    {
        return ratio(strip.front().area, strip.back().area, area, side);
    }

    [[nodiscard]] static qreal worstWith(const std::vector<Part> &strip, const Part &next, qreal area, qreal side)
    {
        return ratio(strip.front().area, next.area, area + next.area, side);
    }

    [[nodiscard]] static qreal ratio(qreal largest, qreal least, qreal area, qreal side)
    {
        const qreal square = side * side;
        return std::max(square * largest / (area * area), area * area / (square * least));
    }

    /// Puts a strip along the shorter side of `room` and takes it away from it.
    void place(const std::vector<Part> &strip, qreal area, QRectF &room)
    {
        if (strip.empty() || room.width() <= 0 || room.height() <= 0)
            return;
        const bool stands = room.width() >= room.height();
        const qreal side = stands ? room.height() : room.width();
        const qreal depth = std::min(area / side, stands ? room.width() : room.height());
        qreal at = stands ? room.top() : room.left();
        for (const Part &part : strip) {
            const qreal length = side * part.area / area;
            const QRectF rect = stands ? QRectF(room.left(), at, depth, length) : QRectF(at, room.top(), length, depth);
            at += length;
            if (rect.width() >= smallest / 2 && rect.height() >= smallest / 2)
                m_waiting.push_back({rect, part.node});
        }
        if (stands)
            room.setLeft(room.left() + depth);
        else
            room.setTop(room.top() + depth);
    }

    const UsageTree &m_tree;
    qreal m_header;
    std::vector<UsageTile> m_waiting;
    std::vector<UsageTile> m_tiles;
};

} // namespace

std::vector<UsageTile> usageMapLayout(const UsageTree &tree, qint32 node, const QRectF &room, qreal header)
{
    return Division(tree, header).tiles(node, room);
}

} // namespace velmora
