#include "text/result/side_description.h"

#include "session/translate.h"

#include <QLocale>

#include <algorithm>

namespace velmora {

namespace {

// Decoding a longer line with each step of the caret would be felt.
constexpr qsizetype longestCounted = 100'000; // bytes

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

QString describePlace(const DiffDocument *document, const TextCaret &caret)
{
    const qsizetype row = caret.position.row;
    if (!document || row >= document->rowCount())
        return {};
    const QLocale locale;
    const qint32 line = document->lineNumber(row, caret.pane);
    if (line < 1)
        return Velmora::tr("No line here");
    const DiffDocument::Cell cell = document->cell(row, caret.pane);
    qsizetype column = caret.position.unit;
    if (qsizetype(cell.source->bytes(cell.line).size()) <= longestCounted) {
        const QString text = cell.source->text(cell.line).left(column);
        column -= std::count_if(text.begin(), text.end(), [](QChar unit) { return unit.isLowSurrogate(); });
    }
    return Velmora::tr("Line %1, column %2").arg(locale.toString(line), locale.toString(column + 1));
}

QString lossOfSaving(const LoadedSide &loaded)
{
    if (loaded.text.binary || loaded.text.tooLarge)
        return Velmora::tr("This side holds bytes that no text has and is not edited here");
    if (loaded.text.undecodable > 0)
        return Velmora::tr("This side holds bytes that its encoding does not know: saving would lose them");
    return {};
}

QString leftOutRemark(const QStringList &expressions)
{
    return Velmora::tr("Too slow and left out of this comparison, unimportant text: %1")
        .arg(expressions.join(QStringLiteral(" · ")));
}

QString slownessRemark(const CompareRemarks &remarks)
{
    if (!remarks.expressionsLeftOut.isEmpty())
        return leftOutRemark(remarks.expressionsLeftOut);
    return Velmora::tr("An expression of the unimportant text is too slow for %1 lines, which count as important")
        .arg(remarks.expressionsGivenUp);
}

} // namespace velmora
