#include "text/engine/line_interner.h"

#include "text/engine/prefetch.h"

#include <algorithm>
#include <bit>

namespace velmora {

namespace {

/// A hash table from keys to their numbers, with linear probing. The keys themselves stay where they are: the table
/// remembers the line that a number was given out for.
template <typename Source>
class KeyTable {
public:
    using Side = NormalizedSide<Source>;

    KeyTable(const Side &left, const Side &right) : m_left(left), m_right(right), m_slots(initialSlots) {}

    /// Writes the number of each key of `side` in the place of its hash: a long list of short lines weighs more than
    /// its text.
    std::vector<qint32> numbersOf(const Side &side, std::vector<qint32> hashes, CancelPoll &poll)
    {
        const auto count = qint32(hashes.size());
        for (qint32 index = 0; index < count; ++index) {
            if (poll.stop(32)) {
                hashes.resize(size_t(index));
                break;
            }
            // Most steps wait for memory; asking some lines ahead overlaps these waits.
            if (index + linesAhead < count)
                prefetch(&m_slots[slotOf(quint32(hashes[size_t(index + linesAhead)]))]);
            qint32 &value = hashes[size_t(index)];
            value = numberOf(side, index, quint32(value));
        }
        return hashes;
    }

    [[nodiscard]] qint32 count() const noexcept { return qint32(m_firsts.size()); }

private:
    struct Slot {
        quint32 hash = 0;
        qint32 number = none;
    };
    /// The first line that has a number: its index on the left side, or -1 - its index on the right.
    struct First {
        qint32 line = 0;
        quint32 hash = 0;
    };

    static constexpr qint32 none = -1;
    static constexpr qint32 linesAhead = 12;
    static constexpr size_t initialSlots = 4096;

    [[nodiscard]] size_t slotOf(quint32 hash) const noexcept { return hash & (m_slots.size() - 1); }

    qint32 numberOf(const Side &side, qint32 index, quint32 hash)
    {
        size_t at = slotOf(hash);
        for (; m_slots[at].number != none; at = (at + 1) & (m_slots.size() - 1)) {
            if (m_slots[at].hash == hash && firstKey(m_slots[at].number) == side.key(index))
                return m_slots[at].number;
        }
        const qint32 number = count();
        m_slots[at] = {hash, number};
        m_firsts.push_back({&side == &m_left ? index : -1 - index, hash});
        // As many different lines are to be expected in the rest of the side as in what has been seen of it.
        if (m_firsts.size() * 4 > m_slots.size() * 3)
            grow(m_firsts.size() * size_t(side.count()) / size_t(index + 1));
        return number;
    }

    [[nodiscard]] typename Side::View firstKey(qint32 number) const noexcept
    {
        const qint32 line = m_firsts[size_t(number)].line;
        return line >= 0 ? m_left.key(line) : m_right.key(-1 - line);
    }

    void grow(size_t expected)
    {
        m_slots.assign(std::max(m_slots.size() * 2, std::bit_ceil(expected + expected / 2)), Slot());
        for (qint32 number = 0; number < count(); ++number) {
            if (number + linesAhead < count())
                prefetch(&m_slots[slotOf(m_firsts[size_t(number + linesAhead)].hash)]);
            const quint32 hash = m_firsts[size_t(number)].hash;
            size_t at = slotOf(hash);
            while (m_slots[at].number != none)
                at = (at + 1) & (m_slots.size() - 1);
            m_slots[at] = {hash, number};
        }
    }

    const Side &m_left;
    const Side &m_right;
    std::vector<Slot> m_slots;
    std::vector<First> m_firsts; ///< by number
};

} // namespace

template <typename Source>
InternedLines internLines(NormalizedSide<Source> &left, NormalizedSide<Source> &right, CancelPoll &poll)
{
    KeyTable<Source> table(left, right);
    InternedLines lines;
    lines.left = table.numbersOf(left, left.takeHashes(), poll);
    lines.right = table.numbersOf(right, right.takeHashes(), poll);
    lines.count = table.count();
    return lines;
}

template InternedLines internLines(NormalizedSide<Utf8Lines> &, NormalizedSide<Utf8Lines> &, CancelPoll &);
template InternedLines internLines(NormalizedSide<Utf16Lines> &, NormalizedSide<Utf16Lines> &, CancelPoll &);

} // namespace velmora
