#pragma once

#include "text/engine/prefetch.h"

#include <QtGlobal>

#include <array>
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
    /// Asks for the memory that `find` will look at.
    void expect(quint64 hash) const noexcept { prefetch(&m_slots[size_t(hash >> m_shift)]); }
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

/// Looks one window of a sequence after the other up in an index, each some steps after it has asked for the memory.
class GramLookup {
public:
    /// Both must outlive this. Precondition: 1 <= length <= sequence.size().
    GramLookup(std::span<const qint32> sequence, qint32 length, const GramIndex &index)
        : m_sequence(sequence), m_length(size_t(length)), m_index(index), m_rolling(length)
    {
        for (const qint32 value : sequence.first(m_length))
            m_rolling.push(value);
        expect(0);
        for (size_t window = 1; window < windowsAhead; ++window)
            roll(window);
    }

    /// What `GramIndex::find` says of the first window of the sequence, then of the second one and so on. Precondition:
    /// there is a further window.
    [[nodiscard]] qint32 next() noexcept
    {
        const quint64 hash = m_hashes[m_next % windowsAhead];
        roll(m_next + windowsAhead);
        ++m_next;
        return m_index.find(hash);
    }

private:
    static constexpr size_t windowsAhead = 16;

    /// Moves on to `window`, which follows the one before, if the sequence reaches so far.
    void roll(size_t window) noexcept
    {
        if (window + m_length > m_sequence.size())
            return;
        m_rolling.replace(m_sequence[window - 1], m_sequence[window + m_length - 1]);
        expect(window);
    }
    void expect(size_t window) noexcept
    {
        m_hashes[window % windowsAhead] = m_rolling.value();
        m_index.expect(m_rolling.value());
    }

    std::span<const qint32> m_sequence;
    size_t m_length;
    const GramIndex &m_index;
    RollingHash m_rolling;
    std::array<quint64, windowsAhead> m_hashes{}; ///< of the next windows, each at its number modulo their count
    size_t m_next = 0;
};

} // namespace velmora
