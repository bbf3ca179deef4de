#pragma once

#include "text/engine/cancel_poll.h"
#include "text/engine/match_input.h"

#include <vector>

namespace velmora {

/// One place of either sequence among the places of both, in the lexicographic order of what follows them.
struct SuffixPlace {
    /// The position in the first sequence; for the second sequence -1 - position.
    qint32 position = 0;
    /// How many elements are in common with what follows the place before in the order; 0 for the first.
    qint32 common = 0;

    [[nodiscard]] bool inFirst() const noexcept { return position >= 0; }
    [[nodiscard]] qint32 first() const noexcept { return position; }
    [[nodiscard]] qint32 second() const noexcept { return -1 - position; }
};

/// Brings the places of a rectangle into order.
///
/// Places whose value the other sequence lacks in this rectangle are left out: no block holds them. What follows a
/// place ends at such a value and at the edge of the rectangle; only lengths in common between places of different
/// sequences mean anything.
class SuffixOrder {
public:
    explicit SuffixOrder(const MatchInput &input) : m_input(input), m_symbols(size_t(input.alphabet), 0) {}

    /// Linear in the size of `rect`. Meaningless when `poll` has stopped.
    [[nodiscard]] std::vector<SuffixPlace> of(const MatchRect &rect, CancelPoll &poll);

private:
    void numberSharedValues(const MatchRect &rect);
    void forgetValues(const MatchRect &rect);
    void append(qint32 value, qint32 position, qint32 separator);

    const MatchInput &m_input;
    /// For each value of the rectangle in hand how it is written in m_text, plus one; 0 between the calls.
    std::vector<qint32> m_symbols;
    qint32 m_nextSymbol = 0;
    std::vector<qint32> m_text;
    std::vector<qint32> m_positions; ///< parallel to m_text
};

} // namespace velmora
