#include "text/engine/block_sweep.h"

#include "text/engine/block_cascade.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr qint32 none = -1;

/// The least length in common since any earlier place, for lengths given one after the other.
class TrailingMinimum {
public:
    void push(qint32 index, qint32 common)
    {
        while (!m_steps.empty() && m_steps.back().common >= common)
            m_steps.pop_back();
        m_steps.push_back({index, common});
    }
    /// The least of the lengths behind `index`. Precondition: one has been pushed behind it.
    [[nodiscard]] qint32 since(qint32 index) const noexcept
    {
        size_t step = m_steps.size() - 1;
        while (step > 0 && m_steps[step - 1].index > index)
            --step;
        return m_steps[step].common;
    }

private:
    struct Step {
        qint32 index;
        qint32 common;
    };
    std::vector<Step> m_steps; ///< rising in both
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
    sortByPosition(m_firsts, m_byFirst, task.rect.alo, task.rect.ahi);
    sortByPosition(m_seconds, m_bySecond, task.rect.blo, task.rect.bhi);
    linkGroups();
}

void BlockSweep::sortByPosition(std::vector<Candidate> &candidates, std::vector<qint32> &marks, qint32 begin,
                                qint32 end)
{
    if (qint64(candidates.size()) * m_tuning.markShare < end - begin) {
        std::sort(candidates.begin(), candidates.end(),
                  [](const Candidate &x, const Candidate &y) { return x.position < y.position; });
        return;
    }
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
    std::fill(m_byFirst.begin() + task.rect.alo, m_byFirst.begin() + task.rect.ahi, none);
    std::fill(m_bySecond.begin() + task.rect.blo, m_bySecond.begin() + task.rect.bhi, none);
    for (size_t part = 0; part < m_parts.size(); ++part) {
        const MatchRect &rect = m_parts[part].rect;
        std::fill(m_byFirst.begin() + rect.alo, m_byFirst.begin() + rect.ahi, qint32(part));
        std::fill(m_bySecond.begin() + rect.blo, m_bySecond.begin() + rect.bhi, qint32(part));
    }
    m_partOf.resize(task.end - task.begin);
    for (size_t k = task.begin; k < task.end; ++k) {
        const SuffixPlace place = m_places[k];
        const qint32 part = place.inFirst() ? m_byFirst[size_t(place.first())] : m_bySecond[size_t(place.second())];
        m_partOf[k - task.begin] = part;
        if (part != none)
            ++m_parts[size_t(part)].end;
    }
    size_t begin = task.begin;
    for (Task &part : m_parts) {
        const size_t count = part.end;
        part.begin = part.end = begin;
        begin += count;
        part.lopsided = count > (task.end - task.begin) / 4 * 3 ? task.lopsided + 1 : 0;
    }

    TrailingMinimum minimum;
    std::vector<qint32> &lastOfPart = m_groupHead;
    lastOfPart.assign(m_parts.size(), none);
    for (size_t k = task.begin; k < task.end; ++k) {
        // The parts have no longer blocks, so more in common says nothing more.
        const auto index = qint32(k - task.begin);
        minimum.push(index, std::min(m_places[k].common, longest));
        const qint32 part = m_partOf[size_t(index)];
        if (part == none)
            continue;
        qint32 &last = lastOfPart[size_t(part)];
        m_moved[m_parts[size_t(part)].end++] = {m_places[k].position, last == none ? 0 : minimum.since(last)};
        last = index;
    }
    std::copy(m_moved.begin() + qsizetype(task.begin), m_moved.begin() + qsizetype(begin),
              m_places.begin() + qsizetype(task.begin));
    m_tasks.insert(m_tasks.end(), m_parts.begin(), m_parts.end());
}

} // namespace velmora
