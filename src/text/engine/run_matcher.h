#pragma once

#include "text/engine/block_chain.h"
#include "text/engine/cancel_poll.h"
#include "text/engine/match_input.h"

#include <memory>
#include <vector>

namespace velmora {

/// Takes the blocks of a rectangle from a list of its common runs.
///
/// A block that is the longest of its rectangle is what the rectangle leaves of a maximal common run. So all the blocks
/// of at least some length come out of the list of all maximal runs of at least that length: the first run in the order
/// of taking that no earlier block has cut is the next block; a run that has been cut goes back as what is left of it.
///
/// Costs time and memory by the number of runs and their total length.
class RunMatcher {
public:
    RunMatcher(const MatchInput &input, const MatchTuning &tuning, BlockChain &chain, CancelPoll &poll);

    /// Takes every block of `rect`, if its equal pairs are few enough to be listed. Otherwise false, and nothing taken.
    [[nodiscard]] bool takeAll(const MatchRect &rect);

    /// Takes the blocks of `rect` as long as they have at least `minimum` elements, if its runs of that length are
    /// found in linear time. Otherwise false, and nothing taken. Precondition: minimum >= 2.
    [[nodiscard]] bool takeLong(const MatchRect &rect, qint32 minimum);

private:
    [[nodiscard]] bool pairsAreFew(const MatchRect &rect);
    void listAllRuns(const MatchRect &rect);
    [[nodiscard]] bool listLongRuns(const MatchRect &rect, qint32 minimum);
    /// Lists the run of at least `minimum` elements that the pair (i, j) is in, where an indexed window starts, unless
    /// an earlier one of its windows has led to it; these are `step` elements apart. Returns the compared elements.
    [[nodiscard]] qint64 listRunThrough(qint32 i, qint32 j, const MatchRect &rect, qint32 minimum, qint32 step);
    void sortByLength();
    void take(const MatchRect &rect, qint32 minimum);
    [[nodiscard]] qint32 extendForwards(qint32 i, qint32 j, const MatchRect &rect) const noexcept;

    const MatchInput &m_input;
    const MatchTuning &m_tuning;
    BlockChain &m_chain;
    CancelPoll &m_poll;

    std::vector<MatchBlock> m_runs;
    std::vector<MatchBlock> m_sortedRuns;
    std::vector<qint32> m_lengthStarts;
    std::vector<MatchBlock> m_cutRuns; ///< a heap
    /// For each value: how often it occurs, or the first place where it does; 0 or none between the calls.
    std::vector<qint32> m_byValue;
    /// For each place of b the next one of the same value.
    std::unique_ptr<qint32[]> m_nextPlace;
};

} // namespace velmora
