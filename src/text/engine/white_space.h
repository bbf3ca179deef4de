#pragma once

#include <QChar>

#include <string_view>

namespace velmora {

// White space at either end of a text, of which the caller knows that it is not empty: how many units the one
// white-space character there has, 0 when there is none. All white space lies in the basic plane, so in UTF-16 it is
// one unit each, in UTF-8 up to three.

[[nodiscard]] inline bool isAsciiSpace(quint32 unit) noexcept
{
    return unit == ' ' || unit - '\t' <= quint32('\r' - '\t');
}

[[nodiscard]] inline size_t spaceAtStart(std::u16string_view text) noexcept
{
    return QChar::isSpace(text.front()) ? 1 : 0;
}

[[nodiscard]] inline size_t spaceAtEnd(std::u16string_view text) noexcept
{
    return QChar::isSpace(text.back()) ? 1 : 0;
}

/// False for the bytes with which no white space beyond ASCII starts in UTF-8: that lies in U+0080 to U+00BF and in
/// U+1000 to U+3FFF.
[[nodiscard]] inline bool mayStartWideSpace(quint32 byte) noexcept
{
    return byte == 0xC2 || byte - 0xE1 <= 2;
}

/// Precondition: `text` starts a character of two or three bytes and holds the whole of it.
[[nodiscard]] inline size_t wideSpaceAtStart(std::string_view text) noexcept
{
    const auto byte = [text](size_t at) { return quint32(static_cast<unsigned char>(text[at])); };
    if (!mayStartWideSpace(byte(0)))
        return 0;
    if (byte(0) < 0xE0)
        return QChar::isSpace((byte(0) & 0x1F) << 6 | (byte(1) & 0x3F)) ? 2 : 0;
    return QChar::isSpace((byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F)) ? 3 : 0;
}

[[nodiscard]] inline size_t spaceAtStart(std::string_view text) noexcept
{
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80)
        return isAsciiSpace(lead) ? 1 : 0;
    return lead >= 0xC0 && lead < 0xF0 ? wideSpaceAtStart(text) : 0;
}

[[nodiscard]] inline size_t spaceAtEnd(std::string_view text) noexcept
{
    const auto fromEnd = [text](size_t at) { return static_cast<unsigned char>(text[text.size() - at]); };
    if (fromEnd(1) < 0x80)
        return isAsciiSpace(fromEnd(1)) ? 1 : 0;
    for (size_t length = 2; length <= 3 && length <= text.size(); ++length) {
        if (fromEnd(length) >= 0xC0)
            return wideSpaceAtStart(text.substr(text.size() - length)) == length ? length : 0;
    }
    return 0;
}

} // namespace velmora
