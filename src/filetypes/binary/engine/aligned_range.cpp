#include "filetypes/binary/engine/aligned_range.h"

#include "filetypes/binary/engine/binary_compare.h"

#include <algorithm>

namespace velmora {

namespace {

AlignedRange rangeOfRows(const BinaryPair &files, qint64 first, qint64 end)
{
    const auto within = [&](const BinaryPart &part, qint64 &offset, qint64 &length) {
        const qint64 from = std::min(first * rowSize, part.size());
        offset = part.start + from;
        length = std::min(end * rowSize, part.size()) - from;
    };
    AlignedRange range;
    within(files.left, range.left, range.leftLength);
    within(files.right, range.right, range.rightLength);
    range.kind = kindOfDifference(range.leftLength, range.rightLength);
    return range;
}

} // namespace

std::vector<AlignedRange> rangesOfRows(const RowComparison &comparison, const BinaryPair &files, std::size_t limit)
{
    std::vector<AlignedRange> ranges;
    const std::vector<qint64> &rows = comparison.diffRows;
    for (std::size_t at = 0; at < rows.size() && ranges.size() < limit;) {
        std::size_t next = at + 1;
        while (next < rows.size() && rows[next] == rows[next - 1] + 1)
            ++next;
        ranges.push_back(rangeOfRows(files, rows[at], rows[next - 1] + 1));
        at = next;
    }
    return ranges;
}

} // namespace velmora
