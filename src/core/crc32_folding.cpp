#include "core/crc32_folding.h"

#include "core/crc32.h"
#include "core/processor_features.h"

// This file is compiled for processors that have the instructions; what is in it runs only after hasCrc32Folding().
#if defined(_M_X64) && !defined(_M_ARM64EC)
#define VELMORA_FOLDING 1
#elif (defined(__x86_64__) || defined(__i386__)) && defined(__PCLMUL__)
#define VELMORA_FOLDING 1
#endif

#ifdef VELMORA_FOLDING

#include <emmintrin.h>
#include <wmmintrin.h>

namespace velmora {

namespace {

/// Carries `folded` past `distance` bits: what it stands for so far, as a number congruent to it at that place.
/// Source: V. Gopal, E. Ozturk et al., "Fast CRC Computation for Generic Polynomials Using PCLMULQDQ Instruction",
/// 2009.
template <unsigned distance>
__m128i carried(__m128i folded)
{
    const __m128i constants = _mm_set_epi64x(static_cast<long long>(crc32FoldingConstant(distance - 32)),
                                             static_cast<long long>(crc32FoldingConstant(distance + 32)));
    return _mm_xor_si128(_mm_clmulepi64_si128(folded, constants, 0x00), _mm_clmulepi64_si128(folded, constants, 0x11));
}

__m128i loaded(const char *bytes)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes));
}

} // namespace

bool hasCrc32Folding() noexcept
{
    return processorFeatures().carrylessMultiply;
}

quint32 crc32Folding(quint32 state, QByteArrayView bytes)
{
    constexpr qsizetype lane = 16;
    constexpr qsizetype step = 4 * lane;
    if (bytes.size() < step)
        return crc32BitByBit(state, bytes);

    const char *at = bytes.data();
    const char *const end = at + bytes.size();
    __m128i first = _mm_xor_si128(loaded(at), _mm_cvtsi32_si128(static_cast<int>(state)));
    __m128i second = loaded(at + lane);
    __m128i third = loaded(at + 2 * lane);
    __m128i fourth = loaded(at + 3 * lane);
    for (at += step; end - at >= step; at += step) {
        first = _mm_xor_si128(carried<512>(first), loaded(at));
        second = _mm_xor_si128(carried<512>(second), loaded(at + lane));
        third = _mm_xor_si128(carried<512>(third), loaded(at + 2 * lane));
        fourth = _mm_xor_si128(carried<512>(fourth), loaded(at + 3 * lane));
    }
    __m128i folded = _mm_xor_si128(carried<128>(first), second);
    folded = _mm_xor_si128(carried<128>(folded), third);
    folded = _mm_xor_si128(carried<128>(folded), fourth);
    for (; end - at >= lane; at += lane)
        folded = _mm_xor_si128(carried<128>(folded), loaded(at));

    // The 16 bytes left have the remainder of all that came before them; an empty register takes them as any others.
    char rest[lane];
    _mm_storeu_si128(reinterpret_cast<__m128i *>(rest), folded);
    return crc32BitByBit(crc32BitByBit(0, QByteArrayView(rest, lane)), QByteArrayView(at, end - at));
}

} // namespace velmora

#else

namespace velmora {

bool hasCrc32Folding() noexcept
{
    return false;
}

quint32 crc32Folding(quint32 state, QByteArrayView bytes)
{
    return crc32BitByBit(state, bytes);
}

} // namespace velmora

#endif
