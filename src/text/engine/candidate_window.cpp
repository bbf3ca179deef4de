#include "text/engine/candidate_window.h"

#include <algorithm>
#include <bit>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define VELMORA_ENGINE_SSE2 1
#else
#define VELMORA_ENGINE_SSE2 0
#endif

namespace velmora {

namespace {

/// Lines that are looked at together. Every vector has so many unused entries at its end.
constexpr size_t lanes = 8;
/// Used-up slots from which on the rest is moved to the front.
constexpr size_t mostDropped = 2048;

quint32 unitValue(char unit) noexcept
{
    return static_cast<unsigned char>(unit);
}

quint32 unitValue(char16_t unit) noexcept
{
    return unit;
}

quint32 stirred(quint32 hash, quint32 unit) noexcept
{
    return (hash ^ unit) * 0x9E37'79B1u;
}

/// The upper half of the hash is the better one; one bit goes for telling it from `absent`.
quint16 toMark(quint32 hash) noexcept
{
    return quint16((hash ^ (hash >> 13)) >> 8 | 1);
}

} // namespace

template <typename Unit>
LineMarks::LineMarks(std::basic_string_view<Unit> line) noexcept
{
    const auto size = qint32(std::min<size_t>(line.size(), size_t(lengths.back())));
    quint32 start = 0x2545'F491;
    quint32 end = start;
    qint32 at = 0;
    for (size_t step = 0; step < lengths.size() && lengths[step] <= size; ++step) {
        for (; at < lengths[step]; ++at) {
            start = stirred(start, unitValue(line[size_t(at)]));
            end = stirred(end, unitValue(line[line.size() - 1 - size_t(at)]));
        }
        starts[step] = toMark(start);
        ends[step] = toMark(end);
    }
}

template LineMarks::LineMarks(std::string_view) noexcept;
template LineMarks::LineMarks(std::u16string_view) noexcept;

size_t LineMarks::step(qint64 length) noexcept
{
    return size_t(std::upper_bound(lengths.begin(), lengths.end(), length) - lengths.begin()) - 1;
}

void CandidateWindow::reset(qint32 first)
{
    m_first = first;
    m_count = 0;
    m_dropped = 0;
    for (size_t step = 0; step < m_starts.size(); ++step) {
        m_starts[step].assign(lanes, LineMarks::absent);
        m_ends[step].assign(lanes, LineMarks::absent);
    }
}

void CandidateWindow::append(const LineMarks &marks)
{
    for (size_t step = 0; step < m_starts.size(); ++step) {
        *(m_starts[step].end() - lanes) = marks.starts[step];
        *(m_ends[step].end() - lanes) = marks.ends[step];
        m_starts[step].push_back(LineMarks::absent);
        m_ends[step].push_back(LineMarks::absent);
    }
    ++m_count;
}

void CandidateWindow::dropBefore(qint32 index)
{
    if (index <= m_first)
        return;
    m_dropped += size_t(index - m_first);
    m_count -= index - m_first;
    m_first = index;
    if (m_dropped < mostDropped)
        return;
    for (size_t step = 0; step < m_starts.size(); ++step) {
        m_starts[step].erase(m_starts[step].begin(), m_starts[step].begin() + qsizetype(m_dropped));
        m_ends[step].erase(m_ends[step].begin(), m_ends[step].begin() + qsizetype(m_dropped));
    }
    m_dropped = 0;
}

quint32 CandidateWindow::matches(std::span<const Condition> conditions, size_t slot) noexcept
{
#if VELMORA_ENGINE_SSE2
    const auto load = [slot](const quint16 *marks) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i *>(marks + slot));
    };
    quint32 found = ~quint32(0);
    for (const Condition &condition : conditions) {
        const __m128i starts = _mm_cmpeq_epi16(load(condition.starts), _mm_set1_epi16(qint16(condition.start)));
        const __m128i ends = _mm_cmpeq_epi16(load(condition.ends), _mm_set1_epi16(qint16(condition.end)));
        // Two bits for each line; one of them will do.
        found &= quint32(_mm_movemask_epi8(_mm_or_si128(starts, ends))) & 0x5555;
        if (found == 0)
            break;
    }
    return found;
#else
    quint32 found = 0;
    for (size_t lane = 0; lane < lanes; ++lane) {
        const bool all = std::all_of(conditions.begin(), conditions.end(), [&](const Condition &condition) {
            return condition.starts[slot + lane] == condition.start || condition.ends[slot + lane] == condition.end;
        });
        found |= quint32(all) << (2 * lane);
    }
    return found;
#endif
}

qint32 CandidateWindow::find(const LineMarks &marks, qint64 units, qint32 from, qint32 to) const noexcept
{
    // Together at least `units` means for any x: a start of x units or an end of units - x + 1. The middle one sorts
    // out most lines; the others those that share much at one end, but not enough.
    std::array<Condition, 5> conditions;
    size_t count = 0;
    for (const qint64 start : {(units + 1) / 2, (3 * units + 3) / 4, (units + 3) / 4, units, qint64(1)}) {
        const size_t startStep = LineMarks::step(start);
        const size_t endStep = LineMarks::step(units - start + 1);
        conditions[count++] = {m_starts[startStep].data() + m_dropped, m_ends[endStep].data() + m_dropped,
                               marks.starts[startStep], marks.ends[endStep]};
    }
    for (qint32 line = from; line < to; line += qint32(lanes)) {
        const quint32 found = matches(conditions, size_t(line - m_first));
        if (found != 0)
            return std::min(line + std::countr_zero(found) / 2, to);
    }
    return to;
}

} // namespace velmora
