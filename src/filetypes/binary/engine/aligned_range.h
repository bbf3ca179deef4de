#pragma once

#include <QtGlobal>

#include <limits>
#include <vector>

namespace velmora {

struct RowComparison;
struct BinaryPair;

enum class RangeKind : quint8 {
    Equal,    ///< both sides have the same bytes
    Changed,  ///< both have bytes here, others
    Deleted,  ///< only the left side has bytes here
    Inserted, ///< only the right side has
};

/// A range of the left file and what stands beside it in the right one.
struct AlignedRange {
    RangeKind kind = RangeKind::Equal;
    qint64 left = 0; ///< offset in the left file
    qint64 leftLength = 0;
    qint64 right = 0; ///< offset in the right file
    qint64 rightLength = 0;

    friend bool operator==(const AlignedRange &, const AlignedRange &) = default;
};

/// The kind of a range that differs, by what each side has of it.
[[nodiscard]] constexpr RangeKind kindOfDifference(qint64 leftLength, qint64 rightLength) noexcept
{
    return rightLength == 0 ? RangeKind::Deleted : leftLength == 0 ? RangeKind::Inserted : RangeKind::Changed;
}

/// The listed rows of a comparison as ranges of bytes: rows that follow each other are one, up to the end of the files.
/// Offsets count from the beginnings of the files. At most `limit`.
[[nodiscard]] std::vector<AlignedRange> rangesOfRows(const RowComparison &comparison, const BinaryPair &files,
                                                     std::size_t limit = std::numeric_limits<std::size_t>::max());

} // namespace velmora
