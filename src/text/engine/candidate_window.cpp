#include "text/engine/candidate_window.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cstring>

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

constexpr size_t longestMarked = size_t(LineMarks::lengths.back());

constexpr auto stepOfLength = [] {
    std::array<quint8, longestMarked + 1> steps{};
    for (size_t step = 0; step < LineMarks::lengths.size(); ++step) {
        for (auto length = size_t(LineMarks::lengths[step]); length <= longestMarked; ++length)
            steps[length] = quint8(step);
    }
    return steps;
}();

/// Eight bytes as a number, whose lowest byte is the first of them.
quint64 wordAt(const unsigned char *bytes) noexcept
{
    return qFromLittleEndian<quint64>(bytes);
}

quint64 stirred(quint64 hash, quint64 word) noexcept
{
    const quint64 product = (hash ^ word) * 0x9E37'79B9'7F4A'7C15;
    return product ^ (product >> 32);
}

/// One bit goes for telling a mark from `absent`.
quint16 toMark(quint64 hash) noexcept
{
    return quint16(hash >> 16 | 1);
}

/// Fills in the marks for the first `count` lengths. `wordOf(k)` gives the k-th eight bytes from the end in question,
/// `part(word, bytes)` leaves of such a word the bytes nearest to that end.
template <typename WordOf, typename Part>
void fillMarks(std::array<quint16, LineMarks::lengths.size()> &marks, size_t count, size_t unitSize, WordOf wordOf,
               Part part) noexcept
{
    quint64 hash = 0;
    size_t words = 0;
    for (size_t step = 0; step < count; ++step) {
        const size_t bytes = size_t(LineMarks::lengths[step]) * unitSize;
        for (; (words + 1) * 8 <= bytes; ++words)
            hash = stirred(hash, wordOf(words));
        const size_t rest = bytes - words * 8;
        // The length goes in as well: the bytes left out are zeros, which the line may have, too.
        marks[step] = toMark(stirred(hash + bytes, rest == 0 ? 0 : part(wordOf(words), rest)));
    }
}

} // namespace

template <typename Unit>
LineMarks::LineMarks(std::basic_string_view<Unit> line) noexcept
{
    // Each end of the line, so that whole words can be read from it.
    constexpr size_t room = longestMarked * sizeof(Unit);
    std::array<unsigned char, room> head{};
    std::array<unsigned char, room> tail{};
    const size_t units = std::min(line.size(), longestMarked);
    if (units == 0)
        return;
    const size_t bytes = units * sizeof(Unit);
    std::memcpy(head.data(), line.data(), bytes);
    std::memcpy(tail.data() + room - bytes, line.data() + line.size() - units, bytes);

    const size_t count = stepOfLength[units] + size_t(1);
    fillMarks(
        starts, count, sizeof(Unit), [&head](size_t k) { return wordAt(head.data() + k * 8); },
        [](quint64 word, size_t kept) { return word & ((quint64(1) << (kept * 8)) - 1); });
    fillMarks(
        ends, count, sizeof(Unit), [&tail](size_t k) { return wordAt(tail.data() + tail.size() - (k + 1) * 8); },
        [](quint64 word, size_t kept) { return word >> ((8 - kept) * 8); });
}

template LineMarks::LineMarks(std::string_view) noexcept;
template LineMarks::LineMarks(std::u16string_view) noexcept;

size_t LineMarks::step(qint64 length) noexcept
{
    return stepOfLength[std::min(size_t(length), longestMarked)];
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
