#pragma once

#include "text/engine/cancel_poll.h"
#include "text/engine/normalized_side.h"

#include <vector>

namespace velmora {

/// The lines of both sides as numbers: two lines have the same number just when their keys are the same.
struct InternedLines {
    std::vector<qint32> left;
    std::vector<qint32> right;
    /// How many numbers there are. They are given out in the order of first occurrence, the left side first.
    qint32 count = 0;
};

/// Numbers the keys of both sides, which lose their hashes. Expected linear in the lines; a key's text is looked at
/// once or twice. Incomplete when `poll` has stopped. Precondition: both sides have their hashes, made with the same
/// `LineHash`.
template <typename Source>
[[nodiscard]] InternedLines internLines(NormalizedSide<Source> &left, NormalizedSide<Source> &right, CancelPoll &poll);

extern template InternedLines internLines(NormalizedSide<Utf8Lines> &, NormalizedSide<Utf8Lines> &, CancelPoll &);
extern template InternedLines internLines(NormalizedSide<Utf16Lines> &, NormalizedSide<Utf16Lines> &, CancelPoll &);

} // namespace velmora
