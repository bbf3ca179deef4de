#pragma once

#include "text/syntax/syntax_definition.h"

#include <QChar>

namespace velmora {

// What the scanner asks of single characters, again and again.

[[nodiscard]] inline bool isBlank(QChar unit)
{
    return unit == u' ' || unit == u'\t' || unit == u'\f' || unit == u'\v' || unit == QChar(0xA0);
}

[[nodiscard]] inline bool isAscii(QChar unit)
{
    return unit.unicode() < 128;
}

[[nodiscard]] inline bool has(const AsciiSet &set, QChar unit)
{
    return isAscii(unit) && set.test(unit.unicode());
}

} // namespace velmora
