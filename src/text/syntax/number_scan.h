#pragma once

#include <QStringView>

namespace velmora {

/// The length of the number that `text` begins with, 0 for none: decimal, hexadecimal ("0x"), octal or binary, with
/// fraction, exponent, "_" or `separator` between digits and letters as a suffix or unit. Each character of `signs`
/// begins a number, too, before a hexadecimal digit.
[[nodiscard]] qsizetype numberLength(QStringView text, QStringView signs, QChar separator);

} // namespace velmora
