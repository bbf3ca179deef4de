#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace velmora {

/// Appends `utf8` to `units`, a byte-order mark at its start included. Precondition: it is well-formed.
void appendUtf16(std::string_view utf8, std::u16string &units);

/// The UTF-16 units of a line: `utf16` itself.
[[nodiscard]] inline std::u16string_view utf16Units(std::u16string_view utf16, std::u16string &) noexcept
{
    return utf16;
}
/// The UTF-16 units of a line, written to `buffer`.
[[nodiscard]] inline std::u16string_view utf16Units(std::string_view utf8, std::u16string &buffer)
{
    buffer.clear();
    appendUtf16(utf8, buffer);
    return buffer;
}

/// True when every unit is below 0x80.
[[nodiscard]] bool isAscii(std::string_view text) noexcept;

[[nodiscard]] inline QString toQString(std::u16string_view units)
{
    return QString(reinterpret_cast<const QChar *>(units.data()), qsizetype(units.size()));
}

} // namespace velmora
