#include "core/text_encode.h"
#include "core/text_file.h"
#include "support/test_main.h"

using namespace velmora;

class TextEncodeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writesTheBytesOfEachEncoding_data()
    {
        QTest::addColumn<QString>("encoding");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        const auto row = [](const char *encoding, const char *text, const QByteArray &bytes) {
            QTest::newRow(encoding) << QString::fromLatin1(encoding) << QString::fromUtf8(text) << bytes;
        };
        row("auto", "é", "\xC3\xA9");
        row("UTF-8", "é", "\xC3\xA9");
        row("UTF-8 BOM", "é", "\xEF\xBB\xBF\xC3\xA9");
        row("UTF-16 LE", "a😀",
            QByteArray("\xFF\xFE"
                       "a\0\x3D\xD8\x00\xDE",
                       8));
        row("UTF-16 BE", "a😀", QByteArray("\xFE\xFF\0a\xD8\x3D\xDE\x00", 8));
        row("UTF-32 BE", "😀", QByteArray("\0\0\xFE\xFF\0\1\xF6\0", 8));
        row("ASCII", "a~\r\n", "a~\r\n");
        row("ISO-8859-1", "é", "\xE9");
        row("Big5", "中文\n", "\xA4\xA4\xA4\xE5\n");
        row("Shift-JIS", "日\\", "\x93\xFA\\");
        row("GB18030", "中é", "\xD6\xD0\xA8\xA6");
        row("ISO-2022-JP", "a日", "a\x1B$BF|\x1B(B");
    }

    void writesTheBytesOfEachEncoding()
    {
        QFETCH(QString, encoding);
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        if (!TextEncoding::isKnownName(encoding))
            QSKIP("not known to this system");
        const EncodedText encoded = encodeText(text, TextEncoding::fromName(encoding));
        QVERIFY(encoded.ok());
        QCOMPARE(encoded.bytes, bytes);
    }

    void namesTheFirstCharacterWithoutAPlace_data()
    {
        QTest::addColumn<QString>("encoding");
        QTest::addColumn<QString>("character");
        const auto row = [](const char *encoding, const char *character) {
            QTest::newRow(encoding) << QString::fromLatin1(encoding) << QString::fromUtf8(character);
        };
        row("ASCII", "é");
        row("ISO-8859-1", "€");
        row("Big5", "😀");
        row("Shift-JIS", "한");
        row("windows-1252", "中");
    }

    void namesTheFirstCharacterWithoutAPlace()
    {
        QFETCH(QString, encoding);
        QFETCH(QString, character);
        // Far enough that the text is encoded in more than one piece.
        const QString before = QStringLiteral("line\r\n").repeated(100'000);
        const EncodedText encoded =
            encodeText(QString(before + QStringLiteral("ab%1\n%1").arg(character)), TextEncoding::fromName(encoding));
        QVERIFY(!encoded.ok());
        QCOMPARE(encoded.failedCharacter, character);
        QCOMPARE(encoded.failedLine, 100'000);
        QCOMPARE(encoded.failedColumn, 2);
    }

    void refusesLoneSurrogatesInEveryEncoding()
    {
        const QString text = QStringLiteral("😀\nx") + QChar(0xD83D) + u'y';
        for (const QString &name : TextEncoding::offeredNames()) {
            const EncodedText encoded = encodeText(text, TextEncoding::fromName(name));
            if (name == QLatin1String("ASCII"))
                continue; // fails earlier
            QCOMPARE(encoded.failedLine, 1);
            QCOMPARE(encoded.failedColumn, 1);
            QCOMPARE(encoded.failedCharacter, QString(QChar(0xD83D)));
        }
    }

    void givesBackWhatWasRead_data()
    {
        QTest::addColumn<QString>("encoding");
        for (const char *encoding : {"UTF-8 BOM", "UTF-16 LE", "UTF-16 BE", "UTF-32 LE", "GB18030"})
            QTest::newRow(encoding) << QString::fromLatin1(encoding);
    }

    void givesBackWhatWasRead()
    {
        QFETCH(QString, encoding);
        QString all;
        for (char32_t character = 1; character <= 0x10FFFF; character += character < 0x3000 ? 1 : 97) {
            // Of the private use area GB18030 has the part that its users agreed on.
            if (!QChar::isSurrogate(character) && (character < 0xE000 || character > 0xF8FF))
                all += QString::fromUcs4(&character, 1);
        }
        const TextEncoding wanted = TextEncoding::fromName(encoding);
        if (!encodeText(u"😀", wanted).ok())
            QSKIP("known in part only to this system");
        const EncodedText encoded = encodeText(all, wanted);
        QVERIFY(encoded.ok());
        const DecodedText decoded = decodeText(encoded.bytes, wanted);
        QCOMPARE(decoded.undecodable, 0);
        const std::string_view bytes = decoded.lines.bytes();
        QVERIFY(QString::fromUtf8(bytes.data(), qsizetype(bytes.size())) == all);
    }
};

VELMORA_TEST(TextEncodeTest)
#include "text_encode_test.moc"
