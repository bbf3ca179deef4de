#include "filetypes/image/engine/pixel_rows.h"

#include "filetypes/image/engine/image_difference.h"

#if defined(__SSE2__) || (defined(_M_X64) && !defined(_M_ARM64EC))
#define VELMORA_VECTORS 1
#include <emmintrin.h>
#endif

namespace velmora {

RunDifference compareRunPlainly(const QRgb *left, const QRgb *right, QRgb *map, int count, int tolerance) noexcept
{
    RunDifference found;
    for (int i = 0; i < count; ++i) {
        const int apart = deviation(left[i], right[i]);
        found.largest = std::max(found.largest, apart);
        const bool differs = apart > tolerance;
        found.bits |= quint32(differs) << unsigned(i);
        map[i] = differs ? mapColour::different : mapGrey(left[i]);
    }
    return found;
}

#ifdef VELMORA_VECTORS

namespace {

constexpr int lane = 4; // pixels in a vector

/// The greys of four pixels.
__m128i greys(__m128i pixels)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i weights = _mm_set_epi16(0, 11, 16, 5, 0, 11, 16, 5);
    // Of each pixel two sums: blue with green, and red.
    const __m128 low = _mm_castsi128_ps(_mm_madd_epi16(_mm_unpacklo_epi8(pixels, zero), weights));
    const __m128 high = _mm_castsi128_ps(_mm_madd_epi16(_mm_unpackhi_epi8(pixels, zero), weights));
    const __m128i blueGreen = _mm_castps_si128(_mm_shuffle_ps(low, high, _MM_SHUFFLE(2, 0, 2, 0)));
    const __m128i red = _mm_castps_si128(_mm_shuffle_ps(low, high, _MM_SHUFFLE(3, 1, 3, 1)));
    const __m128i grey = _mm_srli_epi32(_mm_add_epi32(blueGreen, red), 6);
    const __m128i twice = _mm_or_si128(grey, _mm_slli_epi32(grey, 8));
    return _mm_or_si128(_mm_or_si128(twice, _mm_slli_epi32(grey, 16)), _mm_set1_epi32(int(0xFF000000U)));
}

int largestByte(__m128i bytes)
{
    bytes = _mm_max_epu8(bytes, _mm_srli_si128(bytes, 8));
    bytes = _mm_max_epu8(bytes, _mm_srli_si128(bytes, 4));
    const auto last = quint32(_mm_cvtsi128_si32(bytes)); // blue, green, red
    return int(std::max({last & 0xFFU, (last >> 8U) & 0xFFU, (last >> 16U) & 0xFFU}));
}

} // namespace

RunDifference compareRun(const QRgb *left, const QRgb *right, QRgb *map, int count, int tolerance) noexcept
{
    if (count < pixelRun)
        return compareRunPlainly(left, right, map, count, tolerance);
    const __m128i colours = _mm_set1_epi32(0x00FFFFFF);
    const __m128i limit = _mm_set1_epi8(char(tolerance));
    const __m128i red = _mm_set1_epi32(int(mapColour::different));
    const __m128i zero = _mm_setzero_si128();
    __m128i largest = zero;
    quint32 same = 0;
    for (int i = 0; i < pixelRun; i += lane) {
        const __m128i l = _mm_loadu_si128(reinterpret_cast<const __m128i *>(left + i));
        const __m128i r = _mm_loadu_si128(reinterpret_cast<const __m128i *>(right + i));
        const __m128i apart = _mm_and_si128(_mm_sub_epi8(_mm_max_epu8(l, r), _mm_min_epu8(l, r)), colours);
        largest = _mm_max_epu8(largest, apart);
        const __m128i equal = _mm_cmpeq_epi32(_mm_subs_epu8(apart, limit), zero);
        same |= quint32(_mm_movemask_ps(_mm_castsi128_ps(equal))) << unsigned(i);
        const __m128i drawn = _mm_or_si128(_mm_and_si128(equal, greys(l)), _mm_andnot_si128(equal, red));
        _mm_storeu_si128(reinterpret_cast<__m128i *>(map + i), drawn);
    }
    return {~same, largestByte(largest)};
}

#else

RunDifference compareRun(const QRgb *left, const QRgb *right, QRgb *map, int count, int tolerance) noexcept
{
    return compareRunPlainly(left, right, map, count, tolerance);
}

#endif

} // namespace velmora
