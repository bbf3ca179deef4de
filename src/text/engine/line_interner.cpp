#include "text/engine/line_interner.h"

#include <algorithm>
#include <bit>

#if defined(__SSE2__) || defined(_M_X64)
#include <xmmintrin.h>
#define VELMORA_PREFETCH(address) _mm_prefetch(reinterpret_cast<const char *>(address), _MM_HINT_T0)
#else
#define VELMORA_PREFETCH(address) static_cast<void>(address)
#endif

namespace velmora {

namespace {

/// A hash table from keys to their numbers, with linear probing. The keys themselves stay where they are: the table
/// remembers the line that a number was given out for.
template <typename Source>
class KeyTable {
public:
    using Side = NormalizedSide<Source>;

    KeyTable(const Side &left, const Side &right) : m_left(left), m_right(right), m_slots(initialSlots) {}

    std::vector<qint32> numbersOf(const Side &side, CancelPoll &poll)
    {
        std::vector<qint32> numbers;
        numbers.reserve(size_t(side.count()));
        for (qint32 index = 0; index < side.count() && !poll.stop(32); ++index) {
            // Most steps wait for memory; asking some lines ahead overlaps these waits.
            if (index + linesAhead < side.count())
                VELMORA_PREFETCH(&m_slots[slotOf(side.hash(index + linesAhead))]);
            numbers.push_back(numberOf(side, index));
        }
        return numbers;
    }

    [[nodiscard]] qint32 count() const noexcept { return qint32(m_firstLines.size()); }

private:
    struct Slot {
        quint32 tag = 0;
        qint32 number = none;
    };

    static constexpr qint32 none = -1;
    static constexpr qint32 linesAhead = 12;
    static constexpr size_t initialSlots = 4096;

    [[nodiscard]] size_t slotOf(quint64 hash) const noexcept { return size_t(hash >> 32) & (m_slots.size() - 1); }

    qint32 numberOf(const Side &side, qint32 index)
    {
        const quint64 hash = side.hash(index);
        size_t at = slotOf(hash);
        for (; m_slots[at].number != none; at = (at + 1) & (m_slots.size() - 1)) {
            if (m_slots[at].tag == quint32(hash) && firstKey(m_slots[at].number) == side.key(index))
                return m_slots[at].number;
        }
        const qint32 number = count();
        m_slots[at] = {quint32(hash), number};
        m_firstLines.push_back(&side == &m_left ? index : -1 - index);
        // As many different lines are to be expected in the rest of the side as in what has been seen of it.
        if (m_firstLines.size() * 4 > m_slots.size() * 3)
            grow(m_firstLines.size() * size_t(side.count()) / size_t(index + 1));
        return number;
    }

    [[nodiscard]] typename Side::View firstKey(qint32 number) const noexcept
    {
        const qint32 line = m_firstLines[size_t(number)];
        return line >= 0 ? m_left.key(line) : m_right.key(-1 - line);
    }

    [[nodiscard]] quint64 firstHash(qint32 number) const noexcept
    {
        const qint32 line = m_firstLines[size_t(number)];
        return line >= 0 ? m_left.hash(line) : m_right.hash(-1 - line);
    }

    void grow(size_t expected)
    {
        m_slots.assign(std::max(m_slots.size() * 2, std::bit_ceil(expected + expected / 2)), Slot());
        for (qint32 number = 0; number < count(); ++number) {
            const quint64 hash = firstHash(number);
            if (number + linesAhead < count())
                VELMORA_PREFETCH(&m_slots[slotOf(firstHash(number + linesAhead))]);
            size_t at = slotOf(hash);
            while (m_slots[at].number != none)
                at = (at + 1) & (m_slots.size() - 1);
            m_slots[at] = {quint32(hash), number};
        }
    }

    const Side &m_left;
    const Side &m_right;
    std::vector<Slot> m_slots;
    /// By number, the first line that has it: its index on the left side, or -1 - its index on the right.
    std::vector<qint32> m_firstLines;
};

} // namespace

template <typename Source>
InternedLines internLines(const NormalizedSide<Source> &left, const NormalizedSide<Source> &right, CancelPoll &poll)
{
    KeyTable<Source> table(left, right);
    InternedLines lines;
    lines.left = table.numbersOf(left, poll);
    lines.right = table.numbersOf(right, poll);
    lines.count = table.count();
    return lines;
}

template InternedLines internLines(const NormalizedSide<Utf8Lines> &, const NormalizedSide<Utf8Lines> &, CancelPoll &);
template InternedLines internLines(const NormalizedSide<Utf16Lines> &, const NormalizedSide<Utf16Lines> &,
                                   CancelPoll &);

} // namespace velmora
