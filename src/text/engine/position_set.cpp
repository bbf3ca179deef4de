#include "text/engine/position_set.h"

#include <bit>

namespace velmora {

namespace {

qint32 highestBit(quint64 word) noexcept
{
    return 63 - std::countl_zero(word);
}

} // namespace

PositionSet::PositionSet(qint32 size)
{
    // One more, so that a search may start at the end.
    auto words = size_t(size) / 64 + 1;
    m_levels.emplace_back(words, 0);
    while (words > 1) {
        words = (words + 63) / 64;
        m_levels.emplace_back(words, 0);
    }
}

void PositionSet::insert(qint32 position)
{
    auto index = size_t(position);
    for (std::vector<quint64> &level : m_levels) {
        quint64 &word = level[index / 64];
        const bool known = word != 0;
        word |= quint64(1) << (index % 64);
        if (known)
            return;
        index /= 64;
    }
}

qint32 PositionSet::atOrBefore(qint32 position) const noexcept
{
    auto index = size_t(position);
    for (size_t level = 0; level < m_levels.size(); ++level) {
        const quint64 found = m_levels[level][index / 64] & (~quint64(0) >> (63 - index % 64));
        if (found != 0) {
            qint32 at = qint32(index / 64 * 64) + highestBit(found);
            while (level > 0)
                at = at * 64 + highestBit(m_levels[--level][size_t(at)]);
            return at;
        }
        index /= 64;
        if (index == 0)
            return -1;
        --index;
    }
    return -1;
}

qint32 PositionSet::atOrAfter(qint32 position) const noexcept
{
    auto index = size_t(position);
    for (size_t level = 0; level < m_levels.size() && index / 64 < m_levels[level].size(); ++level) {
        const quint64 found = m_levels[level][index / 64] & (~quint64(0) << (index % 64));
        if (found != 0) {
            qint32 at = qint32(index / 64 * 64) + std::countr_zero(found);
            while (level > 0)
                at = at * 64 + std::countr_zero(m_levels[--level][size_t(at)]);
            return at;
        }
        index = index / 64 + 1;
    }
    return -1;
}

} // namespace velmora
