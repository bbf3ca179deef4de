#include "core/line_ends.h"
#include "core/text_lines.h"
#include "core/text_scan.h"
#include "support/test_main.h"

#include <QRandomGenerator>

using namespace velmora;

namespace {

/// A text cut by the plain rule, each line as "content" + what ends it.
QList<std::pair<QByteArray, QByteArray>> cutPlainly(const QByteArray &text)
{
    QList<std::pair<QByteArray, QByteArray>> lines;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype lineFeed = text.indexOf('\n', at);
        QByteArray line = lineFeed < 0 ? text.mid(at) : text.mid(at, lineFeed - at);
        at = lineFeed < 0 ? text.size() : lineFeed + 1;
        QByteArray end = lineFeed < 0 ? QByteArray() : QByteArrayLiteral("\n");
        if (line.endsWith('\r')) {
            line.chop(1);
            end.prepend('\r');
        }
        lines.append({line, end});
    }
    return lines;
}

QList<std::pair<QByteArray, QByteArray>> cut(const TextLines &text)
{
    QList<std::pair<QByteArray, QByteArray>> lines;
    for (qsizetype index = 0; index < text.count(); ++index) {
        const std::string_view line = text.line(index);
        const std::string_view end = lineEndBytes(text.lineEnd(index));
        lines.append({QByteArray(line.data(), qsizetype(line.size())), QByteArray(end.data(), qsizetype(end.size()))});
    }
    return lines;
}

QByteArray toBytes(const TextLines &text)
{
    return {text.bytes().data(), qsizetype(text.bytes().size())};
}

QByteArray randomText(QRandomGenerator &random, qsizetype size, QByteArrayView alphabet)
{
    QByteArray text(size, Qt::Uninitialized);
    for (char &byte : text)
        byte = alphabet[random.bounded(alphabet.size())];
    return text;
}

} // namespace

class TextLinesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cutsAndConvertsEverySmallText()
    {
        // All texts over these letters up to a length at which every meeting of line ends has occurred.
        const QByteArray alphabet = "a\r\n";
        QList<QByteArray> texts{QByteArray()};
        for (qsizetype index = 0; index < texts.size(); ++index) {
            const QByteArray text = texts[index];
            const TextLines lines = TextLines::split(text);
            QCOMPARE(cut(lines), cutPlainly(text));
            QCOMPARE(toBytes(lines), text);
            // And with all line ends made one.
            const QByteArray plain = QByteArray(text).replace("\r\n", "\n").replace('\r', '\n');
            for (const auto &[style, end] : {std::pair(LineEndStyle::Lf, "\n"), std::pair(LineEndStyle::Cr, "\r"),
                                             std::pair(LineEndStyle::CrLf, "\r\n")}) {
                const QByteArray expected = QByteArray(plain).replace('\n', end);
                const TextLines converted = withLineEnds(lines, style);
                QCOMPARE(toBytes(converted), expected);
                QCOMPARE(cut(converted), cutPlainly(expected));
            }
            QCOMPARE(toBytes(withLineEnds(lines, LineEndStyle::Mixed)), text);
            if (text.size() < 6) {
                for (const char letter : alphabet)
                    texts.append(text + letter);
            }
        }
        QCOMPARE(texts.size(), 1093);
        CancelFlag cancel;
        cancel.cancel();
        QVERIFY(TextLines::split(QByteArray("a\nb\n"), 0, cancel).isEmpty());
    }

    void cutsTextsOfEveryLengthAroundAVector()
    {
        QRandomGenerator random(7);
        for (qsizetype size = 0; size < 300; ++size) {
            const QByteArray text = randomText(random, size, QByteArrayView("abcdefgh\r\n"));
            QCOMPARE(cut(TextLines::split(text)), cutPlainly(text));
        }
        const QByteArray large = randomText(random, 9'000'000, QByteArrayView("abcdefgh\r\n"));
        QCOMPARE(cut(TextLines::split(large)), cutPlainly(large));
    }

    void leavesOutWhatComesBeforeTheText()
    {
        const QByteArray marked = "\xEF\xBB\xBF"
                                  "one\ntwo";
        const TextLines lines = TextLines::split(marked, 3);
        QCOMPARE(cut(lines), cutPlainly(marked.mid(3)));
        QVERIFY(lines.isAscii());
        QCOMPARE(lines.lineAt(0), 0);
        QCOMPARE(lines.lineAt(3), 0);
        QCOMPARE(lines.lineAt(4), 1);
        QVERIFY(TextLines::split(marked, marked.size()).isEmpty());
        QCOMPARE(TextLines::split(marked + marked, 3).text(1), QStringLiteral("two\uFEFFone")); // marks within stay
    }

    void knowsAscii()
    {
        const auto built = [](QByteArray line) {
            TextLinesBuilder builder;
            builder.appendFirst(std::move(line), LineEnd::Lf);
            return builder.take();
        };
        QVERIFY(TextLines::split(QByteArray(1000, 'x')).isAscii());
        QVERIFY(built(QByteArray(1000, 'x')).isAscii());
        for (const qsizetype place : {0, 15, 16, 500, 997}) {
            QByteArray text(1000, 'x');
            text.replace(place, 2, "\xC3\xA9");
            QVERIFY(!TextLines::split(text).isAscii());
            QCOMPARE(TextLines::split(text).text(0), QString::fromUtf8(text));
            QVERIFY(!built(text).isAscii());
            QCOMPARE(built(text).text(0), QString::fromUtf8(text));
        }
    }

    void countsBytesAsAPlainLoopDoes()
    {
        QRandomGenerator random(11);
        for (int round = 0; round < 300; ++round) {
            const QByteArray text = randomText(random, random.bounded(5000), QByteArrayView("\r\n\0a\x80", 5));
            const size_t begin = size_t(random.bounded(text.size() + 1));
            const size_t end = begin + size_t(random.bounded(text.size() - qsizetype(begin) + 1));
            const QByteArray part = text.mid(qsizetype(begin), qsizetype(end - begin));
            const ByteCounts counts = countBytes({text.constData(), size_t(text.size())}, begin, end);
            QCOMPARE(counts.lineFeeds, part.count('\n'));
            QCOMPARE(counts.carriageReturns, part.count('\r'));
            QCOMPARE(counts.zeros, part.count('\0'));
            QCOMPARE(counts.ascii, !part.contains('\x80'));
            const QByteArray oneMore = text.mid(qsizetype(begin), qsizetype(end - begin) + 1);
            QCOMPARE(counts.crLfPairs, part.isEmpty() ? 0 : oneMore.count("\r\n"));
        }
    }

    void buildsTextsLineByLine()
    {
        TextLinesBuilder builder;
        builder.append("one", LineEnd::CrLf);
        builder.append("two\nlines in one", LineEnd::Lf);
        builder.append("", LineEnd::None);
        const TextLines lines = builder.take();
        QCOMPARE(cut(lines),
                 (QList<std::pair<QByteArray, QByteArray>>{{"one", "\r\n"}, {"two\nlines in one", "\n"}, {"", ""}}));
        QVERIFY(builder.take().isEmpty());
    }
};

VELMORA_TEST(TextLinesTest)
#include "text_lines_test.moc"
