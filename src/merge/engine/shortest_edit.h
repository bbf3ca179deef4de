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
/// once comes upon (Myers, "An O(ND) Difference Algorithm and Its Variations", 1986, section 4b). When more edits are
/// needed between two found pairs than about the root of the lengths, at least 256, what has been reached by then is
/// taken. Incomplete when `poll` has stopped.
[[nodiscard]] EditMarks shortestEdit(std::span<const qint32> a, std::span<const qint32> b, CancelPoll &poll);

} // namespace velmora
