#include "text/engine/block_sweep.h"

#include "text/engine/block_cascade.h"

#include <algorithm>
#include <array>
#include <limits>

namespace velmora {

namespace {

constexpr qint32 none = -1;

// Two forms of one thing: given part and length in common of one place after the other, `next` returns the least of the
// lengths since the last place of that part, 0 at its first place.

/// For a handful of parts, as most rectangles have: keeps the least length of each.
class FewMinima {
public:
    static constexpr qint32 parts = 4;

    qint32 next(qint32 part, qint32 common) noexcept
    {
        qint32 least = 0;
        for (qint32 each = 0; each < parts; ++each) {
            const qint32 both = std::min(m_least[size_t(each)], common);
            least = each == part ? both : least;
            m_least[size_t(each)] = each == part ? std::numeric_limits<qint32>::max() : both;
        }
        return least;
    }

private:
    std::array<qint32, parts> m_least{};
};

/// For any number of parts: keeps the last place of each, and the places behind which the least length grows.
class ManyMinima {
public:
    explicit ManyMinima(size_t parts) : m_lastOfPart(parts, none) {}

    qint32 next(qint32 part, qint32 common)
    {
        while (!m_steps.empty() && m_steps.back().common >= common)
            m_steps.pop_back();
        m_steps.push_back({m_place, common});
        qint32 &last = m_lastOfPart[size_t(part)];
        const qint32 least = last == none ? 0 : leastSince(last);
        last = m_place++;
        return least;
    }

private:
    struct Step {
        qint32 place;
        qint32 common;
    };

    [[nodiscard]] qint32 leastSince(qint32 place) const noexcept
    {
        size_t step = m_steps.size() - 1;
        while (step > 0 && m_steps[step - 1].place > place)
            --step;
        return m_steps[step].common;
    }

    std::vector<qint32> m_lastOfPart;
    std::vector<Step> m_steps; ///< rising in both
    qint32 m_place = 0;
};

} // namespace

void BlockSweep::takeAll(const MatchRect &rect)
{
    m_places = m_order.of(rect, m_poll);
    m_moved.resize(m_places.size());
    m_tasks.push_back({rect, 0, m_places.size()});
    while (!m_tasks.empty() && !m_poll.stopped()) {
        const Task task = m_tasks.back();
        m_tasks.pop_back();
        if (m_poll.stop(qint64(task.end - task.begin) * 8))
            break;
        m_parts.clear();
        const bool lopsided = task.lopsided >= m_tuning.lopsidedRounds;
        const qint32 longestLeft = lopsided ? takeCascade(task) : takeLongest(task);
        if (longestLeft > 0)
            distribute(task, longestLeft);
    }
    m_tasks.clear();
}

qint32 BlockSweep::takeLongest(const Task &task)
{
    const qint32 length = longestBlock(task);
    if (length == 0)
        return 0;
    collectCandidates(task, length);
    takeBlocks(task, length);
    return length - 1;
}

qint32 BlockSweep::takeCascade(const Task &task)
{
    const std::span<const SuffixPlace> places = std::span(m_places).subspan(task.begin, task.end - task.begin);
    const qint32 longestLeft = BlockCascade(task.rect, places, m_chain, m_poll).run();
    if (longestLeft > 0)
        m_chain.forEachGap(task.rect, [this](const MatchRect &gap) { addPart(gap); });
    return longestLeft;
}

qint32 BlockSweep::longestBlock(const Task &task) const
{
    // What the place in hand has in common with the best place before it of either sequence, as far as the rectangle
    // reaches.
    qint32 withFirst = 0;
    qint32 withSecond = 0;
    qint32 longest = 0;
    for (size_t k = task.begin; k < task.end; ++k) {
        const SuffixPlace place = m_places[k];
        withFirst = std::min(withFirst, place.common);
        withSecond = std::min(withSecond, place.common);
        if (place.inFirst()) {
            const qint32 room = task.rect.ahi - place.first();
            longest = std::max(longest, std::min(withSecond, room));
            withFirst = std::max(withFirst, room);
        } else {
            const qint32 room = task.rect.bhi - place.second();
            longest = std::max(longest, std::min(withFirst, room));
            withSecond = std::max(withSecond, room);
        }
    }
    return longest;
}

void BlockSweep::collectCandidates(const Task &task, qint32 length)
{
    m_firsts.clear();
    m_seconds.clear();
    m_groups = 0;
    size_t firstsBefore = 0;
    size_t secondsBefore = 0;
    const auto closeGroup = [&] {
        // Places of one sequence alone make no block.
        if (m_firsts.size() > firstsBefore && m_seconds.size() > secondsBefore) {
            ++m_groups;
        } else {
            m_firsts.resize(firstsBefore);
            m_seconds.resize(secondsBefore);
        }
        firstsBefore = m_firsts.size();
        secondsBefore = m_seconds.size();
    };
    for (size_t k = task.begin; k < task.end; ++k) {
        const SuffixPlace place = m_places[k];
        if (place.common < length)
            closeGroup();
        if (place.inFirst()) {
            if (task.rect.ahi - place.first() >= length)
                m_firsts.push_back({place.first(), m_groups});
        } else if (task.rect.bhi - place.second() >= length) {
            m_seconds.push_back({place.second(), m_groups});
        }
    }
    closeGroup();
    sortByPosition(m_firsts, 0, task.rect.alo, task.rect.ahi);
    sortByPosition(m_seconds, m_firstSize, task.rect.blo, task.rect.bhi);
    linkGroups();
}

void BlockSweep::sortByPosition(std::vector<Candidate> &candidates, qint32 firstMark, qint32 begin, qint32 end)
{
    if (qint64(candidates.size()) * m_tuning.markShare < end - begin) {
        std::sort(candidates.begin(), candidates.end(),
                  [](const Candidate &x, const Candidate &y) { return x.position < y.position; });
        return;
    }
    const std::span<qint32> marks = std::span(m_byPlace).subspan(size_t(firstMark));
    std::fill(marks.begin() + begin, marks.begin() + end, none);
    for (const Candidate &candidate : candidates)
        marks[size_t(candidate.position)] = candidate.group;
    size_t next = 0;
    for (qint32 position = begin; position < end; ++position) {
        if (marks[size_t(position)] != none)
            candidates[next++] = {position, marks[size_t(position)]};
    }
}

void BlockSweep::linkGroups()
{
    m_groupHead.assign(size_t(m_groups), none);
    m_groupNext.resize(m_seconds.size());
    for (size_t k = m_seconds.size(); k-- > 0;) {
        qint32 &head = m_groupHead[size_t(m_seconds[k].group)];
        m_groupNext[k] = head;
        head = qint32(k);
    }
}

void BlockSweep::takeBlocks(const Task &task, qint32 length)
{
    MatchRect rest = task.rect;
    for (const Candidate &first : m_firsts) {
        if (first.position < rest.alo)
            continue;
        qint32 &head = m_groupHead[size_t(first.group)];
        while (head != none && m_seconds[size_t(head)].position < rest.blo)
            head = m_groupNext[size_t(head)];
        if (head == none)
            continue;
        const MatchBlock block{first.position, m_seconds[size_t(head)].position, length};
        m_chain.take(block);
        if (length > 1)
            addPart({rest.alo, block.a, rest.blo, block.b});
        rest.alo = block.a + length;
        rest.blo = block.b + length;
    }
    if (length > 1)
        addPart(rest);
}

void BlockSweep::addPart(const MatchRect &rect)
{
    if (!rect.isEmpty() && !m_runs.takeAll(rect))
        m_parts.push_back({rect});
}

void BlockSweep::distribute(const Task &task, qint32 longest)
{
    if (m_parts.empty())
        return;
    const auto lastPart = qint32(m_parts.size());
    const size_t kept = assignParts(task);
    if (lastPart < FewMinima::parts)
        movePlaces(task, longest, FewMinima());
    else
        movePlaces(task, longest, ManyMinima(m_parts.size()));
    std::copy_n(m_moved.begin() + qsizetype(task.begin), kept, m_places.begin() + qsizetype(task.begin));
    m_parts.pop_back();
    m_tasks.insert(m_tasks.end(), m_parts.begin(), m_parts.end());
}

size_t BlockSweep::assignParts(const Task &task)
{
    const auto mark = [this](const MatchRect &rect, qint32 part) {
        std::fill(m_byPlace.begin() + rect.alo, m_byPlace.begin() + rect.ahi, part);
        std::fill(m_byPlace.begin() + m_firstSize + rect.blo, m_byPlace.begin() + m_firstSize + rect.bhi, part);
    };
    // The places of no part go to a last one, so that moving them takes no decision.
    const auto rest = qint32(m_parts.size());
    mark(task.rect, rest);
    for (qint32 part = 0; part < rest; ++part)
        mark(m_parts[size_t(part)].rect, part);
    m_parts.emplace_back();

    const size_t size = task.end - task.begin;
    m_partOf.resize(size);
    for (size_t k = 0; k < size; ++k) {
        const qint32 part = m_byPlace[markOf(m_places[task.begin + k])];
        m_partOf[k] = part;
        ++m_parts[size_t(part)].end;
    }
    size_t begin = task.begin;
    for (Task &part : m_parts) {
        const size_t count = part.end;
        part.begin = part.end = begin;
        begin += count;
        part.lopsided = count > size / 4 * 3 ? task.lopsided + 1 : 0;
    }
    return m_parts.back().begin - task.begin;
}

template <typename Minima>
void BlockSweep::movePlaces(const Task &task, qint32 longest, Minima minima)
{
    for (size_t k = task.begin; k < task.end; ++k) {
        const qint32 part = m_partOf[k - task.begin];
        // The parts have no longer blocks, so more in common says nothing more.
        const qint32 common = minima.next(part, std::min(m_places[k].common, longest));
        m_moved[m_parts[size_t(part)].end++] = {m_places[k].position, common};
    }
}

} // namespace velmora
