#include "core/digest_rounds.h"

#include "core/sha_instructions.h"

#include <QtEndian>

#include <bit>
#include <utility>

namespace velmora {

alignas(16) const std::array<std::uint32_t, 64> sha256Constants{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

namespace {

using Word = std::uint32_t;

constexpr std::array<Word, 64> md5Constants{
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};
constexpr std::array<std::array<int, 4>, 4> md5Turns{
    {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}}};

// The rounds are unrolled by templates, so that every word keeps its register.

template <std::size_t round>
inline void md5Round(Md5State &v, const std::array<Word, 16> &words)
{
    constexpr std::size_t quarter = round / 16;
    constexpr std::size_t word = std::array{round, 5 * round + 1, 3 * round + 5, 7 * round}[quarter] % 16;
    Word &a = v[(64 - round) % 4];
    const Word b = v[(65 - round) % 4];
    const Word c = v[(66 - round) % 4];
    const Word d = v[(67 - round) % 4];
    a += words[word] + md5Constants[round];
    if constexpr (quarter == 0) {
        a += d ^ (b & (c ^ d));
    } else if constexpr (quarter == 1) {
        // b comes last of all: as a sum instead of "or" its part is one step shorter.
        a += c & ~d;
        a += b & d;
    } else if constexpr (quarter == 2) {
        a += (c ^ d) ^ b;
    } else {
        a += c ^ (b | ~d);
    }
    a = std::rotl(a, md5Turns[quarter][round % 4]) + b;
}

template <std::size_t round>
inline void sha1Round(Sha1State &v, std::array<Word, 16> &words)
{
    Word &word = words[round % 16];
    if constexpr (round >= 16)
        word = std::rotl(words[(round + 13) % 16] ^ words[(round + 8) % 16] ^ words[(round + 2) % 16] ^ word, 1);
    const Word a = v[(80 - round) % 5];
    Word &b = v[(81 - round) % 5];
    const Word c = v[(82 - round) % 5];
    const Word d = v[(83 - round) % 5];
    Word &e = v[(84 - round) % 5];
    e += std::rotl(a, 5) + word;
    if constexpr (round < 20)
        e += (d ^ (b & (c ^ d))) + 0x5a827999U;
    else if constexpr (round < 40)
        e += (b ^ c ^ d) + 0x6ed9eba1U;
    else if constexpr (round < 60)
        e += ((b & c) | (d & (b | c))) + 0x8f1bbcdcU;
    else
        e += (b ^ c ^ d) + 0xca62c1d6U;
    b = std::rotl(b, 30);
}

template <std::size_t round>
inline void sha256Round(Sha256State &v, std::array<Word, 16> &words)
{
    Word &word = words[round % 16];
    if constexpr (round >= 16) {
        const Word early = words[(round + 1) % 16];
        const Word late = words[(round + 14) % 16];
        word += (std::rotr(early, 7) ^ std::rotr(early, 18) ^ (early >> 3U)) + words[(round + 9) % 16] +
                (std::rotr(late, 17) ^ std::rotr(late, 19) ^ (late >> 10U));
    }
    const auto at = [&v](std::size_t place) -> Word & { return v[(64 + place - round) % 8]; };
    const Word a = at(0);
    const Word e = at(4);
    const Word first = at(7) + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                       (at(6) ^ (e & (at(5) ^ at(6)))) + sha256Constants[round] + word;
    at(3) += first;
    at(7) = first + (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & at(1)) | (at(2) & (a | at(1))));
}

/// Takes `state` through all blocks: `rounds` on a copy of it and the words of a block, and the sum of both.
template <bool bigEndian, typename State, typename Rounds>
inline void absorb(State &state, const unsigned char *blocks, std::size_t count, Rounds rounds)
{
    for (; count > 0; --count, blocks += digestBlock) {
        std::array<Word, 16> words;
        if constexpr (bigEndian)
            qFromBigEndian<Word>(blocks, qsizetype(words.size()), words.data());
        else
            qFromLittleEndian<Word>(blocks, qsizetype(words.size()), words.data());
        State v = state;
        rounds(v, words);
        for (std::size_t i = 0; i < state.size(); ++i)
            state[i] += v[i];
    }
}

} // namespace

void md5Rounds(Md5State &state, const unsigned char *blocks, std::size_t count) noexcept
{
    absorb<false>(state, blocks, count, [](Md5State &v, const std::array<Word, 16> &words) {
        [&]<std::size_t... round>(std::index_sequence<round...>)
        {
            (md5Round<round>(v, words), ...);
        }
        (std::make_index_sequence<64>());
    });
}

void sha1PlainRounds(Sha1State &state, const unsigned char *blocks, std::size_t count) noexcept
{
    absorb<true>(state, blocks, count, [](Sha1State &v, std::array<Word, 16> &words) {
        [&]<std::size_t... round>(std::index_sequence<round...>)
        {
            (sha1Round<round>(v, words), ...);
        }
        (std::make_index_sequence<80>());
    });
}

void sha256PlainRounds(Sha256State &state, const unsigned char *blocks, std::size_t count) noexcept
{
    absorb<true>(state, blocks, count, [](Sha256State &v, std::array<Word, 16> &words) {
        [&]<std::size_t... round>(std::index_sequence<round...>)
        {
            (sha256Round<round>(v, words), ...);
        }
        (std::make_index_sequence<64>());
    });
}

void sha1Rounds(Sha1State &state, const unsigned char *blocks, std::size_t count) noexcept
{
    hasShaInstructions() ? sha1InstructionRounds(state, blocks, count) : sha1PlainRounds(state, blocks, count);
}

void sha256Rounds(Sha256State &state, const unsigned char *blocks, std::size_t count) noexcept
{
    hasShaInstructions() ? sha256InstructionRounds(state, blocks, count) : sha256PlainRounds(state, blocks, count);
}

} // namespace velmora
