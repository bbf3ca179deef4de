#include "core/sha_instructions.h"

// This file is compiled for processors that have the instructions; what is in it runs only after hasShaInstructions().
#if defined(_M_X64) && !defined(_M_ARM64EC)
#define VELMORA_SHA 1
#elif (defined(__x86_64__) || defined(__i386__)) && defined(__SHA__)
#define VELMORA_SHA 1
#endif

#ifdef VELMORA_SHA

#include "core/processor_features.h"

#include <utility>

#include <immintrin.h>

// Source of both: S. Gulley, V. Gopal, K. Yap, W. Feghali, J. Guilford, G. Wolrich, "Intel SHA Extensions", 2013. What
// the instructions leave to the program is in which order four words stand in a register.

namespace velmora {

namespace {

/// Four groups of four words of the message, the oldest in the place where the next one will be.
struct Schedule {
    __m128i groups[4];

    __m128i &operator[](std::size_t group) { return groups[group]; }
};

__m128i loaded(const void *from)
{
    return _mm_loadu_si128(static_cast<const __m128i *>(from));
}

void store(void *to, __m128i value)
{
    _mm_storeu_si128(static_cast<__m128i *>(to), value);
}

template <std::size_t group>
inline void sha1Group(__m128i &abcd, __m128i &e, Schedule &words)
{
    __m128i &word = words[group % 4];
    const __m128i next = group == 0 ? _mm_add_epi32(e, word) : _mm_sha1nexte_epu32(e, word);
    e = abcd;
    abcd = _mm_sha1rnds4_epu32(abcd, next, int(group / 5));
    if constexpr (group < 16)
        word =
            _mm_sha1msg2_epu32(_mm_xor_si128(_mm_sha1msg1_epu32(word, words[(group + 1) % 4]), words[(group + 2) % 4]),
                               words[(group + 3) % 4]);
}

template <std::size_t group>
inline void sha256Group(__m128i &abef, __m128i &cdgh, Schedule &words)
{
    __m128i &word = words[group % 4];
    const __m128i sums = _mm_add_epi32(word, loaded(&sha256Constants[4 * group]));
    cdgh = _mm_sha256rnds2_epu32(cdgh, abef, sums);
    abef = _mm_sha256rnds2_epu32(abef, cdgh, _mm_shuffle_epi32(sums, 0x0E));
    if constexpr (group < 12) {
        const __m128i last = words[(group + 3) % 4];
        const __m128i middle = _mm_alignr_epi8(last, words[(group + 2) % 4], 4);
        word = _mm_sha256msg2_epu32(_mm_add_epi32(_mm_sha256msg1_epu32(word, words[(group + 1) % 4]), middle), last);
    }
}

Schedule wordsOf(const unsigned char *block, __m128i order)
{
    Schedule words;
    for (std::size_t i = 0; i < 4; ++i)
        words[i] = _mm_shuffle_epi8(loaded(block + 16 * i), order);
    return words;
}

} // namespace

bool hasShaInstructions() noexcept
{
    return processorFeatures().shaRounds;
}

void sha1InstructionRounds(Sha1State &state, const unsigned char *blocks, std::size_t count) noexcept
{
    const __m128i order = _mm_set_epi64x(0x0001020304050607, 0x08090A0B0C0D0E0F);
    __m128i abcd = _mm_shuffle_epi32(loaded(state.data()), 0x1B);
    __m128i e = _mm_set_epi32(int(state[4]), 0, 0, 0);
    for (; count > 0; --count, blocks += digestBlock) {
        const __m128i abcdBefore = abcd;
        const __m128i eBefore = e;
        Schedule words = wordsOf(blocks, order);
        [&]<std::size_t... group>(std::index_sequence<group...>)
        {
            (sha1Group<group>(abcd, e, words), ...);
        }
        (std::make_index_sequence<20>());
        e = _mm_sha1nexte_epu32(e, eBefore);
        abcd = _mm_add_epi32(abcd, abcdBefore);
    }
    store(state.data(), _mm_shuffle_epi32(abcd, 0x1B));
    state[4] = std::uint32_t(_mm_extract_epi32(e, 3));
}

void sha256InstructionRounds(Sha256State &state, const unsigned char *blocks, std::size_t count) noexcept
{
    const __m128i order = _mm_set_epi64x(0x0C0D0E0F08090A0B, 0x0405060700010203);
    const __m128i cdab = _mm_shuffle_epi32(loaded(&state[0]), 0xB1);
    const __m128i efgh = _mm_shuffle_epi32(loaded(&state[4]), 0x1B);
    __m128i abef = _mm_alignr_epi8(cdab, efgh, 8);
    __m128i cdgh = _mm_blend_epi16(efgh, cdab, 0xF0);
    for (; count > 0; --count, blocks += digestBlock) {
        const __m128i abefBefore = abef;
        const __m128i cdghBefore = cdgh;
        Schedule words = wordsOf(blocks, order);
        [&]<std::size_t... group>(std::index_sequence<group...>)
        {
            (sha256Group<group>(abef, cdgh, words), ...);
        }
        (std::make_index_sequence<16>());
        abef = _mm_add_epi32(abef, abefBefore);
        cdgh = _mm_add_epi32(cdgh, cdghBefore);
    }
    const __m128i feba = _mm_shuffle_epi32(abef, 0x1B);
    const __m128i dchg = _mm_shuffle_epi32(cdgh, 0xB1);
    store(&state[0], _mm_blend_epi16(feba, dchg, 0xF0));
    store(&state[4], _mm_alignr_epi8(dchg, feba, 8));
}

} // namespace velmora

#else

namespace velmora {

bool hasShaInstructions() noexcept
{
    return false;
}

void sha1InstructionRounds(Sha1State &state, const unsigned char *blocks, std::size_t count) noexcept
{
    sha1PlainRounds(state, blocks, count);
}

void sha256InstructionRounds(Sha256State &state, const unsigned char *blocks, std::size_t count) noexcept
{
    sha256PlainRounds(state, blocks, count);
}

} // namespace velmora

#endif
