#pragma once

#include <QByteArrayView>

#include <array>
#include <cstdint>

namespace velmora {

/// True when `crc32Folding` may be called on this processor.
[[nodiscard]] bool hasCrc32Folding() noexcept;

/// As `crc32BitByBit`, by carry-less multiplication, 64 bytes at a time. Precondition: hasCrc32Folding().
[[nodiscard]] quint32 crc32Folding(quint32 state, QByteArrayView bytes);

/// True when `crc32WideFolding` may be called on this processor: one with AVX-512 and VPCLMULQDQ.
[[nodiscard]] bool hasCrc32WideFolding() noexcept;

/// As `crc32Folding`, 256 bytes at a time. Precondition: hasCrc32WideFolding().
[[nodiscard]] quint32 crc32WideFolding(quint32 state, QByteArrayView bytes);

/// x to the power `exponent` modulo the CRC polynomial, in the bit order of the reflected form and moved up one place,
/// as the product of two reflected numbers wants it.
[[nodiscard]] constexpr std::uint64_t crc32FoldingConstant(unsigned exponent) noexcept
{
    std::uint32_t power = 0x8000'0000; // x^0
    for (unsigned i = 0; i < exponent; ++i)
        power = (power >> 1U) ^ ((power & 1U) != 0 ? 0xEDB8'8320U : 0U);
    return std::uint64_t(power) << 1U;
}

} // namespace velmora
