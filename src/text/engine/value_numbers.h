#pragma once

#include <QtGlobal>

#include <bit>
#include <vector>

namespace velmora {

/// Numbers arbitrary values 0, 1, 2, … in the order in which they are first added.
class ValueNumbers {
public:
    /// Precondition: no more than `capacity` different values will be added.
    explicit ValueNumbers(size_t capacity)
        : m_shift(63 - std::bit_width(capacity)), m_slots(size_t(1) << (64 - m_shift))
    {}

    /// The number of `value`, which it gets now unless it has one.
    qint32 add(qint32 value)
    {
        Slot &slot = m_slots[slotOf(value)];
        if (slot.number < 0)
            slot = {value, m_count++};
        return slot.number;
    }

    /// The number of `value`, -1 when it has none.
    [[nodiscard]] qint32 find(qint32 value) const noexcept { return m_slots[slotOf(value)].number; }
    [[nodiscard]] qint32 count() const noexcept { return m_count; }

private:
    struct Slot {
        qint32 value = 0;
        qint32 number = -1;
    };

    [[nodiscard]] size_t slotOf(qint32 value) const noexcept
    {
        auto at = size_t((quint64(quint32(value)) * 0x9E37'79B9'7F4A'7C15) >> m_shift);
        while (m_slots[at].number >= 0 && m_slots[at].value != value)
            at = (at + 1) & (m_slots.size() - 1);
        return at;
    }

    int m_shift;
    std::vector<Slot> m_slots;
    qint32 m_count = 0;
};

} // namespace velmora
