#include "filetypes/image/engine/image_levels.h"

#include "core/crew.h"
#include "platform/memory_hint.h"

#include <algorithm>
#include <atomic>

#if defined(__SSE2__) || (defined(_M_X64) && !defined(_M_ARM64EC))
#define VELMORA_VECTORS 1
#include <emmintrin.h>
#endif

namespace velmora {

namespace {

constexpr int smallestLevel = 256; // pixels: what is smaller is shown by scaling it down further

/// The mean of four pixels, channel by channel; two channels are added in one word.
QRgb meanOf(QRgb a, QRgb b, QRgb c, QRgb d)
{
    constexpr QRgb odd = 0x00FF00FF;
    constexpr QRgb half = 0x00020002; // rounds
    const QRgb low = (a & odd) + (b & odd) + (c & odd) + (d & odd) + half;
    const QRgb high = ((a >> 8U) & odd) + ((b >> 8U) & odd) + ((c >> 8U) & odd) + ((d >> 8U) & odd) + half;
    return ((low >> 2U) & odd) | ((high << 6U) & ~odd);
}

/// Half as many pixels as two rows have, `count` of them.
void halveRows(const QRgb *upper, const QRgb *lower, QRgb *half, int count)
{
    int x = 0;
#ifdef VELMORA_VECTORS
    const __m128i zero = _mm_setzero_si128();
    const __m128i rounding = _mm_set1_epi16(2);
    const auto loaded = [](const QRgb *pixels) { return _mm_loadu_si128(reinterpret_cast<const __m128i *>(pixels)); };
    // Two pixels of the half, from two times four.
    const auto means = [&](const QRgb *above, const QRgb *below) {
        const __m128i a = loaded(above);
        const __m128i b = loaded(below);
        const __m128i first = _mm_add_epi16(_mm_unpacklo_epi8(a, zero), _mm_unpacklo_epi8(b, zero));
        const __m128i second = _mm_add_epi16(_mm_unpackhi_epi8(a, zero), _mm_unpackhi_epi8(b, zero));
        const __m128i sum = _mm_add_epi16(_mm_unpacklo_epi64(first, second), _mm_unpackhi_epi64(first, second));
        return _mm_srli_epi16(_mm_add_epi16(sum, rounding), 2);
    };
    for (; x + 4 <= count; x += 4) {
        const __m128i four =
            _mm_packus_epi16(means(upper + 2 * x, lower + 2 * x), means(upper + 2 * x + 4, lower + 2 * x + 4));
        _mm_storeu_si128(reinterpret_cast<__m128i *>(half + x), four);
    }
#endif
    for (; x < count; ++x)
        half[x] = meanOf(upper[2 * x], upper[2 * x + 1], lower[2 * x], lower[2 * x + 1]);
}

} // namespace

QImage halfImage(const QImage &image)
{
    QImage half(std::max(image.width() / 2, 1), std::max(image.height() / 2, 1), image.format());
    if (half.isNull())
        return half;
    const int below = image.height() > 1 ? 1 : 0;
    expectFullUse(half.bits(), std::size_t(half.sizeInBytes()));
    auto *pixels = reinterpret_cast<QRgb *>(half.bits());
    const qsizetype stride = half.bytesPerLine() / qsizetype(sizeof(QRgb));
    constexpr int bandHeight = 64;
    std::atomic<int> next = 0;
    const auto work = [&](int) {
        for (int from = bandHeight * next++; from < half.height(); from = bandHeight * next++) {
            for (int y = from; y < std::min(from + bandHeight, half.height()); ++y) {
                const auto *upper = reinterpret_cast<const QRgb *>(image.constScanLine(2 * y));
                const auto *lower = reinterpret_cast<const QRgb *>(image.constScanLine(2 * y + below));
                QRgb *row = pixels + y * stride;
                if (image.width() > 1)
                    halveRows(upper, lower, row, half.width());
                else
                    *row = meanOf(*upper, *upper, *lower, *lower);
            }
        }
    };
    runCrew(std::min(crewSize(), (half.height() + bandHeight - 1) / bandHeight), work, {});
    return half;
}

ImageLevels::ImageLevels(const QImage &image, bool hasAlpha) : m_levels{image}, m_hasAlpha(hasAlpha)
{
    QImage last = image;
    while (std::max(last.width(), last.height()) > smallestLevel) {
        if (m_levels.size() == 1 && hasAlpha)
            last = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        last = halfImage(last);
        if (last.isNull())
            break;
        m_levels.push_back(last);
    }
}

const QImage &ImageLevels::levelFor(double zoom) const
{
    std::size_t level = 0;
    for (double scale = zoom * 2; scale <= 1 && level + 1 < m_levels.size(); scale *= 2)
        ++level;
    return m_levels[level];
}

} // namespace velmora
