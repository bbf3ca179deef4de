#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace velmora {

/// Bytes that the hashes of this family take at a time.
inline constexpr std::size_t digestBlock = 64;

using Md5State = std::array<std::uint32_t, 4>;
using Sha1State = std::array<std::uint32_t, 5>;
using Sha256State = std::array<std::uint32_t, 8>;

// Each takes a state through `count` blocks that lie one behind the other at `blocks`.

/// RFC 1321.
void md5Rounds(Md5State &state, const unsigned char *blocks, std::size_t count) noexcept;
/// FIPS 180-4, with the processor's instructions for it where `hasShaInstructions`.
void sha1Rounds(Sha1State &state, const unsigned char *blocks, std::size_t count) noexcept;
void sha256Rounds(Sha256State &state, const unsigned char *blocks, std::size_t count) noexcept;

/// The same without these instructions.
void sha1PlainRounds(Sha1State &state, const unsigned char *blocks, std::size_t count) noexcept;
void sha256PlainRounds(Sha256State &state, const unsigned char *blocks, std::size_t count) noexcept;

/// The constants of SHA-256: the first 32 bits of the fractional parts of the cube roots of the first 64 primes.
extern const std::array<std::uint32_t, 64> sha256Constants;

} // namespace velmora
