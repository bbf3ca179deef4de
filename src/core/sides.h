#pragma once

#include "core/side.h"

#include <array>

namespace velmora {

inline constexpr std::array bothSides{Side::Left, Side::Right};

/// One value for each side.
template <typename T>
struct Sides {
    T left{};
    T right{};

    [[nodiscard]] constexpr const T &operator[](Side side) const noexcept { return side == Side::Left ? left : right; }
    [[nodiscard]] constexpr T &operator[](Side side) noexcept { return side == Side::Left ? left : right; }

    friend bool operator==(const Sides &, const Sides &) = default;
};

} // namespace velmora
