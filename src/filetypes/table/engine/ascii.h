#pragma once

#include <string_view>

namespace velmora {

[[nodiscard]] constexpr bool isDigit(char byte) noexcept
{
    return byte >= '0' && byte <= '9';
}

[[nodiscard]] constexpr bool isLetter(char byte) noexcept
{
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

[[nodiscard]] constexpr char lowerCase(char byte) noexcept
{
    return byte >= 'A' && byte <= 'Z' ? char(byte + ('a' - 'A')) : byte;
}

[[nodiscard]] constexpr bool isBlank(char byte) noexcept
{
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

/// Without ASCII white space at both ends.
[[nodiscard]] constexpr std::string_view trimmed(std::string_view text) noexcept
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace velmora
