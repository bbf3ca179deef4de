#pragma once

#include <QtGlobal>

#include <cstring>
#include <string_view>

#if defined(_MSC_VER) && defined(_M_X64)
#include <intrin.h>
#endif

namespace velmora {

/// Hashes lines with a secret of its own, so that no text can be made whose lines all collide.
///
/// Multiplies 16 bytes at a time to 128 bits and folds these, at last to 32 bits, which every line of a text has a
/// place for; not for anything that is stored.
class LineHash {
public:
    /// Takes its secret from the system's random numbers.
    LineHash();

    template <typename Unit>
    [[nodiscard]] quint32 operator()(std::basic_string_view<Unit> line) const noexcept
    {
        return ofBytes(reinterpret_cast<const unsigned char *>(line.data()), line.size() * sizeof(Unit));
    }

private:
    [[nodiscard]] quint32 ofBytes(const unsigned char *bytes, size_t size) const noexcept
    {
        quint64 hash = m_start ^ quint64(size);
        quint64 first = 0;
        quint64 last = 0;
        if (size > 16) {
            const unsigned char *const end = bytes + size;
            for (; end - bytes > 16; bytes += 16)
                hash = folded(word(bytes) ^ m_secret, word(bytes + 8) ^ hash);
            first = word(end - 16);
            last = word(end - 8);
        } else if (size >= 8) {
            first = word(bytes);
            last = word(bytes + size - 8);
        } else if (size >= 4) {
            first = halfWord(bytes);
            last = halfWord(bytes + size - 4);
        } else if (size > 0) {
            first = quint64(bytes[0]) << 16 | quint64(bytes[size / 2]) << 8 | bytes[size - 1];
        }
        hash = folded(first ^ m_secret, last ^ hash);
        return quint32(folded(hash ^ m_secret, 0xD6E8'FEB8'6659'FD93) >> 32);
    }

    static quint64 word(const unsigned char *bytes) noexcept
    {
        quint64 value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }
    static quint64 halfWord(const unsigned char *bytes) noexcept
    {
        quint32 value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }

    /// The upper and the lower half of the product, exclusive-or.
    static quint64 folded(quint64 x, quint64 y) noexcept
    {
#if defined(__SIZEOF_INT128__)
        __extension__ using Product = unsigned __int128;
        const Product product = Product(x) * y;
        return quint64(product) ^ quint64(product >> 64);
#elif defined(_MSC_VER) && defined(_M_X64)
        quint64 upper;
        const quint64 lower = _umul128(x, y, &upper);
        return lower ^ upper;
#else
        const quint64 low = (x & 0xFFFF'FFFF) * (y & 0xFFFF'FFFF);
        const quint64 cross = (x >> 32) * (y & 0xFFFF'FFFF) + (low >> 32);
        const quint64 other = (x & 0xFFFF'FFFF) * (y >> 32) + (cross & 0xFFFF'FFFF);
        const quint64 upper = (x >> 32) * (y >> 32) + (cross >> 32) + (other >> 32);
        return (x * y) ^ upper;
#endif
    }

    quint64 m_start;
    quint64 m_secret;
};

} // namespace velmora
