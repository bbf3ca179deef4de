#pragma once

#include <algorithm>
#include <string_view>

namespace velmora {

/// True when the lines say something: when they have a letter or a digit. Letters beyond ASCII are taken by their
/// bytes, which are no signs of a programming language.
[[nodiscard]] inline bool isTelling(std::string_view lines) noexcept
{
    return std::ranges::any_of(lines, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || (c & 0x80) != 0;
    });
}

} // namespace velmora
