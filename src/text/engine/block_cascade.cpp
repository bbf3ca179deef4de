#include "text/engine/block_cascade.h"

#include <algorithm>
#include <numeric>

namespace velmora {

namespace {

constexpr qint32 none = -1;

/// Trials in vain that cost as much as sorting the places into parts and measuring them again.
constexpr size_t vainTrialsPerPlace = 2;

template <typename Candidates>
void sortTail(Candidates &candidates, size_t sorted)
{
    const auto byPosition = [](const auto &x, const auto &y) { return x.position < y.position; };
    const auto middle = candidates.begin() + qsizetype(sorted);
    std::sort(middle, candidates.end(), byPosition);
    std::inplace_merge(candidates.begin(), middle, candidates.end(), byPosition);
}

/// Removes the candidates that lie in a block or where the other sequence has nothing left.
template <typename Candidates>
void dropIdle(Candidates &candidates, const BlockChain &chain, const MatchRect &outer, qint32 offset)
{
    MatchRect gap;
    std::erase_if(candidates, [&](const auto &candidate) {
        const qint32 position = candidate.position - offset;
        if (position >= gap.ahi)
            gap = chain.gapAt(position, outer);
        return position < gap.alo || gap.isEmpty();
    });
}

} // namespace

BlockCascade::BlockCascade(const MatchRect &rect, std::span<const SuffixPlace> places, BlockChain &chain,
                           CancelPoll &poll)
    : m_rect(rect),
      m_places(places),
      m_chain(chain),
      m_mirrored(rect.height()),
      m_poll(poll),
      m_reach(places.size(), 0),
      m_groups(places.size()),
      m_head(places.size(), none)
{
    std::iota(m_groups.begin(), m_groups.end(), 0);
}

qint32 BlockCascade::run()
{
    measureReach();
    std::vector<qint32> common(m_places.size());
    for (size_t k = 0; k < m_places.size(); ++k)
        common[k] = std::min(m_places[k].common, m_longest);
    const IndexGroups byReach(m_reach, m_longest);
    const IndexGroups byCommon(common, m_longest);

    size_t trialsLeft = vainTrialsPerPlace * m_places.size();
    for (qint32 length = m_longest; length > 0; --length) {
        for (const qint32 place : byCommon.of(length)) {
            if (place > 0)
                m_groups[size_t(groupOf(place))] = groupOf(place - 1);
        }
        const size_t firsts = m_firsts.size();
        const size_t seconds = m_seconds.size();
        for (const qint32 place : byReach.of(length)) {
            const SuffixPlace &at = m_places[size_t(place)];
            if (at.inFirst())
                m_firsts.push_back({at.first(), place});
            else
                m_seconds.push_back({at.second(), place});
        }
        if (m_firsts.empty() && m_seconds.empty())
            continue;
        if (m_poll.stop(qint64(m_firsts.size() + m_seconds.size()) * 8))
            return 0;
        sortTail(m_firsts, firsts);
        sortTail(m_seconds, seconds);
        takeBlocks(length);
        const MatchRect mirroredRect{0, m_rect.height(), 0, m_rect.width()};
        dropIdle(m_firsts, m_chain, m_rect, 0);
        dropIdle(m_seconds, m_mirrored, mirroredRect, m_rect.blo);
        const size_t vain = m_firsts.size() + m_seconds.size();
        if (vain > trialsLeft)
            return length - 1;
        trialsLeft -= vain;
    }
    return 0;
}

void BlockCascade::measureReach()
{
    // What the place in hand has in common with the best place on one side of it, as far as the rectangle reaches.
    qint32 withFirst = 0;
    qint32 withSecond = 0;
    const auto pass = [&](size_t k) {
        const SuffixPlace &place = m_places[k];
        qint32 &reach = m_reach[k];
        if (place.inFirst()) {
            const qint32 room = m_rect.ahi - place.first();
            reach = std::max(reach, std::min(withSecond, room));
            withFirst = std::max(withFirst, room);
        } else {
            const qint32 room = m_rect.bhi - place.second();
            reach = std::max(reach, std::min(withFirst, room));
            withSecond = std::max(withSecond, room);
        }
        m_longest = std::max(m_longest, reach);
    };
    const auto keep = [&](qint32 common) {
        withFirst = std::min(withFirst, common);
        withSecond = std::min(withSecond, common);
    };
    for (size_t k = 0; k < m_places.size(); ++k) {
        keep(m_places[k].common);
        pass(k);
    }
    withFirst = withSecond = 0;
    for (size_t k = m_places.size(); k-- > 0;) {
        pass(k);
        keep(m_places[k].common);
    }
}

qint32 BlockCascade::groupOf(qint32 place) noexcept
{
    while (m_groups[size_t(place)] != place) {
        qint32 &parent = m_groups[size_t(place)];
        parent = m_groups[size_t(parent)];
        place = parent;
    }
    return place;
}

void BlockCascade::takeBlocks(qint32 length)
{
    m_next.resize(m_seconds.size());
    for (size_t k = m_seconds.size(); k-- > 0;) {
        qint32 &head = m_head[size_t(groupOf(m_seconds[k].place))];
        m_next[k] = head;
        head = qint32(k);
    }
    MatchRect gap;
    for (const Candidate &first : m_firsts) {
        if (first.position >= gap.ahi)
            gap = m_chain.gapAt(first.position, m_rect);
        if (first.position < gap.alo || gap.isEmpty() || gap.ahi - first.position < length)
            continue;
        qint32 &head = m_head[size_t(groupOf(first.place))];
        while (head != none && m_seconds[size_t(head)].position < gap.blo)
            head = m_next[size_t(head)];
        if (head == none || gap.bhi - m_seconds[size_t(head)].position < length)
            continue;
        const MatchBlock block{first.position, m_seconds[size_t(head)].position, length};
        m_chain.take(block);
        m_mirrored.take({block.b - m_rect.blo, block.a - m_rect.alo, length});
        gap.alo = block.a + length;
        gap.blo = block.b + length;
    }
    for (const Candidate &second : m_seconds)
        m_head[size_t(groupOf(second.place))] = none;
}

} // namespace velmora
