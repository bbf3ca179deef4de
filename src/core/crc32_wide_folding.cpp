#include "core/crc32_folding.h"

// This file is compiled for processors that have the instructions; what is in it runs only after hasCrc32WideFolding().
#if defined(__VPCLMULQDQ__) && defined(__AVX512F__)

#include "core/processor_features.h"

#include <immintrin.h>

namespace velmora {

namespace {

/// As in `crc32Folding`, for four numbers at a time.
template <unsigned distance>
__m512i carried(__m512i folded)
{
    constexpr auto low = static_cast<long long>(crc32FoldingConstant(distance + 32));
    constexpr auto high = static_cast<long long>(crc32FoldingConstant(distance - 32));
    const __m512i constants = _mm512_set_epi64(high, low, high, low, high, low, high, low);
    return _mm512_xor_si512(_mm512_clmulepi64_epi128(folded, constants, 0x00),
                            _mm512_clmulepi64_epi128(folded, constants, 0x11));
}

__m512i loaded(const char *bytes)
{
    return _mm512_loadu_si512(bytes);
}

} // namespace

bool hasCrc32WideFolding() noexcept
{
    return processorFeatures().wideMultiply && hasCrc32Folding();
}

quint32 crc32WideFolding(quint32 state, QByteArrayView bytes)
{
    constexpr qsizetype lane = 64;
    constexpr qsizetype step = 4 * lane;
    if (bytes.size() < step)
        return crc32Folding(state, bytes);

    const char *at = bytes.data();
    const char *const end = at + bytes.size();
    __m512i first = _mm512_xor_si512(loaded(at), _mm512_zextsi128_si512(_mm_cvtsi32_si128(static_cast<int>(state))));
    __m512i second = loaded(at + lane);
    __m512i third = loaded(at + 2 * lane);
    __m512i fourth = loaded(at + 3 * lane);
    for (at += step; end - at >= step; at += step) {
        first = _mm512_xor_si512(carried<2048>(first), loaded(at));
        second = _mm512_xor_si512(carried<2048>(second), loaded(at + lane));
        third = _mm512_xor_si512(carried<2048>(third), loaded(at + 2 * lane));
        fourth = _mm512_xor_si512(carried<2048>(fourth), loaded(at + 3 * lane));
    }
    __m512i folded = _mm512_xor_si512(carried<512>(first), second);
    folded = _mm512_xor_si512(carried<512>(folded), third);
    folded = _mm512_xor_si512(carried<512>(folded), fourth);
    for (; end - at >= lane; at += lane)
        folded = _mm512_xor_si512(carried<512>(folded), loaded(at));

    char rest[lane];
    _mm512_storeu_si512(rest, folded);
    return crc32Folding(crc32Folding(0, QByteArrayView(rest, lane)), QByteArrayView(at, end - at));
}

} // namespace velmora

#else

namespace velmora {

bool hasCrc32WideFolding() noexcept
{
    return false;
}

quint32 crc32WideFolding(quint32 state, QByteArrayView bytes)
{
    return crc32Folding(state, bytes);
}

} // namespace velmora

#endif
