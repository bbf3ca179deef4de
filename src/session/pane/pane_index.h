#pragma once

#include "core/side.h"

#include <compare>

namespace velmora {

/// The number of a pane in its view, from 0. Where two panes show the sides of a comparison, the left side is pane 0
/// and the right one pane 1.
class PaneIndex {
public:
    constexpr PaneIndex() noexcept = default;
    constexpr PaneIndex(int number) noexcept : m_number(number) {}
    constexpr PaneIndex(Side side) noexcept : m_number(side == Side::Left ? 0 : 1) {}

    [[nodiscard]] constexpr int number() const noexcept { return m_number; }
    friend constexpr auto operator<=>(const PaneIndex &, const PaneIndex &) = default;

private:
    int m_number = 0;
};

/// The side that a pane of a comparison of two shows.
[[nodiscard]] constexpr Side sideOf(PaneIndex pane) noexcept
{
    return pane == Side::Left ? Side::Left : Side::Right;
}

} // namespace velmora
