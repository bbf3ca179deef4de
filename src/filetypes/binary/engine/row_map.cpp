#include "filetypes/binary/engine/row_map.h"

#include "filetypes/binary/engine/binary_compare.h"

#include <algorithm>

namespace velmora {

RowMap::RowMap(std::vector<AlignedRange> ranges) : m_ranges(std::move(ranges))
{
    m_firstRows.reserve(m_ranges.size() + 1);
    qint64 row = 0;
    for (const AlignedRange &range : m_ranges) {
        m_firstRows.push_back(row);
        row += (std::max(range.leftLength, range.rightLength) + rowSize - 1) / rowSize;
    }
    m_firstRows.push_back(row);
}

RowMap RowMap::unaligned(const BinaryPair &files)
{
    AlignedRange all{RangeKind::Changed, files.left.start, files.left.size(), files.right.start, files.right.size()};
    if (all.leftLength == 0 && all.rightLength == 0)
        return {};
    return RowMap({all});
}

std::size_t RowMap::rangeOf(qint64 row) const
{
    return std::size_t(std::upper_bound(m_firstRows.begin(), m_firstRows.end(), row) - m_firstRows.begin()) - 1;
}

HexRow RowMap::at(qint64 row) const
{
    const std::size_t index = rangeOf(row);
    const AlignedRange &range = m_ranges[index];
    const qint64 within = (row - m_firstRows[index]) * rowSize;
    const qint64 left = std::min(within, range.leftLength);
    const qint64 right = std::min(within, range.rightLength);
    return {range.kind,
            {range.left + left, range.right + right},
            {int(std::min(range.leftLength - left, rowSize)), int(std::min(range.rightLength - right, rowSize))}};
}

qint64 RowMap::rowOf(Side side, qint64 offset) const
{
    if (m_ranges.empty())
        return 0;
    const auto begin = [side](const AlignedRange &range) { return side == Side::Left ? range.left : range.right; };
    const auto length = [side](const AlignedRange &range) {
        return side == Side::Left ? range.leftLength : range.rightLength;
    };
    // Ranges without bytes of the side begin where the next one with bytes does, which is the last of them.
    auto after = std::upper_bound(m_ranges.begin(), m_ranges.end(), offset,
                                  [&](qint64 place, const AlignedRange &range) { return place < begin(range); });
    while (after != m_ranges.begin() && after - 1 != m_ranges.begin() && length(*(after - 1)) == 0)
        --after;
    const std::size_t index = after == m_ranges.begin() ? 0 : std::size_t(after - m_ranges.begin()) - 1;
    const AlignedRange &range = m_ranges[index];
    const qint64 within = std::clamp<qint64>(offset - begin(range), 0, std::max<qint64>(length(range) - 1, 0));
    return m_firstRows[index] + within / rowSize;
}

} // namespace velmora
