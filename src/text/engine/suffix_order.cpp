#include "text/engine/suffix_order.h"

#include "text/engine/suffix_array.h"

#include <algorithm>

namespace velmora {

namespace {

// Each sequence has a separator of its own, so that no common part reaches across one.
constexpr qint32 firstSeparator = 0;
constexpr qint32 secondSeparator = 1;
constexpr qint32 seenInSecond = 1;
constexpr qint32 firstShared = 2;

} // namespace

void SuffixOrder::numberSharedValues(const MatchRect &rect)
{
    m_nextSymbol = firstShared;
    for (qint32 j = rect.blo; j < rect.bhi; ++j)
        m_symbols[size_t(m_input.b[size_t(j)])] = seenInSecond;
    for (qint32 i = rect.alo; i < rect.ahi; ++i) {
        qint32 &symbol = m_symbols[size_t(m_input.a[size_t(i)])];
        if (symbol == seenInSecond)
            symbol = ++m_nextSymbol;
    }
    ++m_nextSymbol;
}

void SuffixOrder::forgetValues(const MatchRect &rect)
{
    for (qint32 j = rect.blo; j < rect.bhi; ++j)
        m_symbols[size_t(m_input.b[size_t(j)])] = 0;
}

void SuffixOrder::append(qint32 value, qint32 position, qint32 separator)
{
    const qint32 symbol = m_symbols[size_t(value)] - 1;
    if (symbol >= firstShared)
        m_text.push_back(symbol);
    else if (m_text.empty() || m_text.back() != separator)
        m_text.push_back(separator);
    else
        return;
    m_positions.push_back(position);
}

std::vector<SuffixPlace> SuffixOrder::of(const MatchRect &rect, CancelPoll &poll)
{
    numberSharedValues(rect);
    m_text.clear();
    m_positions.clear();
    for (qint32 i = rect.alo; i < rect.ahi; ++i)
        append(m_input.a[size_t(i)], i, firstSeparator);
    m_text.push_back(firstSeparator);
    m_positions.push_back(0);
    for (qint32 j = rect.blo; j < rect.bhi; ++j)
        append(m_input.b[size_t(j)], -1 - j, secondSeparator);
    forgetValues(rect);

    const std::vector<qint32> suffixes = suffixArray(m_text, m_nextSymbol, poll);
    if (poll.stopped())
        return {};
    const std::vector<qint32> common = commonPrefixes(m_text, suffixes, poll);
    if (poll.look())
        return {};
    std::vector<SuffixPlace> places;
    places.reserve(suffixes.size());
    for (size_t k = 0; k < suffixes.size(); ++k) {
        const auto start = size_t(suffixes[k]);
        if (m_text[start] >= firstShared)
            places.push_back({m_positions[start], common[k]});
    }
    return places;
}

} // namespace velmora
