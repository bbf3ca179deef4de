#include "core/text_encode.h"
#include "core/text_file.h"
#include "support/test_main.h"

using namespace velmora;

class TextEncodeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writesTheBytesOfEachEncoding()
    {
        struct Case {
            const char *encoding;
            const char *text;
            QByteArray bytes;
        };
        const QList<Case> cases{
            {"auto", "é", "\xC3\xA9"},
            {"UTF-8", "é", "\xC3\xA9"},
            {"UTF-8 BOM", "é", "\xEF\xBB\xBF\xC3\xA9"},
            {"UTF-16 LE", "a😀", QByteArray::fromHex("FFFE61003DD800DE")},
            {"UTF-16 BE", "a😀", QByteArray::fromHex("FEFF0061D83DDE00")},
            {"UTF-32 BE", "😀", QByteArray::fromHex("0000FEFF0001F600")},
            {"ASCII", "a~\r\n", "a~\r\n"},
            {"ISO-8859-1", "é", "\xE9"},
            {"Big5", "中文\n", "\xA4\xA4\xA4\xE5\n"},
            {"Shift-JIS", "日\\", "\x93\xFA\\"},
            {"GB18030", "中é", "\xD6\xD0\xA8\xA6"},
            {"ISO-2022-JP", "a日", "a\x1B$BF|\x1B(B"},
        };
        for (const Case &tried : cases) {
            const QString encoding = QString::fromLatin1(tried.encoding);
            if (!TextEncoding::isKnownName(encoding)) // to this system
                continue;
            const EncodedText encoded = encodeText(QString::fromUtf8(tried.text), TextEncoding::fromName(encoding));
            QVERIFY2(encoded.ok(), tried.encoding);
            QCOMPARE(tried.encoding + encoded.bytes, tried.encoding + tried.bytes);
        }
    }

    void namesTheFirstCharacterWithoutAPlace()
    {
        // Far enough that the text is encoded in more than one piece.
        const QString before = QStringLiteral("line\r\n").repeated(100'000);
        const std::tuple<const char *, const char *, const char *> cases[] = {{"ASCII", "ab", "é"},
                                                                              {"ISO-8859-1", "éb", "€"},
                                                                              {"Big5", "中b", "😀"},
                                                                              {"Shift-JIS", "日b", "한"},
                                                                              {"windows-1252", "éb", "中"}};
        for (const auto &[encoding, first, utf8] : cases) {
            const QString character = QString::fromUtf8(utf8);
            const QString text = before + QString::fromUtf8(first) + character + u'\n' + character;
            const EncodedText encoded = encodeText(text, TextEncoding::fromName(QString::fromLatin1(encoding)));
            QVERIFY2(!encoded.ok(), encoding);
            QCOMPARE(encoded.failedCharacter, character);
            QCOMPARE(encoded.failedLine, 100'000);
            QCOMPARE(encoded.failedColumn, 2);
        }
    }

    /// Each a text whose bytes would be read as another one: half of it lost, or a letter turned into a command.
    void refusesWhatWouldNotBeReadAgain()
    {
        struct Case {
            const char *encoding;
            QString text;
            qsizetype line;
            qsizetype column;
        };
        const QString mark(QChar::ByteOrderMark);
        QList<Case> cases{{"UTF-8", mark + u'a', 0, 0},
                          {"UTF-16 LE", {}, -1, -1},
                          {"UTF-8 BOM", mark + u'a', -1, -1},
                          {"UTF-16 BE", mark + mark + u'a', -1, -1},
                          {"ISO-2022-JP", QStringLiteral("一\n\x1B$B!!"), 1, 0}};
        for (const char *withoutIt : {"ASCII", "ISO-8859-1", "Big5", "Shift-JIS", "windows-1252", "EUC-KR"})
            cases.append({withoutIt, QStringLiteral("a\nab%1c\nd\n").arg(mark), 1, 2});
        for (const Case &tried : cases) {
            if (!TextEncoding::isKnownName(QString::fromLatin1(tried.encoding))) // to this system
                continue;
            const EncodedText encoded =
                encodeText(tried.text, TextEncoding::fromName(QString::fromLatin1(tried.encoding)));
            QVERIFY2(encoded.failedLine == tried.line && encoded.failedColumn == tried.column, tried.encoding);
            QCOMPARE(encoded.ok(), encoded.failedCharacter.isEmpty());
        }
    }

    /// Some charsets let a letter wait for the accent that may follow it.
    void readsTheLastLetterThatWaitsForAnAccent()
    {
        for (const char *charset : {"windows-1258", "windows-1255", "TCVN", "BIG5-HKSCS", "EUC-JISX0213"}) {
            const TextEncoding encoding = TextEncoding::fromName(QString::fromLatin1(charset));
            const DecodedText text = decodeText("abe", encoding);
            QVERIFY2(encoding.isAutomatic() || text.lines.bytes() == "abe", charset);
        }
    }

    void refusesLoneSurrogatesInEveryEncoding()
    {
        for (const char16_t lone : {u'\xD83D', u'\xDE00'}) {
            const QString text = QStringLiteral("😀\nx") + QString(2, QChar(lone)) + u'y';
            for (const QString &name : TextEncoding::offeredNames()) {
                const EncodedText encoded = encodeText(text, TextEncoding::fromName(name));
                if (name == QLatin1String("ASCII"))
                    continue; // fails earlier
                QCOMPARE(encoded.failedLine, 1);
                QCOMPARE(encoded.failedColumn, 1);
                QCOMPARE(encoded.failedCharacter, QString(QChar(lone)));
            }
        }
    }

    void givesBackWhatWasRead()
    {
        QString all;
        for (char32_t character = 1; character <= 0x10FFFF; character += character < 0x3000 ? 1 : 97) {
            // Of the private use area GB18030 has the part that its users agreed on.
            if (!QChar::isSurrogate(character) && (character < 0xE000 || character > 0xF8FF))
                all += QString::fromUcs4(&character, 1);
        }
        for (const char *encoding : {"UTF-8 BOM", "UTF-16 LE", "UTF-16 BE", "UTF-32 LE", "GB18030"}) {
            const TextEncoding wanted = TextEncoding::fromName(QString::fromLatin1(encoding));
            if (!encodeText(u"😀", wanted).ok()) // known in part only to this system
                continue;
            const EncodedText encoded = encodeText(all, wanted);
            QVERIFY2(encoded.ok(), encoding);
            const DecodedText decoded = decodeText(encoded.bytes, wanted);
            QCOMPARE(decoded.undecodable, 0);
            const std::string_view bytes = decoded.lines.bytes();
            QVERIFY2(QString::fromUtf8(bytes.data(), qsizetype(bytes.size())) == all, encoding);
        }
    }
};

VELMORA_TEST(TextEncodeTest)
#include "text_encode_test.moc"
