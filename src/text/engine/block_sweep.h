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
          m_firstSize(qint32(input.a.size())),
          m_byPlace(input.a.size() + input.b.size())
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
    /// Precondition: the positions lie in [begin, end), whose marks begin at m_byPlace[firstMark + begin].
    void sortByPosition(std::vector<Candidate> &candidates, qint32 firstMark, qint32 begin, qint32 end);
    void linkGroups();
    void takeBlocks(const Task &task, qint32 length);
    void addPart(const MatchRect &rect);
    /// Makes tasks of m_parts, none of which has a block longer than `longest`.
    void distribute(const Task &task, qint32 longest);
    /// Finds the part of each place and the range of each part. Appends a part for the places of none, and returns how
    /// many places the others have.
    [[nodiscard]] size_t assignParts(const Task &task);
    /// Sorts the places by their parts into m_moved; their order within a part stays.
    template <typename Minima>
    void movePlaces(const Task &task, qint32 longest, Minima minima);
    [[nodiscard]] size_t markOf(const SuffixPlace &place) const noexcept
    {
        return size_t(place.inFirst() ? place.first() : m_firstSize + place.second());
    }

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

    std::vector<Task> m_parts;    ///< those of the rectangle in hand that remain to be treated
    std::vector<qint32> m_partOf; ///< for each place of the rectangle in hand
    qint32 m_firstSize;
    std::vector<qint32> m_byPlace; ///< marks by position, those of the second sequence behind those of the first
};

} // namespace velmora
