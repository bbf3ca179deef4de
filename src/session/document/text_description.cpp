#include "session/document/text_description.h"

#include "session/pane/pane_document.h"
#include "session/translate.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace velmora {

namespace {

// Decoding a longer line with each step of the caret would be felt.
constexpr qsizetype longestCounted = 100'000; // bytes

} // namespace

QString describeContent(const LoadedText &loaded)
{
    if (loaded.missing)
        return QStringLiteral("-");
    QStringList parts{lineEndStyleName(loaded.text.lineEnds)};
    if (loaded.text.binary)
        parts.append(Velmora::tr("binary"));
    if (loaded.text.undecodable > 0) {
        parts.append(Velmora::tr("%1 undecodable, first in line %2")
                         .arg(loaded.text.undecodable)
                         .arg(loaded.text.firstUndecodableLine + 1));
    }
    return parts.join(QStringLiteral(", "));
}

QString describeEncoding(const LoadedText &loaded)
{
    return loaded.missing ? Velmora::tr("Missing") : loaded.text.encoding.name();
}

QString describePlace(const PaneDocument *document, const TextCaret &caret)
{
    const qsizetype row = caret.position.row;
    if (!document || row >= document->rowCount())
        return {};
    const QLocale locale;
    const qint32 line = document->lineNumber(row, caret.pane);
    if (line < 1)
        return Velmora::tr("No line here");
    const PaneDocument::Cell cell = document->cell(row, caret.pane);
    qsizetype column = caret.position.unit;
    if (qsizetype(cell.source->bytes(cell.line).size()) <= longestCounted) {
        const QString text = cell.source->text(cell.line).left(column);
        column -= std::count_if(text.begin(), text.end(), [](QChar unit) { return unit.isLowSurrogate(); });
    }
    return Velmora::tr("Line %1, column %2").arg(locale.toString(line), locale.toString(column + 1));
}

} // namespace velmora
