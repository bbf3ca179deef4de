#include "filetypes/image/engine/image_levels.h"

#include "core/crew.h"

#include <algorithm>
#include <atomic>

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

} // namespace

QImage halfImage(const QImage &image)
{
    QImage half(std::max(image.width() / 2, 1), std::max(image.height() / 2, 1), image.format());
    if (half.isNull())
        return half;
    const int right = image.width() > 1 ? 1 : 0;
    const int below = image.height() > 1 ? 1 : 0;
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
                for (int x = 0; x < half.width(); ++x)
                    row[x] = meanOf(upper[2 * x], upper[2 * x + right], lower[2 * x], lower[2 * x + right]);
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
