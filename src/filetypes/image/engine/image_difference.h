#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"

#include <QImage>
#include <QList>
#include <QRect>

namespace velmora {

/// What counts as a difference.
struct DifferenceOptions {
    int tolerance = 0; ///< how far a channel may deviate, 0 to 255
    /// Pixels that look like the smoothed edge of a shape in either picture count apart.
    bool ignoresAntiAliasing = false;

    friend bool operator==(const DifferenceOptions &, const DifferenceOptions &) = default;
};

/// What each position of a difference map is drawn in; equal pixels are the left one's luminance at half brightness.
namespace mapColour {
inline constexpr QRgb different = 0xFFFF0000;
inline constexpr QRgb rightOnly = 0xFF50C850;
inline constexpr QRgb leftOnly = 0xFFFF5050;
inline constexpr QRgb neither = 0xFF000000;
inline constexpr QRgb antiAliased = 0xFFE0B000;
} // namespace mapColour

/// Two pictures compared position by position, laid on each other at their upper left corners.
struct DifferenceMap {
    QImage image;           ///< Format_ARGB32, as wide and high as the larger picture each; null without a picture
    qint64 common = 0;      ///< positions that lie in both
    qint64 different = 0;   ///< of these, those that differ
    qint64 antiAliased = 0; ///< of these, those that would differ and look like smoothed edges; not in `different`
    qint64 leftOnly = 0;
    qint64 rightOnly = 0;
    int largestDeviation = 0; ///< of a channel of a common position; alpha does not count
    /// Where something differs: the bounds of what lies together, from top to bottom, then from left to right.
    QList<QRect> regions;

    [[nodiscard]] qint64 differences() const noexcept { return different + leftOnly + rightOnly; }
    /// Those that lie in either picture.
    [[nodiscard]] qint64 positions() const noexcept { return common + leftOnly + rightOnly; }
};

/// Compares two pictures of Format_ARGB32 (either may be null) on several threads. An empty map when cancelled, or when
/// there is no memory for its image. Progress counts rows.
///
/// A position in both differs when red, green or blue deviate by more than the tolerance; alpha is ignored. Equal ones
/// are grey: (11 R + 16 G + 5 B) / 64 of the left pixel. The test for smoothed edges is that of V. Vysniauskas,
/// "Anti-aliased Pixel and Intensity Slope Detector", 2009.
[[nodiscard]] DifferenceMap differenceMap(const QImage &left, const QImage &right, const DifferenceOptions &options,
                                          const CancelFlag &cancel, Progress &progress);

} // namespace velmora
