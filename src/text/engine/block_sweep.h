#pragma once

#include "text/engine/run_matcher.h"
#include "text/engine/suffix_order.h"

#include <vector>

namespace velmora {

/// Takes the blocks of a rectangle however often its elements repeat.
///
/// The places of both sequences are kept in the order of what follows them. Those that agree in their first l elements
/// stand together in it, so one walk finds the greatest length l that the rectangle has a block of, and all the places
/// where blocks of that length can start. One sweep along the first sequence then takes all blocks of length l: the
/// earliest start first, each at its earliest partner behind the block before. What lies between them has shorter
/// blocks only, and each part is treated alike with the order of its own places, which is the order at hand without the
/// others.
///
/// Linear in time and memory for the order, and again for each length that a part goes through. A part that shrinks too
/// slowly in this way is left to a `BlockCascade`.
class BlockSweep {
public:
    BlockSweep(const MatchInput &input, const MatchTuning &tuning, BlockChain &chain, RunMatcher &runs,
               CancelPoll &poll)
        : m_tuning(tuning),
          m_chain(chain),
          m_runs(runs),
          m_poll(poll),
          m_order(input),
          m_byFirst(input.a.size()),
          m_bySecond(input.b.size())
    {}

    /// Takes every block of `rect`.
    void takeAll(const MatchRect &rect);

private:
    /// A rectangle and its part of m_places.
    struct Task {
        MatchRect rect;
        size_t begin = 0;
        size_t end = 0;
        /// How many times in a row a part has got nearly all the places of the rectangle that was cut.
        qint32 lopsided = 0;
    };
    /// A place where a block may start; those with the same group agree for the length in hand.
    struct Candidate {
        qint32 position = 0;
        qint32 group = 0;
    };

    [[nodiscard]] qint32 takeLongest(const Task &task);
    [[nodiscard]] qint32 takeCascade(const Task &task);
    [[nodiscard]] qint32 longestBlock(const Task &task) const;
    void collectCandidates(const Task &task, qint32 length);
    void sortByPosition(std::vector<Candidate> &candidates, std::vector<qint32> &marks, qint32 begin, qint32 end);
    void linkGroups();
    void takeBlocks(const Task &task, qint32 length);
    void addPart(const MatchRect &rect);
    void distribute(const Task &task, qint32 longest);

    const MatchTuning &m_tuning;
    BlockChain &m_chain;
    RunMatcher &m_runs;
    CancelPoll &m_poll;
    SuffixOrder m_order;

    std::vector<SuffixPlace> m_places;
    std::vector<SuffixPlace> m_moved;
    std::vector<Task> m_tasks;

    std::vector<Candidate> m_firsts;
    std::vector<Candidate> m_seconds;
    std::vector<qint32> m_groupHead; ///< for each group the index of its first remaining entry of m_seconds
    std::vector<qint32> m_groupNext; ///< parallel to m_seconds
    qint32 m_groups = 0;

    /// The parts of the rectangle in hand that remain to be treated, and by position in which part it lies.
    std::vector<Task> m_parts;
    std::vector<qint32> m_partOf; ///< for each place of the rectangle in hand
    std::vector<qint32> m_byFirst;
    std::vector<qint32> m_bySecond;
};

} // namespace velmora
