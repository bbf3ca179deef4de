#include "text/syntax/number_scan.h"

namespace velmora {

namespace {

bool isDigit(QChar unit)
{
    return unit >= u'0' && unit <= u'9';
}

bool isHexDigit(QChar unit)
{
    return isDigit(unit) || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}

bool isPart(QChar unit)
{
    return isDigit(unit) || (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
}

/// Whether a point at `at` belongs to the number: not the first of two, and not one before a name.
bool isFraction(QStringView text, qsizetype at)
{
    if (at + 1 >= text.size())
        return true;
    const QChar next = text[at + 1];
    if (isDigit(next))
        return true;
    const bool isSuffix = QStringView(u"fFeElLdD").contains(next) && (at + 2 >= text.size() || !isPart(text[at + 2]));
    return isSuffix || !(isPart(next) || next == u'.');
}

} // namespace

qsizetype numberLength(QStringView text, QStringView signs, QChar separator)
{
    if (text.isEmpty())
        return 0;
    const auto has = [text](qsizetype at, auto test) { return at < text.size() && test(text[at]); };
    if (signs.contains(text[0])) {
        // A sign before a sign, as in "#$0D".
        const qsizetype first = text.size() > 1 && signs.contains(text[1]) ? 2 : 1;
        qsizetype at = first;
        while (has(at, isHexDigit))
            ++at;
        return at > first && !has(at, isPart) ? at : 0;
    }
    if (!isDigit(text[0]) && !(text[0] == u'.' && has(1, isDigit)))
        return 0;
    const bool isHex = text[0] == u'0' && text.size() > 1 && (text[1] == u'x' || text[1] == u'X');
    bool hasPoint = false;
    qsizetype at = 0;
    while (at < text.size()) {
        const QChar unit = text[at];
        const QChar exponent = isHex ? u'p' : u'e';
        if (isPart(unit)) {
            const bool isExponent = unit.toLower() == exponent;
            ++at;
            if (isExponent && at + 1 < text.size() && (text[at] == u'+' || text[at] == u'-') && isDigit(text[at + 1]))
                ++at;
        } else if (unit == u'.' && !hasPoint && isFraction(text, at)) {
            hasPoint = true;
            ++at;
        } else if (!separator.isNull() && unit == separator && has(at + 1, isPart)) {
            ++at;
        } else {
            break;
        }
    }
    return at;
}

} // namespace velmora
