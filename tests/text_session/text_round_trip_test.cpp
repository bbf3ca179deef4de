#include "core/text_encode.h"
#include "edit_fixture.h"
#include "session/document/text_saver.h"
#include "session/pane/intra_line_changes.h"
#include "support/test_main.h"
#include "text/syntax/syntax_checkpoints.h"

using namespace velmora;
using namespace velmora::test;

namespace {

/// An encoding, and three lines that it can store.
struct Stored {
    const char *name;
    QStringList lines;
    bool isDetected = true; ///< else it is chosen in the session
    bool hasMark = true;    ///< where the encoding has one
};

QList<Stored> encodings()
{
    const QStringList any = words("café|中|😀 end");
    const QStringList plain = words("abcdef|ghi|jkl");
    return {
        {"UTF-8", any},
        {"UTF-8 BOM", any},
        {"UTF-16 LE", any},
        {"UTF-16 BE", any},
        {"UTF-16 LE", plain, true, false},
        {"UTF-16 BE", plain, true, false},
        {"UTF-32 LE", any},
        {"UTF-32 BE", any},
        {"ASCII", words("one|two~|three"), false},
        // The second byte of a character may be a backslash or a bar.
        {"Big5", words("中文|許功|一 z"), false},
        {"Shift-JIS", words("日本|表ｱｲ|ポ z"), false},
        {"ISO-8859-1", words("café|\u0080ÿ|naïve"), false},
    };
}

struct Ends {
    const char *name;
    const char *first;
    const char *second;
    const char *last; ///< empty when the text ends without one
};

const Ends endStyles[] = {
    {"LF", "\n", "\n", "\n"},         {"LF, none at the end", "\n", "\n", ""},
    {"CRLF", "\r\n", "\r\n", "\r\n"}, {"CRLF, none at the end", "\r\n", "\r\n", ""},
    {"mixed", "\n", "\r\n", "\n"},    {"mixed, return at the end", "\r\n", "\n", "\r"},
};

QByteArray fileOf(const Stored &stored, const Ends &ends, const char *typed)
{
    const QStringList &lines = stored.lines;
    const QString text =
        lines[0] + word(ends.first) + word(typed) + lines[1] + word(ends.second) + lines[2] + word(ends.last);
    const TextEncoding encoding = TextEncoding::fromName(word(stored.name));
    return encodeText(text, encoding).bytes.mid(stored.hasMark ? 0 : encoding.markBytes().size());
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
            f.setOptions(R"({"leftEncoding": "auto", "rightEncoding": "auto", "sameAsLeftFileFormat": false})");
            if (!stored.isDetected)
                f.session.setOptions({{word("leftEncoding"), word(stored.name)}});
            for (const Ends &ends : endStyles) {
                const QByteArray bytes = fileOf(stored, ends, "");
                const QByteArray which = QByteArray(stored.name) + ", " + ends.name;
                const QString path = f.file("left.txt", bytes);
                f.session.setPaths({path, f.right, {}});
                f.session.onReloadBoth();
                f.wait();
                QCOMPARE(f.scene().document()->source(Side::Left).count(), 3);
                f.save(Side::Left);
                QCOMPARE(which + ", untouched: " + contentsOf(path).toHex(), which + ", untouched: " + bytes.toHex());

                f.typeAt(Side::Left, 2, word("x"));
                QVERIFY2(f.session.hasUnsavedChanges(), (which + ": " + f.status().toUtf8()).constData());
                f.save(Side::Left);
                QCOMPARE(which + contentsOf(path).toHex(), which + fileOf(stored, ends, "x").toHex());
                QVERIFY(!f.session.hasUnsavedChanges());
                f.session.edit(EditCommand::UndoLeft);
                f.save(Side::Left);
                QCOMPARE(which + contentsOf(path).toHex(), which + bytes.toHex());
            }
        }
        QVERIFY(f.dialogs.asked().isEmpty());
    }

    void keepsAFilesMarkThatItsEncodingDoesNotMention()
    {
        SessionFixture f;
        const QString path = f.file("f", "\xEF\xBB\xBFold\n");
        QCOMPARE(save("new\n", word("UTF-8"), path).end, TextSaveResult::End::Saved);
        QCOMPARE(contentsOf(path), QByteArray("\xEF\xBB\xBFnew\n"));
    }

    /// Some encodings store a character in two ways, and only one of them is written.
    void refusesToWriteUneditedLinesInOtherBytes()
    {
        const QList<std::pair<QString, QByteArray>> cases{
            {word("Shift-JIS"), "\xFA\x4A and \x87\x54\n"}, // both the Roman numeral one
            {word("UTF-7"), "a and +AGE-\n"}};
        SessionFixture f;
        for (const auto &[encoding, twice] : cases) {
            if (!TextEncoding::isKnownName(encoding)) // to this system
                continue;
            const QString path = f.file("f", twice);
            const TextSaveResult result = save("edited\n", encoding, path);
            QCOMPARE(result.end, TextSaveResult::End::NotFaithful);
            QCOMPARE(contentsOf(path), twice);
        }
    }

    void neverCutsAFileOffAtAMarkWithinTheText()
    {
        SessionFixture f;
        for (const char *encoding : {"ASCII", "Big5", "windows-1252", "EUC-KR"}) {
            const QString path = f.file("f", "old\n");
            const TextSaveResult result =
                save("one\ntw\xEF\xBB\xBFo\nthree\nfour\n", QString::fromLatin1(encoding), path);
            QVERIFY2(result.end == TextSaveResult::End::NotEncodable, encoding);
            QCOMPARE(result.character, QString(QChar(QChar::ByteOrderMark)));
            QCOMPARE(result.line, 1);
            QCOMPARE(contentsOf(path), QByteArray("old\n"));
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
