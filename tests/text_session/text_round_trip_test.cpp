#include "core/text_lines.h"
#include "edit_fixture.h"
#include "support/test_main.h"
#include "text/syntax/syntax_checkpoints.h"
#include "text/text_saver.h"
#include "text/view/intra_line_changes.h"

#include <QJsonObject>

using namespace velmora;
using namespace velmora::test;

namespace {

/// An encoding as bytes: how three lines, the letter "x" and the characters of line ends are stored.
struct Stored {
    const char *name;
    QString chosen; ///< in the session; empty for automatic detection
    QByteArray mark;
    QList<QByteArray> lines;
    std::function<QByteArray(const QByteArray &ascii)> ascii;
};

template <int size, bool bigEndian>
QByteArray widened(const QByteArray &ascii)
{
    QByteArray wide;
    for (const char character : ascii) {
        QByteArray unit(size, '\0');
        unit[bigEndian ? size - 1 : 0] = character;
        wide += unit;
    }
    return wide;
}

QByteArray same(const QByteArray &ascii)
{
    return ascii;
}

QList<Stored> encodings()
{
    const auto hex = [](const char *digits) { return QByteArray::fromHex(digits); };
    const QList<QByteArray> utf8{"caf\xC3\xA9", "\xE4\xB8\xAD", "\xF0\x9F\x98\x80 end"};
    // "ab", a Chinese character, a character outside the first plane
    const QList<QByteArray> le16{hex("61006200"), hex("2d4e"), hex("3dd800de")};
    const QList<QByteArray> be16{hex("00610062"), hex("4e2d"), hex("d83dde00")};
    const QList<QByteArray> le32{hex("6100000062000000"), hex("2d4e0000"), hex("00f60100")};
    const QList<QByteArray> be32{hex("0000006100000062"), hex("00004e2d"), hex("0001f600")};
    const QList<QByteArray> plainLe{hex("610062006300640065006600"), hex("670068006900"), hex("6a006b006c00")};
    const QList<QByteArray> plainBe{hex("006100620063006400650066"), hex("006700680069"), hex("006a006b006c")};
    return {
        {"utf-8", {}, {}, utf8, same},
        {"utf-8 with mark", {}, "\xEF\xBB\xBF", utf8, same},
        {"utf-16 le", {}, "\xFF\xFE", le16, widened<2, false>},
        {"utf-16 be", {}, "\xFE\xFF", be16, widened<2, true>},
        {"utf-16 le without mark", {}, {}, plainLe, widened<2, false>},
        {"utf-16 be without mark", {}, {}, plainBe, widened<2, true>},
        {"utf-32 le", {}, hex("fffe0000"), le32, widened<4, false>},
        {"utf-32 be", {}, hex("0000feff"), be32, widened<4, true>},
        {"ascii", QStringLiteral("ASCII"), {}, {"one", "two~", "three"}, same},
        // The second byte of a character may be a backslash or a bar.
        {"big5", QStringLiteral("Big5"), {}, {"\xa4\xa4\xa4\xe5", "\xb3\x5c\xa5\x5c", "\xa4\x40 z"}, same},
        {"shift-jis", QStringLiteral("Shift-JIS"), {}, {"\x93\xfa\x96\x7b", "\x95\x5c\xb1\xb2", "\x83\x7c z"}, same},
        {"latin-1", QStringLiteral("ISO-8859-1"), {}, {"caf\xE9", "\x80\xFF", "na\xEFve"}, same},
    };
}

struct Ends {
    const char *name;
    QByteArray first;
    QByteArray second;
    QByteArray last; ///< empty when the text ends without one
};

const Ends endStyles[] = {
    {"LF", "\n", "\n", "\n"},         {"LF, none at the end", "\n", "\n", {}},
    {"CRLF", "\r\n", "\r\n", "\r\n"}, {"CRLF, none at the end", "\r\n", "\r\n", {}},
    {"mixed", "\n", "\r\n", "\n"},    {"mixed, return at the end", "\r\n", "\n", "\r"},
};

QByteArray fileOf(const Stored &stored, const Ends &ends, const QByteArray &typed)
{
    return stored.mark + stored.lines[0] + stored.ascii(ends.first) + stored.ascii(typed) + stored.lines[1] +
           stored.ascii(ends.second) + stored.lines[2] + stored.ascii(ends.last);
}

TextSaveResult save(const QByteArray &utf8, const QString &encoding, const QString &path)
{
    const auto text = std::make_shared<const TextLines>(TextLines::split(utf8));
    Progress silent;
    return saveText({std::make_shared<const EditSnapshot>(std::vector<LineRun>{{text, 0, text->count()}}),
                     TextEncoding::fromName(encoding),
                     path,
                     TextSaveRequest::Target::Changed,
                     {}},
                    silent);
}

} // namespace

class TextRoundTripTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Opens a file of every encoding with every style of line ends, saves it untouched, and again with a letter more.
    void everyByteThatWasNotEditedStays()
    {
        EditFixture f("", "other\n");
        for (const Stored &stored : encodings()) {
            QJsonObject options = f.session.options();
            options[QStringLiteral("leftEncoding")] = stored.chosen.isEmpty() ? QStringLiteral("auto") : stored.chosen;
            options[QStringLiteral("rightEncoding")] = QStringLiteral("auto");
            options[QStringLiteral("sameAsLeftFileFormat")] = false;
            f.session.setOptions(options);
            for (const Ends &ends : endStyles) {
                const QByteArray bytes = fileOf(stored, ends, {});
                const QByteArray which = QByteArray(stored.name) + ", " + ends.name;
                const QString path = f.file(QStringLiteral("left.txt"), bytes);
                f.session.setPaths({path, f.right, {}});
                f.session.onReloadBoth();
                f.wait();
                QCOMPARE(f.scene().document()->source(Side::Left).count(), 3);
                f.save(Side::Left);
                QVERIFY2(contentOf(path) == bytes, (which + ", untouched: " + contentOf(path).toHex()).constData());

                f.typeAt(Side::Left, 2, QStringLiteral("x"));
                QVERIFY2(f.session.hasUnsavedChanges(), (which + ": " + f.status().toUtf8()).constData());
                f.save(Side::Left);
                QVERIFY2(contentOf(path) == fileOf(stored, ends, "x"),
                         (which + ": " + contentOf(path).toHex()).constData());
                QVERIFY(!f.session.hasUnsavedChanges());
                f.session.edit(EditCommand::UndoLeft);
                f.save(Side::Left);
                QVERIFY2(contentOf(path) == bytes, (which + ", undone: " + contentOf(path).toHex()).constData());
            }
        }
        QVERIFY(f.dialogs.asked().isEmpty());
    }

    void keepsAFilesMarkThatItsEncodingDoesNotMention()
    {
        SessionFixture f;
        const QString path = f.file(QStringLiteral("f"), "\xEF\xBB\xBFold\n");
        QCOMPARE(save("new\n", QStringLiteral("UTF-8"), path).end, TextSaveResult::End::Saved);
        QCOMPARE(contentOf(path), QByteArray("\xEF\xBB\xBFnew\n"));
    }

    /// Some encodings store a character in two ways, and only one of them is written.
    void refusesToWriteUneditedLinesInOtherBytes()
    {
        const QList<std::pair<QString, QByteArray>> cases{
            {QStringLiteral("Shift-JIS"), "\xFA\x4A and \x87\x54\n"}, // both the Roman numeral one
            {QStringLiteral("UTF-7"), "a and +AGE-\n"}};
        SessionFixture f;
        for (const auto &[encoding, twice] : cases) {
            if (!TextEncoding::isKnownName(encoding)) // to this system
                continue;
            const QString path = f.file(QStringLiteral("f"), twice);
            const TextSaveResult result = save("edited\n", encoding, path);
            QCOMPARE(result.end, TextSaveResult::End::NotFaithful);
            QCOMPARE(contentOf(path), twice);
        }
    }

    void neverCutsAFileOffAtAMarkWithinTheText()
    {
        SessionFixture f;
        for (const char *encoding : {"ASCII", "Big5", "windows-1252", "EUC-KR"}) {
            const QString path = f.file(QStringLiteral("f"), "old\n");
            const TextSaveResult result =
                save("one\ntw\xEF\xBB\xBFo\nthree\nfour\n", QString::fromLatin1(encoding), path);
            QVERIFY2(result.end == TextSaveResult::End::NotEncodable, encoding);
            QCOMPARE(result.character, QString(QChar(QChar::ByteOrderMark)));
            QCOMPARE(result.line, 1);
            QCOMPARE(contentOf(path), QByteArray("old\n"));
        }
    }

    void aMarkWithinTheTextIsALetter()
    {
        const auto source = [](const char *letters) {
            return std::make_shared<TextLinesSource>(TextLines::split(QByteArray("\xEF\xBB\xBF") + letters));
        };
        const DiffDocument document({{Modified, 1, 1}}, source("ab"), source("ac"));
        QCOMPARE(document.source(Side::Left).text(0), QStringLiteral("\uFEFFab"));
        QCOMPARE(findRowChanges(document, 0).right, (QList<CharRange>{{2, 1}}));
        QCOMPARE(colouredPart(document.source(Side::Left).bytes(0)), QStringLiteral("\uFEFFab"));
    }
};

VELMORA_TEST(TextRoundTripTest)
#include "text_round_trip_test.moc"
