#include "core/preferred_charsets.h"
#include "core/text_encode.h"
#include "core/text_file.h"
#include "core/text_pair.h"
#include "core/text_scan.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QFile>
#include <QRandomGenerator>
#include <QStringDecoder>
#include <QStringEncoder>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace velmora;
using namespace velmora::test;

namespace {

QString wholeText(const DecodedText &text)
{
    const std::string_view bytes = text.lines.bytes();
    return QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
}

TextEncoding named(const char *name)
{
    return TextEncoding::fromName(QString::fromUtf8(name));
}

QByteArray inUtf16(const QString &text, bool bigEndian)
{
    QStringEncoder encoder(bigEndian ? QStringConverter::Utf16BE : QStringConverter::Utf16LE);
    return encoder(text);
}

QByteArray encodedBySystem(const QString &text, const QString &charset)
{
    const EncodedText encoded = encodeText(text, TextEncoding::fromName(charset));
    return encoded.ok() ? encoded.bytes : QByteArray();
}

/// "name mark undecodable firstLine text" with what is not ASCII escaped, so that a failure can be read.
QString described(const DecodedText &text)
{
    return QStringLiteral("%1%2 bad=%3@%4 %5")
        .arg(text.encoding.name(), text.encoding.hasMark() ? QStringLiteral("+mark") : QString())
        .arg(text.undecodable)
        .arg(text.firstUndecodableLine)
        .arg(wholeText(text));
}

} // namespace

class TextFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void detects()
    {
        struct Case {
            QByteArray raw;
            QString expected; ///< none: not what it is taken for, but whether it is binary
            bool binary = false;
        };
        const QString chinese = QStringLiteral("第一行\n第二行\n");
        const QByteArray damaged = QByteArray("\xC3\xA9\n").repeated(40);
        const QList<Case> cases{
            {"", QStringLiteral("UTF-8 bad=0@-1 ")},
            {"plain", QStringLiteral("UTF-8 bad=0@-1 plain")},
            {"gr\xC3\xBC\xC3\x9F", QStringLiteral("UTF-8 bad=0@-1 grüß")},
            {"\xEF\xBB\xBFx", QStringLiteral("UTF-8 BOM+mark bad=0@-1 x")},
            {"\xEF\xBB\xBF", QStringLiteral("UTF-8 BOM+mark bad=0@-1 ")},
            {"\xEF\xBB\xBF_\n\xC3", QStringLiteral("UTF-8 BOM+mark bad=1@1 _\n\uFFFD")},
            {QByteArray::fromHex("FFFE6100"), QStringLiteral("UTF-16 LE+mark bad=0@-1 a")},
            {QByteArray::fromHex("FEFF0061"), QStringLiteral("UTF-16 BE+mark bad=0@-1 a")},
            {QByteArray::fromHex("FFFE610062"), QStringLiteral("UTF-16 LE+mark bad=1@0 a\uFFFD")},
            {QByteArray::fromHex("FFFE000061000000"), QStringLiteral("UTF-32 LE+mark bad=0@-1 a")},
            {QByteArray::fromHex("FFFE00006100"), QStringLiteral("UTF-16 LE+mark bad=0@-1 %1a").arg(QChar(u'\0'))},
            {QByteArray::fromHex("0000FEFF0001F600"), QStringLiteral("UTF-32 BE+mark bad=0@-1 😀")},
            {inUtf16(chinese, false), QStringLiteral("UTF-16 LE bad=0@-1 ") + chinese},
            {inUtf16(chinese, true), QStringLiteral("UTF-16 BE bad=0@-1 ") + chinese},
            {inUtf16(QStringLiteral("int main()\n"), false), QStringLiteral("UTF-16 LE bad=0@-1 int main()\n")},
            // One damaged place for twenty that are whole, and not one more.
            {damaged + "\xE9\xE9\n", QStringLiteral("UTF-8 bad=2@40 %1\uFFFD\uFFFD\n").arg(QString::fromUtf8(damaged))},
            {damaged + "\xE9\xE9\xE9\n",
             QStringLiteral("ISO-8859-1 bad=0@-1 %1ééé\n").arg(QString::fromLatin1(damaged))},
            {QByteArray("ab\0cd", 5), {}, true},
            {QByteArray("./src/core\0./src/text\0./tests\0./a\0", 34), {}, true},
            {"\xE9", {}},
        };
        for (const Case &tried : cases) {
            const DecodedText text = decodeText(tried.raw, {});
            if (!tried.expected.isEmpty())
                QCOMPARE(described(text), tried.expected);
            QVERIFY2(text.binary == tried.binary, tried.raw.constData());
            QVERIFY2(!text.encoding.isAutomatic(), tried.raw.constData());
        }
    }

    /// A few characters give statistics of letters nothing to go by, and what is ASCII says nothing.
    void detectsNationalEncodings()
    {
        struct Case {
            const char *charset;
            const char *text;
            const char *language = "en_US"; ///< of the interface
        };
        const QList<Case> cases{
            {"GB18030", "比较两个文件夹，并把不同之处并排显示出来。用户可以复制、合并或同步文件。\n"},
            {"Big5", "比較兩個資料夾，並把不同之處並排顯示出來。使用者可以複製、合併檔案。\n"},
            {"Shift-JIS", "二つのフォルダーを比較して、違いを並べて表示します。ファイルをコピーできます。\n"},
            {"EUC-KR", "두 폴더를 비교하여 다른 점을 나란히 보여 줍니다. 파일을 복사할 수 있습니다.\n"},
            {"Windows-1251", "Сравнивает две папки и показывает различия рядом друг с другом.\n"},
            {"GB18030", "你好，你好"}, // could be Korean
            {"GB18030", "中文"},
            {"GB18030", "测试文件\n"},
            {"GB18030", "# 配置\nname=张三\n"},
            {"GB18030", "说明"},
            {"GB18030", "错误：文件不存在\n"},
            {"GB18030", "版本1.0 更新日志\n"},
            {"Big5", "檔案比較\n"},
            {"Shift-JIS", "比較する\n"},
            {"EUC-JP", "ありがとう\n"},
            {"EUC-KR", "안녕하세요\n"},
            {"EUC-KR", "비교\n", "ko_KR"},
            {"GB18030", "比较\n", "zh_CN"},
            {"Windows-1251", "мир\n"}, // no three accented letters in a row
            {"KOI8-R", "Привет, мир\n"},
            {"Windows-1251", "мир\n", "ru_RU"},
            {"KOI8-R", "мир\n", "ru_RU"},
            {"Windows-1252", "I don’t know. It’s “fine”.\n"},
            {"Windows-1252", "Größe der Änderung, Übermaß\n", "de_DE"},
            {"Windows-1252", "don’t\n", "ja_JP"},
        };
        const auto restored = qScopeGuard([] { setInterfaceLanguage({}); });
        for (const Case &tried : cases) {
            if (!TextEncoding::isKnownName(QString::fromLatin1(tried.charset))) // to this system
                continue;
            setInterfaceLanguage(QString::fromLatin1(tried.language));
            for (const int before : {0, 30}) {
                const QString whole = QStringLiteral("# ASCII only\n").repeated(before) + QString::fromUtf8(tried.text);
                const QByteArray raw = encodedBySystem(whole, QString::fromLatin1(tried.charset));
                QVERIFY2(!raw.isEmpty(), tried.charset);
                QCOMPARE(wholeText(decodeText(raw, {})), whole);
            }
        }
    }

    void judgesBothSidesTogether()
    {
        const auto readPair = [](const QByteArray &left, const QByteArray &right) {
            RawText sides[2] = {{left, decodeText(left, {})}, {right, decodeText(right, {})}};
            settleGuesses(sides[0], sides[1]);
            return QStringList{wholeText(sides[0].text), wholeText(sides[1].text)};
        };
        const QString russian = QStringLiteral("Сравнивает две папки и показывает различия рядом.\n").repeated(5);
        const QString word = QStringLiteral("парк\n"); // alone it could be Chinese
        const QByteArray koi = encodedBySystem(word, QStringLiteral("KOI8-R"));
        QCOMPARE(readPair(encodedBySystem(russian, QStringLiteral("KOI8-R")), koi), (QStringList{russian, word}));
        QCOMPARE(readPair(koi, russian.toUtf8()), (QStringList{word, russian}));
        const QString other = QStringLiteral("grüße\n");
        QCOMPARE(readPair(encodedBySystem(other, QStringLiteral("ISO-8859-1")), other.toUtf8()),
                 (QStringList{other, other}));
        const QString chinese = QStringLiteral("比較\n");
        QCOMPARE(readPair(chinese.toUtf8(), encodedBySystem(chinese, QStringLiteral("Big5"))),
                 (QStringList{chinese, chinese}));
    }

    void obeysAnExplicitEncoding()
    {
        const std::tuple<QByteArray, const char *, const char *> cases[] = {
            {"a\xE9_", "UTF-8", "UTF-8 bad=1@0 a\uFFFD_"},
            {"a\n\xC3\xA9", "ASCII", "ASCII bad=2@1 a\n\uFFFD\uFFFD"},
            {"\xEF\xBB\xBFx", "UTF-8", "UTF-8 bad=0@-1 x"},
            {"\xFF\xFEx", "ISO-8859-1", "ISO-8859-1 bad=0@-1 ÿþx"},
            {"\xA4\xA4\xA4\xE5", "big5", "Big5 bad=0@-1 中文"},
            {"\x93\xFA\\", "Shift_JIS", "Shift-JIS bad=0@-1 日\\"},
            {"\xA4\xA4\n\xA4", "Big5", "Big5 bad=1@1 中\n\uFFFD"}, // the last character is cut off
            {"\xD6\xD0\xFF\n", "gb18030", "GB18030 bad=1@0 中\uFFFD\n"},
            // Surrogates: high, high + low, low, and a high one at the end of the text.
            {QByteArray::fromHex("3dd83dd800de00de0a003dd8"), "UTF-16 LE",
             "UTF-16 LE+mark bad=3@0 \uFFFD😀\uFFFD\n\uFFFD"},
            {QByteArray::fromHex("3dd800d800e0"), "UTF-16 LE", "UTF-16 LE+mark bad=2@0 \uFFFD\uFFFD\uE000"},
            {QByteArray::fromHex("0000110000d80000"), "UTF-32 LE", "UTF-32 LE+mark bad=2@0 \uFFFD\uFFFD"},
            {QByteArray::fromHex("6100000062"), "UTF-32 LE", "UTF-32 LE+mark bad=1@0 a\uFFFD"},
        };
        for (const auto &[raw, encoding, expected] : cases)
            QCOMPARE(described(decodeText(raw, named(encoding))), QString::fromUtf8(expected));
    }

    void agreesWithTheToolkitOnRandomUtf8()
    {
        // Bytes that make every kind of well-formed and ill-formed sequence likely.
        constexpr QByteArrayView alphabet("a\n\x80\xBF\x9F\xA0\xC1\xC2\xDF\xE0\xED\xEF\xF0\xF4\xF5\x8F\x90");
        QRandomGenerator random(3);
        for (int round = 0; round < 20000; ++round) {
            QByteArray raw(random.bounded(24), Qt::Uninitialized);
            for (char &byte : raw)
                byte = alphabet[random.bounded(alphabet.size())];
            QStringDecoder toolkit(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
            const QString expected = toolkit(raw);
            const TextScan scan = scanText({raw.constData(), size_t(raw.size())}, 0, {});
            QCOMPARE(scan.validUtf8, !toolkit.hasError());
            const DecodedText text = decodeText(raw, named("UTF-8"));
            QCOMPARE(text.undecodable == 0, scan.validUtf8);
            if (scan.validUtf8)
                QCOMPARE(wholeText(text), expected);
            else
                QCOMPARE(wholeText(text).count(QChar::ReplacementCharacter), text.undecodable);
        }
    }

    void checksUtf8AcrossBlocks()
    {
        for (int shift = 0; shift < 4; ++shift) {
            QByteArray raw = QByteArray(shift, 'x') + QByteArray("\xF0\x9F\x98\x80").repeated(40000);
            QCOMPARE(decodeText(raw, {}).encoding, named("UTF-8"));
            raw.chop(1);
            QCOMPARE(decodeText(raw, {}).undecodable, 1);
            raw[65536] = 'x';
            QVERIFY(!scanText({raw.constData(), size_t(raw.size())}, 0, {}).validUtf8);
        }
    }

    void decodesAcrossBlocks()
    {
        // A period that is no power of two puts the ends of blocks at every place of a character.
        const QString whole = QStringLiteral("中文 a日本\n").repeated(120'000);
        for (const char *charset :
             {"GB18030", "Big5", "Shift-JIS", "EUC-JP", "ISO-2022-JP", "UTF-16 BE", "UTF-32 LE"}) {
            if (!TextEncoding::isKnownName(QString::fromLatin1(charset))) // to this system
                continue;
            const TextEncoding encoding = named(charset);
            const DecodedText text =
                decodeText(encodedBySystem(whole, QString::fromLatin1(encoding.charset())), encoding);
            QCOMPARE(text.undecodable, 0);
            QVERIFY2(wholeText(text) == whole, charset);
            QCOMPARE(text.lines.count(), 120'000);
        }
    }

    void namesTheLineEnds()
    {
        const QList<std::pair<QByteArray, const char *>> cases{{"abc", "LF"},
                                                               {"a\nb\n", "LF"},
                                                               {"a\r\nb\r\n", "CRLF"},
                                                               {"a\rb\r", "CR"},
                                                               {"a\nb\r\n", "Mixed"},
                                                               {"a\r\r\n", "Mixed"},
                                                               {QByteArray::fromHex("FFFE61000D000A00"), "CRLF"}};
        for (const auto &[raw, name] : cases)
            QCOMPARE(lineEndStyleName(decodeText(raw, {}).lineEnds), QString::fromLatin1(name));
    }

    void knowsEncodingNames()
    {
        QVERIFY(TextEncoding::offeredNames().join(u'|').startsWith(
            QStringLiteral("Auto detect|UTF-8|UTF-8 BOM|UTF-16 LE|UTF-16 BE|ASCII|Big5|Shift-JIS|GB18030|GBK|")));
        for (const QString &name : TextEncoding::offeredNames().mid(1))
            QCOMPARE(TextEncoding::fromName(name).name(), name);
        for (const char *automatic : {"auto", "自动检测", "", "Auto detect", "AUTO"}) {
            QVERIFY(named(automatic).isAutomatic());
            QVERIFY(TextEncoding::isKnownName(QString::fromUtf8(automatic)));
        }
        QCOMPARE(named("utf_16le"), named("UTF-16 LE"));
        QCOMPARE(named("GB18030").name(), QStringLiteral("GB18030"));
        QCOMPARE(named("Windows-1252"), named("WINDOWS-1252"));
        for (const char *unknown : {"no such charset", "ASCII//TRANSLIT", "中文"}) {
            QVERIFY(!TextEncoding::isKnownName(QString::fromUtf8(unknown)));
            QVERIFY(named(unknown).isAutomatic());
        }
    }

    void readsRegularFilesOnly()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("file"));
        const QByteArray bytes = QByteArray("0123456789").repeated(2'000'000);
        QVERIFY(makeFile(path, bytes));
        QVERIFY(readFile(path).bytes == bytes);

        CancelFlag cancel;
        cancel.cancel();
        QVERIFY(readFile(path, cancel).bytes.isEmpty());

        QVERIFY(!readFile(folder.filePath(QStringLiteral("missing"))).ok());
        QVERIFY(!readFile(folder.path()).ok());
        QVERIFY(!readFile(QString()).ok());
#ifdef Q_OS_LINUX
        QVERIFY(QFile::resize(path, TextLines::maximumSize + 1)); // with a hole
        QCOMPARE(readFile(path).error, QStringLiteral("File too large"));
        QVERIFY(readFile(path).bytes.isEmpty());
#endif
#ifdef Q_OS_UNIX
        // Opening the pipe would wait for a writer for ever.
        const QString pipe = folder.filePath(QStringLiteral("pipe"));
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(!readFile(pipe).ok());
        QVERIFY(!readFile(QStringLiteral("/dev/zero")).ok());
        if (QFile::exists(QStringLiteral("/proc/self/status")))
            QVERIFY(readFile(QStringLiteral("/proc/self/status")).bytes.contains("Name:"));
#endif
    }
};

VELMORA_TEST(TextFileTest)
#include "text_file_test.moc"
