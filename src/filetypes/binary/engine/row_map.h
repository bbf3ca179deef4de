#pragma once

#include "core/sides.h"
#include "filetypes/binary/engine/aligned_range.h"

#include <vector>

namespace velmora {

/// What stands in one row of a view, on both sides.
struct HexRow {
    RangeKind kind = RangeKind::Equal; ///< of the range that it belongs to
    Sides<qint64> offset;              ///< in the files; of a side without bytes, where the next ones are
    Sides<int> count;                  ///< bytes, up to 16
};

/// The rows of two files side by side: those of each range one after the other, each range beginning with a row of its
/// own. Rows are numbered from 0.
class RowMap {
public:
    RowMap() = default;
    /// `ranges` follow each other on both sides without a gap, and none is empty on both.
    explicit RowMap(std::vector<AlignedRange> ranges);

    /// Both files row by row, as they stand; their contents are one range.
    [[nodiscard]] static RowMap unaligned(const BinaryPair &files);

    [[nodiscard]] qint64 rowCount() const noexcept { return m_firstRows.empty() ? 0 : m_firstRows.back(); }
    /// `row` is one of the rows.
    [[nodiscard]] HexRow at(qint64 row) const;
    /// The row that has the byte at `offset` of a side, or else the nearest; 0 without rows.
    [[nodiscard]] qint64 rowOf(Side side, qint64 offset) const;

    [[nodiscard]] const std::vector<AlignedRange> &ranges() const noexcept { return m_ranges; }
    /// The row in which a range begins, counted from 0 as the ranges are.
    [[nodiscard]] qint64 firstRow(std::size_t range) const { return m_firstRows[range]; }
    /// The first range that reaches `row`.
    [[nodiscard]] std::size_t rangeOf(qint64 row) const;

private:
    std::vector<AlignedRange> m_ranges;
    std::vector<qint64> m_firstRows; ///< of each range, and the number of rows at last
};

} // namespace velmora
