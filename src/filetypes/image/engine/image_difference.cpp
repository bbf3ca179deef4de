#include "filetypes/image/engine/image_difference.h"

#include "core/crew.h"
#include "filetypes/image/engine/anti_aliasing.h"
#include "filetypes/image/engine/difference_cells.h"
#include "filetypes/image/engine/pixel_rows.h"
#include "platform/memory_hint.h"

#include <algorithm>
#include <atomic>
#include <bit>

namespace velmora {

namespace {

/// Compares two pictures in bands of rows, each by one thread.
class MapRun {
public:
    MapRun(const QImage &left, const QImage &right, const DifferenceOptions &options)
        : m_left(left),
          m_right(right),
          m_options(options),
          m_common(left.size().boundedTo(right.size())),
          m_image(left.size().expandedTo(right.size()), QImage::Format_ARGB32),
          m_cells(m_image.size())
    {
        if (m_image.isNull())
            return;
        expectFullUse(m_image.bits(), std::size_t(m_image.sizeInBytes()));
        m_pixels = reinterpret_cast<QRgb *>(m_image.bits());
        m_stride = m_image.bytesPerLine() / qsizetype(sizeof(QRgb));
    }

    DifferenceMap run(const CancelFlag &cancel, Progress &progress)
    {
        if (m_image.isNull())
            return {};
        const int bands = (m_image.height() + bandHeight - 1) / bandHeight;
        std::atomic<int> next = 0;
        const auto work = [&](int worker) {
            Counts counts;
            for (int band = next++; band < bands && !cancel.isCancelled(); band = next++) {
                const int end = std::min((band + 1) * bandHeight, m_image.height());
                for (int y = band * bandHeight; y < end; ++y)
                    compareRow(y, counts);
                if (worker == 0)
                    progress.report(0, end, m_image.height());
            }
            m_different += counts.different;
            m_antiAliased += counts.antiAliased;
            int largest = m_largest;
            while (largest < counts.largest && !m_largest.compare_exchange_weak(largest, counts.largest)) {
            }
        };
        runCrew(std::min(crewSize(), bands), work, {});
        return cancel.isCancelled() ? DifferenceMap() : result();
    }

private:
    struct Counts {
        qint64 different = 0;
        qint64 antiAliased = 0;
        int largest = 0;
    };

    /// A multiple of the height of a cell, so that no two threads mark the same one.
    static constexpr int bandHeight = 2 * DifferenceCells::side;

    static const QRgb *row(const QImage &image, int y)
    {
        return reinterpret_cast<const QRgb *>(image.constScanLine(y));
    }

    void compareRow(int y, Counts &counts)
    {
        QRgb *map = m_pixels + y * m_stride;
        const int width = m_image.width();
        const int common = y < m_common.height() ? m_common.width() : 0;
        for (int x = 0; x < common; x += pixelRun) {
            const int count = std::min(pixelRun, common - x);
            RunDifference found =
                compareRun(row(m_left, y) + x, row(m_right, y) + x, map + x, count, m_options.tolerance);
            counts.largest = std::max(counts.largest, found.largest);
            if (found.bits == 0)
                continue;
            if (m_options.ignoresAntiAliasing)
                counts.antiAliased += dropSmoothedEdges(x, y, found.bits, map);
            counts.different += std::popcount(found.bits);
            m_cells.mark(x, y, found.bits);
        }
        if (common < width)
            fillSurplus(y, common, map);
    }

    /// Takes the pixels out of `bits` that look like smoothed edges, and returns how many they are.
    int dropSmoothedEdges(int x, int y, quint32 &bits, QRgb *map) const
    {
        int dropped = 0;
        for (quint32 rest = bits; rest != 0; rest &= rest - 1) {
            const int at = x + std::countr_zero(rest);
            if (!looksAntiAliased(m_left, m_right, at, y) && !looksAntiAliased(m_right, m_left, at, y))
                continue;
            map[at] = mapColour::antiAliased;
            bits &= ~(1U << unsigned(at - x));
            ++dropped;
        }
        return dropped;
    }

    /// What lies in one picture or in none: from `from` to the end of a row.
    void fillSurplus(int y, int from, QRgb *map)
    {
        const int left = y < m_left.height() ? m_left.width() : 0;
        const int right = y < m_right.height() ? m_right.width() : 0;
        const int covered = std::max({left, right, from});
        std::fill(map + from, map + covered, left > right ? mapColour::leftOnly : mapColour::rightOnly);
        std::fill(map + covered, map + m_image.width(), mapColour::neither);
        for (int x = from / pixelRun * pixelRun; x < covered; x += pixelRun) {
            quint32 bits = ~0U;
            if (x < from)
                bits <<= unsigned(from - x);
            if (covered - x < pixelRun)
                bits &= (1U << unsigned(covered - x)) - 1;
            m_cells.mark(x, y, bits);
        }
    }

    [[nodiscard]] static qint64 area(QSize size) { return qint64(size.width()) * size.height(); }

    DifferenceMap result()
    {
        DifferenceMap map;
        map.image = std::move(m_image);
        map.common = area(m_common);
        map.different = m_different;
        map.antiAliased = m_antiAliased;
        map.leftOnly = area(m_left.size()) - map.common;
        map.rightOnly = area(m_right.size()) - map.common;
        map.largestDeviation = m_largest;
        map.regions = m_cells.regions();
        return map;
    }

    const QImage &m_left;
    const QImage &m_right;
    const DifferenceOptions &m_options;
    QSize m_common;
    QImage m_image;
    DifferenceCells m_cells;
    QRgb *m_pixels = nullptr; ///< of the map; asking it for each row would have it look for other owners
    qsizetype m_stride = 0;
    std::atomic<qint64> m_different = 0;
    std::atomic<qint64> m_antiAliased = 0;
    std::atomic<int> m_largest = 0;
};

} // namespace

DifferenceMap differenceMap(const QImage &left, const QImage &right, const DifferenceOptions &options,
                            const CancelFlag &cancel, Progress &progress)
{
    return MapRun(left, right, options).run(cancel, progress);
}

} // namespace velmora
