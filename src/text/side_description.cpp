#include "text/side_description.h"

#include "session/translate.h"

namespace velmora {

namespace {

QString describeContent(const LoadedSide &side)
{
    if (side.missing)
        return QStringLiteral("-");
    QStringList parts{lineEndStyleName(side.text.lineEnds)};
    if (side.text.binary)
        parts.append(Velmora::tr("binary"));
    if (side.text.undecodable > 0) {
        parts.append(Velmora::tr("%1 undecodable, first in line %2")
                         .arg(side.text.undecodable)
                         .arg(side.text.firstUndecodableLine + 1));
    }
    return parts.join(QStringLiteral(", "));
}

QString describeEncoding(const LoadedSide &side)
{
    return side.missing ? Velmora::tr("Missing") : side.text.encoding.name();
}

} // namespace

QString describeFormats(const LoadedSide &left, const LoadedSide &right)
{
    return Velmora::tr("Left: %1 [%2] | Right: %3 [%4]")
        .arg(describeEncoding(left), describeContent(left), describeEncoding(right), describeContent(right));
}

QString describeEquality(const LoadedSide &left, const LoadedSide &right)
{
    if (left.text.lines.bytes() != right.text.lines.bytes())
        return Velmora::tr("No differences under the rules of this comparison");
    if (left.text.encoding != right.text.encoding)
        return Velmora::tr("The texts are identical; only their encodings differ");
    return Velmora::tr("The texts are identical");
}

} // namespace velmora
