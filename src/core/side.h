#pragma once

#include <QtGlobal>

namespace velmora {

/// One of the two things that a comparison compares.
enum class Side : quint8 { Left, Right };

[[nodiscard]] constexpr Side otherSide(Side side) noexcept
{
    return side == Side::Left ? Side::Right : Side::Left;
}

} // namespace velmora
