#pragma once

#include "merge/engine/line_range.h"
#include "text/engine/cancel_poll.h"

#include <span>
#include <vector>

namespace velmora {

/// The lines of `base` that have become those of `other`; one of them may be empty, but not both.
struct ChangedLines {
    LineRange base;
    LineRange other;

    friend bool operator==(const ChangedLines &, const ChangedLines &) = default;
};

/// What differs between two texts, whose lines are given as numbers from 0 to `numbers` - 1: a shortest list of changes
/// in rising order, with at least one unchanged line between two of them.
///
/// Lines without a counterpart are left out of the search, and so are frequent ones in their midst (blank lines and
/// braces of a passage that is new), which would pair what has nothing in common. Where a change could stand in several
/// places it stands as far down as it can, or beside the other text's change when it can meet one. Texts that have
/// little in common get changes that are not the shortest: the search gives up after a number of steps that grows
/// with the root of their lengths. Empty when `poll` has stopped.
[[nodiscard]] std::vector<ChangedLines> lineChanges(std::span<const qint32> base, std::span<const qint32> other,
                                                    qint32 numbers, CancelPoll &poll);

} // namespace velmora
