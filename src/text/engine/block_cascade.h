#pragma once

#include "text/engine/block_chain.h"
#include "text/engine/cancel_poll.h"
#include "text/engine/index_groups.h"
#include "text/engine/suffix_order.h"

#include <span>
#include <vector>

namespace velmora {

/// Takes the blocks of one rectangle length after length, from the longest down, looking only at places where a block
/// of the length in hand may start.
///
/// How long a block each place may start is worked out once, for the whole rectangle. As blocks cut it up, these
/// numbers become too high: a place that does not find a partner is tried again at the next length. The cascade breaks
/// off once such trials outweigh the work of starting afresh with the parts.
class BlockCascade {
public:
    BlockCascade(const MatchRect &rect, std::span<const SuffixPlace> places, BlockChain &chain, CancelPoll &poll);

    /// Takes all blocks down to some length and returns the greatest length that blocks still to be taken may have: 0
    /// when all are taken. Precondition: the rectangle has no block taken yet.
    [[nodiscard]] qint32 run();

private:
    /// A place where a block may start: its position in its sequence, its index in m_places.
    struct Candidate {
        qint32 position = 0;
        qint32 place = 0;
    };
    using Candidates = std::vector<Candidate>;

    void measureReach();
    void takeBlocks(qint32 length);
    [[nodiscard]] qint32 groupOf(qint32 place) noexcept;

    MatchRect m_rect;
    std::span<const SuffixPlace> m_places;
    BlockChain &m_chain;
    BlockChain m_mirrored; ///< the same blocks with the sequences exchanged, counted from the edges of m_rect
    CancelPoll &m_poll;

    std::vector<qint32> m_reach; ///< by place, the longest block that may start there
    qint32 m_longest = 0;
    std::vector<qint32> m_groups; ///< by place, a forest; places of one tree agree for the length in hand
    Candidates m_firsts;
    Candidates m_seconds;
    std::vector<qint32> m_head; ///< by root of a tree, the index of its first remaining entry of m_seconds
    std::vector<qint32> m_next; ///< parallel to m_seconds
};

} // namespace velmora
