#include "text/engine/gram_index.h"

#include <algorithm>
#include <bit>

namespace velmora {

void GramIndex::build(std::span<const qint32> sequence, qint32 length, qint32 step)
{
    const auto size = qint32(sequence.size());
    const qint32 windows = size < length ? 0 : (size - length) / step + 1;
    const int bits = std::bit_width(size_t(windows)) + 1;
    m_shift = 64 - bits;
    m_slots.assign(size_t(1) << bits, Slot{});
    m_next.resize(size_t(windows));

    // From the last window to the first, so that equal ones are found in rising order.
    for (qint32 window = windows; window-- > 0;) {
        RollingHash rolling(length);
        for (const qint32 value : sequence.subspan(size_t(window) * size_t(step), size_t(length)))
            rolling.push(value);
        const quint64 hash = rolling.value();
        Slot &slot = m_slots[slotOf(hash)];
        m_next[size_t(window)] = slot.window;
        slot = {quint32(hash), window};
    }
}

} // namespace velmora
