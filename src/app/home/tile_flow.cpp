#include "app/home/tile_flow.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr int unknownWidth = 640;
constexpr int maximumColumns = 12;
constexpr int bottomMargin = 4;

int lineLength(int count, int size, int spacing)
{
    return count * size + std::max(count - 1, 0) * spacing;
}

} // namespace

int TileFlow::columns(int tiles) const
{
    if (fixedColumns >= 1)
        return std::min(fixedColumns, std::max(tiles, 1));
    const int available = width > 0 ? width : unknownWidth;
    return std::clamp(available / (tile.width() + spacing.width()), 1, maximumColumns);
}

int TileFlow::rows(int tiles) const
{
    const int perRow = columns(tiles);
    return (tiles + perRow - 1) / perRow;
}

QPoint TileFlow::position(int index, int tiles) const
{
    const int perRow = columns(tiles);
    const int row = index / perRow;
    int left = 0;
    if (centred) {
        const int available = width > 0 ? width : unknownWidth;
        const int inRow = std::min(perRow, tiles - row * perRow);
        left = std::max((available - lineLength(inRow, tile.width(), spacing.width())) / 2, 0);
    }
    return {left + index % perRow * (tile.width() + spacing.width()), row * (tile.height() + spacing.height())};
}

QSize TileFlow::extent(int tiles) const
{
    if (tiles == 0)
        return {0, 0};
    return {lineLength(columns(tiles), tile.width(), spacing.width()),
            lineLength(rows(tiles), tile.height(), spacing.height()) + bottomMargin};
}

} // namespace velmora
