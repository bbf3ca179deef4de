#include "text/engine/gap_pairing.h"

#include "text/engine/line_similarity.h"
#include "text/engine/utf16_units.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr qint32 none = -1;
/// The search is bounded by this many further lines whatever the skew tolerance.
constexpr qint32 widestSkewSearch = 512;
/// So few candidates are compared one by one.
constexpr qint32 directCandidates = 8;

/// Whether the similarity of two lines, of which one at least is not empty, reaches `threshold`.
template <typename Unit>
bool reaches(std::basic_string_view<Unit> left, std::basic_string_view<Unit> right, double threshold) noexcept
{
    // What they share is never more than the shorter one.
    const size_t shorter = std::min(left.size(), right.size());
    const size_t longer = std::max(left.size(), right.size());
    if (double(shorter) / double(longer) < threshold)
        return false;
    return !(lineSimilarity(left, right) < threshold);
}

} // namespace

template <typename Source>
GapPairing<Source>::GapPairing(const Side &left, const Side &right, const AlignParams &params, QList<AlignedRow> &rows,
                               CancelPoll &poll)
    : m_left(left),
      m_right(right),
      m_threshold(params.threshold),
      m_skew(std::max(params.skewTolerance, 0)),
      m_width(std::max<qint64>(params.lookahead, std::min<qint64>(m_skew, widestSkewSearch))),
      m_rows(rows),
      m_ascii(left.isAscii() && right.isAscii()),
      m_poll(poll)
{}

template <typename Source>
void GapPairing<Source>::fill(qint32 i, qint32 leftEnd, qint32 j, qint32 rightEnd, qint64 offset)
{
    const auto removed = [this](qint32 left) { m_rows.append({Removed, left + 1, -1}); };
    const auto added = [this](qint32 right) { m_rows.append({Added, -1, right + 1}); };

    // A similarity of 1 takes equal keys, which a gap has not.
    const bool pairing = !(m_threshold >= 1.0);
    while (i < leftEnd && j < rightEnd && !m_poll.stop()) {
        const qint32 partner = pairing ? findPartner(i, j, rightEnd, offset) : none;
        if (partner == none) {
            removed(i++);
            added(j++);
            continue;
        }
        while (j < partner)
            added(j++);
        m_rows.append({Modified, i + 1, j + 1});
        ++i;
        ++j;
    }
    while (j < rightEnd)
        added(j++);
    while (i < leftEnd)
        removed(i++);
}

template <typename Source>
qint32 GapPairing<Source>::findPartner(qint32 i, qint32 j, qint32 rightEnd, qint64 offset)
{
    // The pairing may drift so far from the anchor; of this range the lines from the cursor on are candidates.
    const qint64 middle = i + offset;
    const auto from = qint32(std::clamp<qint64>(middle - m_skew, j, rightEnd));
    const auto to = qint32(std::min<qint64>({middle + m_skew + 1, rightEnd, qint64(j) + 1 + m_width}));
    if (from >= to)
        return none;
    const View left = m_left.key(i);
    if (isSimilar(left, m_right.key(from)))
        return from;
    if (to - from > directCandidates)
        return findByMarks(left, from + 1, to);
    for (qint32 c = from + 1; c < to; ++c) {
        if (isSimilar(left, m_right.key(c)))
            return c;
    }
    return none;
}

template <typename Source>
qint32 GapPairing<Source>::findByMarks(View left, qint32 from, qint32 to)
{
    // Lines paired at once have not been looked at, nor have those of an anchor between two gaps.
    if (from > m_window.end())
        m_window.reset(from);
    m_window.dropBefore(from);
    while (m_window.end() < to)
        m_window.append(marksOf(m_right.key(m_window.end())));

    const auto length = inUnits(left, m_leftUnits, [](auto units) { return qint64(units.size()); });
    const qint64 units = unitsToShare(length);
    if (units > length || length == 0)
        return none;
    const LineMarks marks = marksOf(left);
    if (m_poll.stop((to - from) / 4))
        return none;
    for (qint32 c = m_window.find(marks, units, from, to); c < to; c = m_window.find(marks, units, c + 1, to)) {
        if (isSimilar(left, m_right.key(c)))
            return c;
    }
    return none;
}

template <typename Source>
template <typename Use>
auto GapPairing<Source>::inUnits(View line, std::u16string &buffer, Use use) const
{
    if (m_ascii)
        return use(line);
    return use(utf16Units(line, buffer));
}

template <typename Source>
bool GapPairing<Source>::isSimilar(View left, View right)
{
    if (m_poll.stop(qint64(std::min(left.size(), right.size()) / 8)))
        return false;
    if (m_ascii)
        return reaches(left, right, m_threshold);
    return reaches(utf16Units(left, m_leftUnits), utf16Units(right, m_rightUnits), m_threshold);
}

template <typename Source>
LineMarks GapPairing<Source>::marksOf(View line)
{
    return inUnits(line, m_rightUnits, [](auto units) { return LineMarks(units); });
}

template <typename Source>
qint64 GapPairing<Source>::unitsToShare(qint64 length) const noexcept
{
    // The least number that passes the test as the test is made, in floating point.
    auto units = qint64(m_threshold * double(length));
    while (units > 0 && !(double(units - 1) / double(length) < m_threshold))
        --units;
    while (double(units) / double(length) < m_threshold)
        ++units;
    return units;
}

template class GapPairing<Utf8Lines>;
template class GapPairing<Utf16Lines>;

} // namespace velmora
