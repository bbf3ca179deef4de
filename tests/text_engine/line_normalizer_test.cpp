#include "support/test_main.h"
#include "text/engine/line_interner.h"
#include "text/engine/line_normalizer.h"
#include "text/engine/utf16_units.h"
#include "text_engine/lines.h"
#include "text_engine/plain_engine.h"

using namespace velmora;
using namespace velmora::test;

namespace {

template <typename Source>
InternedLines interned(const Source &left, const Source &right)
{
    const LineHash hash;
    const CancelFlag cancel;
    CancelPoll poll(cancel);
    const auto quiet = [](qint32) {};
    NormalizedSide<Source> leftSide(left, hash, quiet, poll);
    NormalizedSide<Source> rightSide(right, hash, quiet, poll);
    return internLines(leftSide, rightSide, poll);
}

std::string_view viewOf(const QByteArray &utf8)
{
    return {utf8.constData(), size_t(utf8.size())};
}

QByteArray keyOf(LineNormalizer<char> &normalizer, const QByteArray &utf8)
{
    const std::string_view key = normalizer.key(viewOf(utf8));
    return {key.data(), qsizetype(key.size())};
}

} // namespace

class LineNormalizerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keysAgreeInBothForms()
    {
        Random random(5);
        for (int round = 0; round < 20000; ++round) {
            const TextSessionOptions options = randomOptions(random);
            const QString line = randomLine(random, 1 + round % 30);
            const QByteArray expected = plain::key(line, options).toUtf8();
            LineNormalizer<char16_t> wide(KeyRules::of(options));
            LineNormalizer<char> narrow(KeyRules::of(options));
            QCOMPARE(toQString(wide.key({QStringView(line).utf16(), size_t(line.size())})).toUtf8(), expected);
            QCOMPARE(keyOf(narrow, line.toUtf8()), expected);
        }
    }

    /// Every character of the basic plane: as white space, in lower case, and on its way to UTF-16.
    void everyCharacter()
    {
        TextSessionOptions options;
        options.importantCharacterCase = false;
        LineNormalizer<char> narrow(KeyRules::of(options));
        for (uint code = 1; code < 0x10000; ++code) {
            if (QChar::isSurrogate(code))
                continue;
            const QChar character(code);
            // Short enough to be read unit by unit, and long enough to be read in vectors.
            for (const QString &middle : {QStringLiteral("b"), QStringLiteral("bcdefghijklmnopqrs")}) {
                const QString line = QStringLiteral("a") + character + middle + character + middle;
                const QByteArray utf8 = line.toUtf8();
                std::u16string units;
                appendUtf16(viewOf(utf8), units);
                QCOMPARE(toQString(units), line);
                QCOMPARE(keyOf(narrow, utf8), plain::key(line, options).toUtf8());
            }
            const QByteArray alone = QString(character).toUtf8();
            QCOMPARE(isBlank(viewOf(alone)), QChar::isSpace(code));
        }
    }

    /// A pair of spaces, and one other unit that matters, at every place of lines of many lengths.
    void everyPlace()
    {
        TextSessionOptions options;
        options.importantCharacterCase = false;
        LineNormalizer<char> narrow(KeyRules::of(options));
        for (qsizetype size = 2; size < 70; ++size) {
            for (qsizetype place = 0; place + 2 <= size; ++place) {
                for (const char *piece : {"  ", "x\t", "X ", "\xC3\x84", "\xC2\xA0"}) {
                    QByteArray line(size, 'x');
                    line.replace(place, 2, piece);
                    QCOMPARE(keyOf(narrow, line), plain::key(QString::fromUtf8(line), options).toUtf8());
                }
            }
        }
    }

    /// Lines of every length, some of which differ in one unit only, through several sizes of the table.
    void manyLinesStayApart()
    {
        QStringList left;
        for (int line = 0; line < 30000; ++line)
            left.append(QString(line % 40, u'x') + QString::number(line / 3));
        QStringList right(left.rbegin(), left.rend());
        right.insert(7, QStringLiteral("on this side only"));
        const TextLines leftText = toTextLines(left);
        const TextLines rightText = toTextLines(right);
        for (const InternedLines &lines :
             {interned(Utf16Lines(left), Utf16Lines(right)), interned(Utf8Lines(leftText), Utf8Lines(rightText))}) {
            QHash<QString, qint32> expected;
            const auto number = [&expected](const QString &line) { // in the order of the first occurrence
                return *expected.insert(line, expected.value(line, qint32(expected.size())));
            };
            for (qsizetype index = 0; index < left.size(); ++index)
                QCOMPARE(lines.left[size_t(index)], number(left[index]));
            for (qsizetype index = 0; index < right.size(); ++index)
                QCOMPARE(lines.right[size_t(index)], number(right[index]));
            QCOMPARE(lines.count, qint32(expected.size()));
        }
    }
};

VELMORA_TEST(LineNormalizerTest)
#include "line_normalizer_test.moc"
