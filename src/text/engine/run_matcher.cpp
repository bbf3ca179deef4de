#include "text/engine/run_matcher.h"

#include "text/engine/gram_index.h"
#include "text/engine/interruptible_sort.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr qint32 none = -1;

/// What it costs to come upon a window, in compared elements.
constexpr qint32 stepsPerFind = 8;

/// Heaps give out their largest element, which has to be the block to take first.
constexpr auto takenLater = [](const MatchBlock &x, const MatchBlock &y) noexcept { return y.precedes(x); };
constexpr auto takenEarlier = [](const MatchBlock &x, const MatchBlock &y) noexcept { return x.precedes(y); };

} // namespace

RunMatcher::RunMatcher(const MatchInput &input, const MatchTuning &tuning, BlockChain &chain, CancelPoll &poll)
    : m_input(input),
      m_tuning(tuning),
      m_chain(chain),
      m_poll(poll),
      m_byValue(size_t(input.alphabet), 0),
      m_nextPlace(std::make_unique_for_overwrite<qint32[]>(input.b.size()))
{}

bool RunMatcher::takeAll(const MatchRect &rect)
{
    if (!pairsAreFew(rect))
        return false;
    m_runs.clear();
    listAllRuns(rect);
    sortByLength();
    take(rect, 1);
    return true;
}

bool RunMatcher::takeLong(const MatchRect &rect, qint32 minimum)
{
    m_runs.clear();
    if (!listLongRuns(rect, minimum))
        return false;
    sortInterruptibly(m_runs, takenEarlier, m_poll);
    take(rect, minimum);
    return true;
}

bool RunMatcher::pairsAreFew(const MatchRect &rect)
{
    for (qint32 j = rect.blo; j < rect.bhi; ++j)
        ++m_byValue[size_t(m_input.b[size_t(j)])];
    const qint64 limit = m_tuning.pairsPerElement * rect.size();
    qint64 pairs = 0;
    for (qint32 i = rect.alo; i < rect.ahi && pairs <= limit; ++i)
        pairs += m_byValue[size_t(m_input.a[size_t(i)])];
    for (qint32 j = rect.blo; j < rect.bhi; ++j)
        m_byValue[size_t(m_input.b[size_t(j)])] = 0;
    return pairs <= limit;
}

qint32 RunMatcher::extendForwards(qint32 i, qint32 j, const MatchRect &rect) const noexcept
{
    const qint32 longest = std::min(rect.ahi - i, rect.bhi - j);
    qint32 length = 0;
    while (length < longest && m_input.equal(i + length, j + length))
        ++length;
    return length;
}

void RunMatcher::listAllRuns(const MatchRect &rect)
{
    // Places are kept plus one, so that the table stays zero between the calls.
    for (qint32 j = rect.bhi; j-- > rect.blo;) {
        qint32 &first = m_byValue[size_t(m_input.b[size_t(j)])];
        m_nextPlace[size_t(j)] = first - 1;
        first = j + 1;
    }
    for (qint32 i = rect.alo; i < rect.ahi && !m_poll.stop(); ++i) {
        for (qint32 j = m_byValue[size_t(m_input.a[size_t(i)])] - 1; j != none; j = m_nextPlace[size_t(j)]) {
            if (i > rect.alo && j > rect.blo && m_input.equal(i - 1, j - 1))
                continue;
            const qint32 length = extendForwards(i, j, rect);
            m_runs.push_back({i, j, length});
            if (m_poll.stop(length))
                break;
        }
    }
    for (qint32 j = rect.blo; j < rect.bhi; ++j)
        m_byValue[size_t(m_input.b[size_t(j)])] = 0;
}

bool RunMatcher::listLongRuns(const MatchRect &rect, qint32 minimum)
{
    // A run of the minimum length holds `step` windows in a row, so one of those that the index has.
    const qint32 window = (minimum + 1) / 2;
    const qint32 step = minimum - window + 1;
    if (rect.width() < minimum || rect.height() < minimum)
        return true;
    GramIndex index;
    index.build(m_input.b.subspan(size_t(rect.blo), size_t(rect.height())), window, step);
    GramLookup lookup(m_input.a.subspan(size_t(rect.alo), size_t(rect.width())), window, index);

    qint64 stepsLeft = m_tuning.stepsPerElement * rect.size();
    for (qint32 i = rect.alo; i + window <= rect.ahi; ++i) {
        if (m_poll.stop())
            return true;
        for (qint32 found = lookup.next(); found != GramIndex::none; found = index.next(found)) {
            const qint64 steps = stepsPerFind + listRunThrough(i, rect.blo + found * step, rect, minimum, step);
            stepsLeft -= steps;
            if (stepsLeft < 0)
                return false;
            if (m_poll.stop(steps))
                return true;
        }
    }
    return true;
}

qint64 RunMatcher::listRunThrough(qint32 i, qint32 j, const MatchRect &rect, qint32 minimum, qint32 step)
{
    // Seen from the first indexed window of a run only: any other has one a step before it in the run.
    const qint32 room = std::min({step, i - rect.alo, j - rect.blo});
    qint32 back = 0;
    while (back < room && m_input.equal(i - back - 1, j - back - 1))
        ++back;
    if (back == step)
        return back;
    const qint32 length = back + extendForwards(i, j, rect);
    if (length >= minimum)
        m_runs.push_back({i - back, j - back, length});
    return length;
}

void RunMatcher::sortByLength()
{
    // They are in order but for their lengths, and these are mostly small.
    qint32 longest = 0;
    for (const MatchBlock &run : m_runs)
        longest = std::max(longest, run.length);
    if (m_runs.size() < 32 || size_t(longest) > m_runs.size()) {
        sortInterruptibly(m_runs, takenEarlier, m_poll);
        return;
    }
    m_lengthStarts.assign(size_t(longest) + 1, 0);
    for (const MatchBlock &run : m_runs)
        ++m_lengthStarts[size_t(longest - run.length) + 1];
    for (size_t step = 1; step < m_lengthStarts.size(); ++step)
        m_lengthStarts[step] += m_lengthStarts[step - 1];
    m_sortedRuns.resize(m_runs.size());
    for (const MatchBlock &run : m_runs)
        m_sortedRuns[size_t(m_lengthStarts[size_t(longest - run.length)]++)] = run;
    m_runs.swap(m_sortedRuns);
}

void RunMatcher::take(const MatchRect &rect, qint32 minimum)
{
    if (m_poll.stopped())
        return;
    m_cutRuns.clear();
    size_t next = 0;
    while (next < m_runs.size() || !m_cutRuns.empty()) {
        if (m_poll.stop(8))
            return;
        MatchBlock run;
        if (m_cutRuns.empty() || (next < m_runs.size() && m_runs[next].precedes(m_cutRuns.front()))) {
            run = m_runs[next++];
        } else {
            run = m_cutRuns.front();
            std::pop_heap(m_cutRuns.begin(), m_cutRuns.end(), takenLater);
            m_cutRuns.pop_back();
        }
        bool whole = false;
        m_chain.forEachPiece(run, rect, [&](const MatchBlock &piece) {
            whole = piece == run;
            if (whole || piece.length < minimum)
                return;
            m_cutRuns.push_back(piece);
            std::push_heap(m_cutRuns.begin(), m_cutRuns.end(), takenLater);
        });
        if (whole)
            m_chain.take(run);
    }
}

} // namespace velmora
