#pragma once

#include <QColor>

#include <algorithm>
#include <array>
#include <cmath>

namespace velmora::test {

/// Red, green and blue of a colour as amounts of light.
inline std::array<double, 3> linear(const QColor &colour)
{
    const auto expand = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return {expand(colour.redF()), expand(colour.greenF()), expand(colour.blueF())};
}

/// The contrast ratio of the Web Content Accessibility Guidelines.
inline double contrast(const QColor &a, const QColor &b)
{
    const auto luminance = [](const QColor &colour) {
        const auto v = linear(colour);
        return 0.2126 * v[0] + 0.7152 * v[1] + 0.0722 * v[2] + 0.05;
    };
    const double one = luminance(a);
    const double other = luminance(b);
    return std::max(one, other) / std::min(one, other);
}

} // namespace velmora::test
