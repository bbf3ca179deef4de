#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "filetypes/binary/engine/binary_pair.h"

#include <vector>

namespace velmora {

/// Bytes of a row: the granularity of a comparison.
inline constexpr qint64 rowSize = 16;

/// Files may not be larger than this many bytes.
inline constexpr qint64 binarySizeLimit = 128LL * 1024 * 1024 * 1024;

/// The rows of two files that differ. Rows are numbered from 0; row r has the bytes from 16 r on of both. It differs
/// when any of its bytes does or cannot be read, or when only one file reaches into it.
struct RowComparison {
    /// More rows than this are counted, but not listed.
    static constexpr std::size_t listLimit = 2'000'000;

    qint64 rowCount = 0;          ///< of the longer file
    qint64 differing = 0;         ///< rows
    std::vector<qint64> diffRows; ///< the first of them, ascending
    bool isCapped = false;        ///< not all of them are in the list

    /// The share of the rows that differ, in whole per cent, rounded down.
    [[nodiscard]] int rate() const noexcept { return rowCount == 0 ? 0 : int(differing * 100 / rowCount); }
};

/// Compares two files row by row, in pieces that are read by as many threads as `runCrew` has; ranges that are holes in
/// both are passed over. Uses some MB beside the list. What a cancelled comparison returns means nothing. Progress
/// counts the bytes of one side.
[[nodiscard]] RowComparison compareRows(const BinaryPair &files, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
