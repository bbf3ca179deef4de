#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "filetypes/binary/engine/aligned_range.h"
#include "filetypes/binary/engine/binary_pair.h"

namespace velmora {

/// Two files as ranges that follow each other on both sides and make them up whole, equal ones and others in turns.
struct Alignment {
    /// When there would be more ranges, the rest of the files is the last one.
    static constexpr std::size_t rangeLimit = 200'000;

    std::vector<AlignedRange> ranges;
    bool isCapped = false;

    /// The ranges that differ.
    [[nodiscard]] qint64 differences() const;
};

/// Compares two files in which bytes may have been inserted and deleted. Where they differ, what follows is found again
/// by blocks that their contents delimit, nearby at first, then in windows that grow up to the end of the files; blocks
/// that have changed their order are not found. Memory is for the ranges and for some MB. What cannot be read makes the
/// rest of the files differ. What a cancelled comparison returns means nothing. Progress counts the bytes of the left
/// side.
[[nodiscard]] Alignment alignFiles(const BinaryPair &files, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
