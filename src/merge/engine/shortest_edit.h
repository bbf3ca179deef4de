#pragma once

#include "text/engine/cancel_poll.h"

#include <QtGlobal>

#include <span>
#include <vector>

namespace velmora {

/// Which elements of two sequences are in no pair: 1 for each of these, 0 for the others.
struct EditMarks {
    std::vector<quint8> a;
    std::vector<quint8> b;
};

/// A shortest edit script between two sequences of any values. Of several, the one that the search from both ends at
/// once comes upon (Myers, "An O(ND) Difference Algorithm and Its Variations", 1986, section 4b). When more edits
/// than 256 are needed between two found pairs, a long run of equal elements that a path has come to quickly is taken
/// for part of the script, and when more are than about the root of the lengths, whatever has been reached by then; the
/// script need not be a shortest one then. Incomplete when `poll` has stopped.
[[nodiscard]] EditMarks shortestEdit(std::span<const qint32> a, std::span<const qint32> b, CancelPoll &poll);

} // namespace velmora
