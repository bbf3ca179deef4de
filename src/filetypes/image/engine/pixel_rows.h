#pragma once

#include <QRgb>

#include <algorithm>

namespace velmora {

/// Pixels that are compared at a time: one bit each of a word.
inline constexpr int pixelRun = 32;

/// The grey that equal pixels have in a map.
[[nodiscard]] constexpr QRgb mapGrey(QRgb left) noexcept
{
    const int grey = (11 * qRed(left) + 16 * qGreen(left) + 5 * qBlue(left)) / 64;
    return qRgb(grey, grey, grey);
}

/// The largest deviation of red, green and blue.
[[nodiscard]] constexpr int deviation(QRgb left, QRgb right) noexcept
{
    const auto apart = [](int one, int other) { return one > other ? one - other : other - one; };
    return std::max(
        {apart(qRed(left), qRed(right)), apart(qGreen(left), qGreen(right)), apart(qBlue(left), qBlue(right))});
}

/// What comparing a run came to.
struct RunDifference {
    quint32 bits = 0; ///< bit n: pixel n differs
    int largest = 0;  ///< deviation
};

/// Compares `count` pixels, `pixelRun` at most, and fills as many of `map`.
[[nodiscard]] RunDifference compareRun(const QRgb *left, const QRgb *right, QRgb *map, int count,
                                       int tolerance) noexcept;

/// The same pixel by pixel.
[[nodiscard]] RunDifference compareRunPlainly(const QRgb *left, const QRgb *right, QRgb *map, int count,
                                              int tolerance) noexcept;

} // namespace velmora
