#pragma once

#include "text/engine/match_block.h"
#include "text/engine/position_set.h"

#include <algorithm>
#include <memory>

namespace velmora {

/// The blocks taken so far. They form a chain, rising in both sequences, and cut the whole into rectangles in which
/// further blocks may lie. Costs at most some 8 bytes for each element of the
/// first sequence.
class BlockChain {
public:
    explicit BlockChain(qint32 firstLength)
        : m_starts(firstLength),
          m_partner(std::make_unique_for_overwrite<qint32[]>(size_t(firstLength))),
          m_length(std::make_unique_for_overwrite<qint32[]>(size_t(firstLength)))
    {}

    /// Precondition: the block lies in one of the free rectangles.
    void take(const MatchBlock &block)
    {
        m_starts.insert(block.a);
        m_partner[size_t(block.a)] = block.b;
        m_length[size_t(block.a)] = block.length;
        m_total += block.length;
    }

    /// How many elements of the first sequence are matched.
    [[nodiscard]] qint64 matched() const noexcept { return m_total; }

    /// The free rectangle inside `outer` that holds element `a`; its height is 0 when no block can lie in it. An empty
    /// one that begins behind `a` when `a` is matched. Precondition: `a` lies in `outer`, whose edges no block crosses.
    [[nodiscard]] MatchRect gapAt(qint32 a, const MatchRect &outer) const noexcept;

    /// Calls `visit(MatchBlock)` for what is left of `run` in each free rectangle inside `outer`, in rising order.
    /// Precondition: `run` lies inside `outer`, and no block crosses the edges of `outer`.
    template <typename Visit>
    void forEachPiece(const MatchBlock &run, const MatchRect &outer, Visit &&visit) const;

    /// Calls `visit(MatchRect)` for every rectangle inside `outer` that is free now; `visit` may take further blocks
    /// in the rectangle that it is given.
    template <typename Visit>
    void forEachGap(const MatchRect &outer, Visit &&visit) const;

    /// Calls `visit(MatchBlock)` for every block in rising order.
    template <typename Visit>
    void forEachBlock(Visit &&visit) const;

private:
    [[nodiscard]] MatchBlock blockAt(qint32 start) const noexcept
    {
        return {start, m_partner[size_t(start)], m_length[size_t(start)]};
    }

    PositionSet m_starts;
    // Valid at the first element of each block. Memory that no block touches costs nothing.
    std::unique_ptr<qint32[]> m_partner;
    std::unique_ptr<qint32[]> m_length;
    qint64 m_total = 0;
};

inline MatchRect BlockChain::gapAt(qint32 a, const MatchRect &outer) const noexcept
{
    MatchRect rect = outer;
    if (const qint32 before = m_starts.atOrBefore(a); before >= outer.alo) {
        const MatchBlock block = blockAt(before);
        rect.alo = block.a + block.length;
        rect.blo = block.b + block.length;
        if (rect.alo > a)
            return {rect.alo, rect.alo, rect.blo, rect.blo};
    }
    if (const qint32 after = m_starts.atOrAfter(a); after >= 0 && after < outer.ahi) {
        rect.ahi = after;
        rect.bhi = blockAt(after).b;
    }
    return rect;
}

template <typename Visit>
void BlockChain::forEachPiece(const MatchBlock &run, const MatchRect &outer, Visit &&visit) const
{
    const qint64 shift = qint64(run.b) - run.a;
    const qint32 end = run.a + run.length;
    qint32 at = run.a;
    while (at < end) {
        const MatchRect gap = gapAt(at, outer);
        const auto first = qint32(std::max<qint64>(at, gap.blo - shift));
        const auto last = qint32(std::min<qint64>(std::min(end, gap.ahi), gap.bhi - shift));
        if (gap.alo <= at && first < last)
            visit(MatchBlock{first, qint32(first + shift), last - first});
        at = gap.ahi;
    }
}

template <typename Visit>
void BlockChain::forEachGap(const MatchRect &outer, Visit &&visit) const
{
    MatchRect rect = outer;
    while (rect.alo < outer.ahi) {
        const qint32 next = m_starts.atOrAfter(rect.alo);
        if (next < 0 || next >= outer.ahi)
            break;
        const MatchBlock block = blockAt(next);
        rect.ahi = block.a;
        rect.bhi = block.b;
        if (!rect.isEmpty())
            visit(rect);
        rect = {block.a + block.length, outer.ahi, block.b + block.length, outer.bhi};
    }
    if (!rect.isEmpty())
        visit(rect);
}

template <typename Visit>
void BlockChain::forEachBlock(Visit &&visit) const
{
    for (qint32 start = m_starts.atOrAfter(0); start >= 0; start = m_starts.atOrAfter(start + 1))
        visit(blockAt(start));
}

} // namespace velmora
