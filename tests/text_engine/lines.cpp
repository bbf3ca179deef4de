#include "text_engine/lines.h"

#include <array>

namespace velmora::test {

namespace {

QString randomWord(Random &random)
{
    static const std::array words{
        QStringLiteral("a"),      QStringLiteral("ab"),    QStringLiteral("Value"), QStringLiteral("RETURN"),
        QStringLiteral("x=1;"),   QStringLiteral("größe"), QStringLiteral("ÄÖ"),    QStringLiteral("İstanbul"),
        QStringLiteral("日本語"), QStringLiteral("😀"),     QStringLiteral("😁"),     QStringLiteral("foo42"),
        QStringLiteral("ΣΑΣ"),    QStringLiteral("ﬁ"),     QStringLiteral("//"),    QStringLiteral("𐐀"),
        QStringLiteral("\uFEFF"), QStringLiteral("ǅ"),     QStringLiteral("the"),   QStringLiteral("\u200B")};
    return words[size_t(random.below(words.size()))];
}

QString randomSpace(Random &random)
{
    static const std::array<char16_t, 12> spaces{u' ',    u' ',    u' ',      u'\t',     u'\v',     u'\f',
                                                 u'\x85', u'\xA0', u'\u1680', u'\u2003', u'\u2028', u'\u3000'};
    QString run;
    for (quint64 length = random.below(3) + 1; length > 0; --length)
        run += QChar(spaces[size_t(random.below(random.below(3) == 0 ? spaces.size() : 3))]);
    return run;
}

} // namespace

QString randomLine(Random &random, qint32 pieces)
{
    QString line;
    for (quint64 piece = random.below(quint64(pieces) + 1); piece > 0; --piece)
        line += random.below(3) == 0 ? randomSpace(random) : randomWord(random);
    if (random.below(8) == 0)
        line += u'\r';
    return line;
}

QStringList randomLines(Random &random, qint32 longest)
{
    QStringList lines;
    const auto count = qsizetype(random.below(quint64(longest) + 1));
    while (lines.size() < count) {
        const quint64 kind = random.below(6);
        if (kind == 0 || lines.isEmpty()) {
            lines.append(randomLine(random, 2));
        } else if (kind < 3) {
            lines.append(lines[qsizetype(random.below(quint64(lines.size())))]);
        } else if (kind == 3) {
            lines.append(lines[qsizetype(random.below(quint64(lines.size())))] + randomWord(random));
        } else {
            lines.append(randomLine(random, 9));
        }
    }
    return lines;
}

QStringList editedLines(Random &random, const QStringList &lines, qint32 changes)
{
    QStringList edited = lines;
    for (qint32 change = 0; change < changes; ++change) {
        const auto at = qsizetype(random.below(quint64(edited.size()) + 1));
        const quint64 kind = random.below(6);
        if (kind == 0 || at == edited.size()) {
            edited.insert(at, randomLine(random, 6));
        } else if (kind == 1) {
            edited.removeAt(at);
        } else if (kind == 2) {
            edited.move(at, qsizetype(random.below(quint64(edited.size()))));
        } else if (kind == 3) {
            edited[at] = randomSpace(random) + edited[at].toUpper();
        } else {
            QString &line = edited[at];
            const auto middle = qsizetype(random.below(quint64(line.size()) + 1));
            // Never between the halves of a pair.
            const bool inPair = middle > 0 && line[middle - 1].isHighSurrogate();
            line.insert(inPair ? 0 : middle, randomWord(random));
        }
    }
    return edited;
}

TextSessionOptions randomOptions(Random &random)
{
    const auto oneIn = [&random](quint64 of) { return random.below(of) == 0; };
    TextSessionOptions options;
    options.ignoreBlankLines = oneIn(3);
    options.importantLeadingWhitespace = oneIn(2);
    options.importantEmbeddedWhitespace = oneIn(2);
    options.importantTrailingWhitespace = oneIn(2);
    options.importantEverythingElse = !oneIn(4);
    options.importantCharacterCase = !oneIn(3);
    options.orphanLinesAlwaysImportant = oneIn(3);
    options.compareLineEndings = !oneIn(3);
    if (oneIn(4)) {
        options.importantLeadingWhitespace = options.importantEmbeddedWhitespace = true;
        options.importantTrailingWhitespace = options.importantEverythingElse = true;
        options.importantCharacterCase = options.compareLineEndings = true;
        options.ignoreBlankLines = false;
    }
    static const QStringList entries{QStringLiteral("foo"),     QStringLiteral("  "),    QStringLiteral(" ^x "),
                                     QStringLiteral("(broken"), QStringLiteral("the$"),  QStringLiteral("^$"),
                                     QStringLiteral("[0-9]+;"), QStringLiteral("größe"), QStringLiteral("日.語"),
                                     QStringLiteral("\\r"),     QStringLiteral("RETURN")};
    while (oneIn(3))
        options.unimportantText.append(entries[qsizetype(random.below(quint64(entries.size())))]);
    options.alignAlgorithm = qint32(random.below(6)) - 1;
    static const std::array tolerances{-3, 0, 0, 1, 2, 5, 40, 2000};
    options.curvatureTolerance = tolerances[size_t(random.below(tolerances.size()))];
    options.useNearbyMatches = oneIn(2);
    options.neverAlignDifferences = oneIn(5);
    return options;
}

TextLines toTextLines(const QStringList &lines)
{
    QByteArray utf8;
    for (const QString &line : lines) {
        utf8 += line.toUtf8();
        // A line's own carriage return is to stay.
        utf8 += line.endsWith(u'\r') ? "\r\n" : "\n";
    }
    return TextLines::split(utf8);
}

QByteArray dump(const QList<DiffLine> &rows)
{
    QByteArray text;
    for (const DiffLine &row : rows) {
        text += "=+-~"[row.kind];
        text += ' ' + QByteArray::number(row.leftLine) + ' ' + QByteArray::number(row.rightLine) + " [";
        text +=
            row.leftText.toUtf8().replace('\r', "\\r") + "] [" + row.rightText.toUtf8().replace('\r', "\\r") + "]\n";
    }
    return text;
}

QByteArray dump(const QStringList &lines)
{
    return '{' + lines.join(u"} {").toUtf8().replace('\r', "\\r") + '}';
}

} // namespace velmora::test
