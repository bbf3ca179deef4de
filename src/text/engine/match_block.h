#pragma once

#include <QtGlobal>

namespace velmora {

/// The part [alo, ahi) of the first sequence against the part [blo, bhi) of the second.
struct MatchRect {
    qint32 alo = 0;
    qint32 ahi = 0;
    qint32 blo = 0;
    qint32 bhi = 0;

    [[nodiscard]] qint32 width() const noexcept { return ahi - alo; }
    [[nodiscard]] qint32 height() const noexcept { return bhi - blo; }
    [[nodiscard]] qint64 size() const noexcept { return qint64(width()) + height(); }
    /// True when no pair can lie in it.
    [[nodiscard]] bool isEmpty() const noexcept { return ahi <= alo || bhi <= blo; }
};

/// A common run: elements a … a+length-1 of the first sequence equal b … b+length-1 of the second.
struct MatchBlock {
    qint32 a = 0;
    qint32 b = 0;
    qint32 length = 0;

    friend bool operator==(const MatchBlock &, const MatchBlock &) = default;

    /// The order in which blocks are taken: the longest first, of these the earliest in the first sequence, then in
    /// the second.
    [[nodiscard]] bool precedes(const MatchBlock &other) const noexcept
    {
        if (length != other.length)
            return length > other.length;
        return a != other.a ? a < other.a : b < other.b;
    }
};

} // namespace velmora
