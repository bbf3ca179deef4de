#include "session/list/row_ground.h"

#include "session/diff_colours.h"
#include "session/theme.h"

#include <QStyleOptionViewItem>

#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

/// Relative luminance (WCAG 2.1).
double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

} // namespace

QColor rowGround(const QStyleOptionViewItem &option, const QColor &base)
{
    if (!option.state.testFlag(QStyle::State_Selected))
        return base;
    return blended(diffColour(DiffColour::Accent), base, option.state.testFlag(QStyle::State_Active) ? 0.24 : 0.14);
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, brighter] = std::minmax({luminance(one), luminance(other)});
    return (brighter + 0.05) / (darker + 0.05);
}

QColor readableInk(const QColor &ink, const QColor &ground)
{
    constexpr double least = 4.5; // for text of the usual size
    constexpr int steps = 8;
    QColor mixed = ink;
    for (int k = 1; k <= steps && contrast(mixed, ground) < least; ++k)
        mixed = blended(diffColour(DiffColour::Text), ink, double(k) / steps);
    return mixed;
}

} // namespace velmora
