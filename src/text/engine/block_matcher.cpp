#include "text/engine/block_matcher.h"

#include "text/engine/block_sweep.h"
#include "text/engine/run_matcher.h"

#include <array>
#include <optional>

namespace velmora {

namespace {

// Runs of 32 lines are what two versions of a file mostly have in common; they leave small rectangles. Those of 8 make
// sure that a file with a change in every ten lines is not sorted as a whole.
constexpr std::array<qint32, 2> longRunLengths{32, 8};
constexpr MatchTuning defaultTuning{.longRuns = longRunLengths};

/// Brings the cheapest means to bear on each rectangle.
class BlockMatcher {
public:
    BlockMatcher(const MatchInput &input, const MatchTuning &tuning, BlockChain &chain, CancelPoll &poll)
        : m_input(input), m_tuning(tuning), m_chain(chain), m_poll(poll), m_runs(input, tuning, chain, poll)
    {}

    /// Takes all blocks of `rect`, for which the lengths of m_tuning.longRuns from `firstLength` on are worth a try.
    void match(const MatchRect &rect, size_t firstLength)
    {
        if (rect.isEmpty() || m_poll.stopped() || m_runs.takeAll(rect))
            return;
        for (size_t k = firstLength; k < m_tuning.longRuns.size(); ++k) {
            const qint64 matchedBefore = m_chain.matched();
            if (!m_runs.takeLong(rect, m_tuning.longRuns[k]))
                break;
            if (m_chain.matched() > matchedBefore) {
                m_chain.forEachGap(rect, [&](const MatchRect &gap) { match(gap, k + 1); });
                return;
            }
        }
        if (!m_sweep)
            m_sweep.emplace(m_input, m_tuning, m_chain, m_runs, m_poll);
        m_sweep->takeAll(rect);
    }

private:
    const MatchInput &m_input;
    const MatchTuning &m_tuning;
    BlockChain &m_chain;
    CancelPoll &m_poll;
    RunMatcher m_runs;
    std::optional<BlockSweep> m_sweep;
};

} // namespace

const MatchTuning &defaultMatchTuning()
{
    return defaultTuning;
}

void matchBlocks(const MatchInput &input, const MatchTuning &tuning, BlockChain &chain, CancelPoll &poll)
{
    BlockMatcher(input, tuning, chain, poll).match({0, qint32(input.a.size()), 0, qint32(input.b.size())}, 0);
}

} // namespace velmora
