#include "core/visible_name.h"

#include "core/hidden_characters.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr char32_t zeroWidthNonJoiner = 0x200C;
constexpr char32_t zeroWidthJoiner = 0x200D;

bool isPlain(QChar unit)
{
    return unit.unicode() >= 0x20 && unit.unicode() < 0x7F;
}

/// Letters of Latin, Greek and Cyrillic never join, so that a joiner beside them is there to deceive.
bool isJoinerAtWork(char32_t character, char32_t before)
{
    return (character == zeroWidthJoiner || character == zeroWidthNonJoiner) && before >= 0x590;
}

bool mustBeNamed(char32_t character, char32_t before)
{
    if (character == U'\t' || QChar::isSurrogate(character))
        return true;
    return hiddenCharacterCells(character) > 0 && !isJoinerAtWork(character, before);
}

/// A byte of a Unix name that is no text stands in strings as an unpaired surrogate: see `nameFromNative`.
QString codeOf(char32_t character)
{
    const bool isByte = character >= 0xDC80 && character <= 0xDCFF;
    return isByte ? QStringLiteral("x%1").arg(uint(character - 0xDC00), 2, 16).toUpper().replace(u'X', u'x')
                  : hiddenCharacterCode(character);
}

} // namespace

QString visibleName(QStringView name)
{
    if (std::all_of(name.begin(), name.end(), isPlain))
        return name.toString();
    QString visible;
    visible.reserve(name.size());
    char32_t before = 0;
    for (qsizetype unit = 0; unit < name.size(); ++unit) {
        const bool isPair =
            name.at(unit).isHighSurrogate() && unit + 1 < name.size() && name.at(unit + 1).isLowSurrogate();
        const char32_t character =
            isPair ? QChar::surrogateToUcs4(name.at(unit), name.at(unit + 1)) : name.at(unit).unicode();
        if (mustBeNamed(character, before))
            visible += QLatin1Char('[') + codeOf(character) + QLatin1Char(']');
        else
            visible += name.mid(unit, isPair ? 2 : 1);
        unit += isPair;
        before = character;
    }
    return visible;
}

} // namespace velmora
