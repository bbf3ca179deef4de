#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

namespace velmora {

/// The hash of a window of `length` values that moves along a sequence, after Karp and Rabin.
class RollingHash {
public:
    explicit RollingHash(qint32 length) noexcept
    {
        for (qint32 step = 0; step < length; ++step)
            m_leading *= multiplier;
    }

    void push(qint32 value) noexcept { m_hash = m_hash * multiplier + mixed(value); }
    void replace(qint32 oldest, qint32 value) noexcept
    {
        m_hash = m_hash * multiplier + mixed(value) - mixed(oldest) * m_leading;
    }

    [[nodiscard]] quint64 value() const noexcept
    {
        quint64 hash = (m_hash ^ (m_hash >> 32)) * 0xD6E8'FEB8'6659'FD93;
        return hash ^ (hash >> 29);
    }

private:
    static constexpr quint64 multiplier = 0x9E37'79B9'7F4A'7C15;

    /// Neighbouring values must not differ by a constant, or windows of rising values collide.
    static quint64 mixed(qint32 value) noexcept
    {
        const quint64 hash = (quint64(value) + 1) * 0xD6E8'FEB8'6659'FD93;
        return hash ^ (hash >> 32);
    }

    quint64 m_leading = 1;
    quint64 m_hash = 0;
};

/// Windows of a sequence, taken every so many elements and found by their hash.
class GramIndex {
public:
    static constexpr qint32 none = -1;

    /// Indexes the windows of `length` values at 0, step, 2·step, … of `sequence`.
    void build(std::span<const qint32> sequence, qint32 length, qint32 step);

    /// The first indexed window, by number, that may have this hash; `none` when there is none.
    [[nodiscard]] qint32 find(quint64 hash) const noexcept { return m_slots[slotOf(hash)].window; }
    /// The next window that may have the hash of `window`.
    [[nodiscard]] qint32 next(qint32 window) const noexcept { return m_next[size_t(window)]; }

private:
    /// The slot of a hash, or the free one where it would go.
    [[nodiscard]] size_t slotOf(quint64 hash) const noexcept
    {
        auto at = size_t(hash >> m_shift);
        while (m_slots[at].window != none && m_slots[at].tag != quint32(hash))
            at = (at + 1) & (m_slots.size() - 1);
        return at;
    }

    struct Slot {
        quint32 tag = 0;
        qint32 window = none;
    };

    std::vector<Slot> m_slots;
    std::vector<qint32> m_next;
    int m_shift = 0;
};

} // namespace velmora
