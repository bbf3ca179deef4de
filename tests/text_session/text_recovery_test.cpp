#include "core/recovery_store.h"
#include "edit_fixture.h"
#include "session/document/text_recovery.h"
#include "support/test_main.h"

#include <QClipboard>
#include <QDirIterator>
#include <QGuiApplication>
#include <QJsonArray>

using namespace velmora;
using namespace velmora::test;

namespace {

/// A folder of recovery files, and sessions that use it.
class RecoveryTest {
public:
    [[nodiscard]] QStringList files() const
    {
        QStringList files;
        QDirIterator all(folder.path(), {word("*.unsaved")}, QDir::Files, QDirIterator::Subdirectories);
        while (all.hasNext())
            files.append(all.next());
        return files;
    }

    /// The record of the only file, once its first text is `text`.
    std::optional<RecoveryRecord> recordOf(const QByteArray &text)
    {
        std::optional<RecoveryRecord> record;
        const bool there = QTest::qWaitFor(
            [&] {
                const QStringList all = files();
                record = all.size() == 1 ? readRecoveryRecord(all.first()) : std::nullopt;
                return record && record->texts.first() == text;
            },
            30000);
        return there ? record : std::nullopt;
    }

    QTemporaryDir folder;
    RecoveryStore store{folder.path()};
};

/// A session that compares two files, with "x" typed into the left one, and the record of that.
class UnsavedFixture : public RecoveryTest, public EditFixture {
public:
    UnsavedFixture(const QByteArray &leftBytes, const QByteArray &unsaved) : EditFixture(leftBytes, "b\n", &store)
    {
        typeAt(Side::Left, 1, word("x"));
        record = recordOf(unsaved);
        [this] { QVERIFY(record); }();
    }

    std::optional<RecoveryRecord> record;
};

/// Brings a record back and waits until it is kept anew.
void recover(SessionFixture &f, const RecoveryRecord &record)
{
    bool kept = false;
    f.session.recover(record, [&kept] { kept = true; });
    QTRY_VERIFY(kept);
}

} // namespace

class TextRecoveryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsWhatIsUnsavedAndNothingElse()
    {
        UnsavedFixture f("a\r\nb", "xa\r\nb");
        QCOMPARE(f.record->texts.size(), 1);
        QCOMPARE(f.record->description.value(word("left")).toString(), f.left);
        QCOMPARE(contentsOf(f.left), QByteArray("a\r\nb"));

        QTest::keyClicks(&f.pane(Side::Left), word("y"));
        QVERIFY(f.recordOf("xya\r\nb"));
        f.save(Side::Left);
        QTRY_COMPARE(f.files(), QStringList());

        f.typeAt(Side::Right, 1, word("z"));
        QVERIFY(f.recordOf("zb\n"));
        f.session.edit(EditCommand::UndoRight);
        QTRY_COMPARE(f.files(), QStringList());
    }

    void keepsItLaterWhatCannotBeKeptNow()
    {
        UnsavedFixture f("a\n", "xa\n");
        const QString file = f.files().constFirst();
        QVERIFY(QFile::remove(file) && QDir().mkdir(file));
        QTest::keyClicks(&f.pane(Side::Left), word("y"));
        QTRY_VERIFY(f.status().startsWith(word("Unsaved changes cannot be kept for a restart: ")));
        QVERIFY(QDir().rmdir(file));
        QVERIFY(f.recordOf("xya\n"));
    }

    void goesWithItsSession()
    {
        RecoveryTest r;
        auto f = std::make_unique<EditFixture>("a\n", "b\n", &r.store);
        f->typeAt(Side::Left, 1, word("x"));
        QVERIFY(r.recordOf("xa\n"));
        QTest::keyClicks(&f->pane(Side::Left), word("y"));
        f.reset();
        QCOMPARE(r.files(), QStringList());
    }

    void bringsBackBothSidesWithWhatBelongsToThem()
    {
        RecoveryTest r;
        EditFixture f(QByteArray::fromHex("fffe61000d000a00"), "b\n", &r.store);
        QGuiApplication::clipboard()->setText(word("pasted\n"));
        f.session.useClipboardText(Side::Right);
        f.wait();
        f.typeAt(Side::Left, 1, word("x"));
        const auto record = r.recordOf("xa\r\n");
        QVERIFY(record);
        QCOMPARE(record->texts.size(), 2); // nobody else has the pasted text

        RecoveryTest later;
        SessionFixture again(&later.store);
        recover(again, *record);
        QVERIFY(later.recordOf("xa\r\n"));
        QVERIFY(again.session.hasUnsavedChanges());
        QCOMPARE(again.session.paths(), (SessionPaths{f.left, word("[Clipboard]"), {}}));
        QCOMPARE(again.text(Side::Left, 0), word("xa"));
        QCOMPARE(again.text(Side::Right, 0), word("pasted"));

        again.session.onSaveLeft();
        QTRY_VERIFY(!again.session.hasUnsavedChanges());
        QCOMPARE(contentsOf(f.left), QByteArray::fromHex("fffe780061000d000a00"));
        QTRY_COMPARE(later.files(), QStringList());
    }

    /// As when the program ended between the two: the file is saved, and its record is still there.
    void aTextThatIsSavedByNowIsNotUnsaved()
    {
        RecoveryTest r;
        EditFixture f(QByteArray::fromHex("fffe61000d000a00"), "b\n", &r.store);
        f.typeAt(Side::Left, 1, word("x"));
        f.typeAt(Side::Right, 1, word("y"));
        std::optional<RecoveryRecord> record;
        QVERIFY(QTest::qWaitFor(
            [&] { return (record = r.recordOf("xa\r\n")) && record->texts.value(1) == QByteArray("yb\n"); }, 30000));
        f.save(Side::Left);
        QVERIFY(holdsUnsavedText(*record));
        SessionFixture again;
        again.session.recover(*record, [] {});
        again.wait();
        QCOMPARE(again.text(Side::Left, 0), word("xa"));
        QVERIFY(!again.session.canEdit(EditCommand::UndoLeft));
        QVERIFY(again.session.hasUnsavedChanges());

        f.save(Side::Right);
        QVERIFY(!holdsUnsavedText(*record));
        RecoveryTest later;
        SessionFixture both(&later.store);
        recover(both, *record);
        QVERIFY(!both.session.hasUnsavedChanges());
        QCOMPARE(later.files(), QStringList());
    }

    void bringsBackATextWhoseFileIsGone()
    {
        UnsavedFixture f("a\n", "xa\n");
        QVERIFY(QFile::remove(f.left) && QFile::remove(f.right));
        SessionFixture again;
        again.session.recover(*f.record, [] {});
        again.wait();
        QVERIFY(again.session.hasUnsavedChanges());
        QCOMPARE(again.text(Side::Left, 0), word("xa"));
        again.dialogs.answerNumber(1); // write it anew
        again.session.onSaveLeft();
        QTRY_VERIFY(!again.session.hasUnsavedChanges());
        QCOMPARE(contentsOf(f.left), QByteArray("xa\n"));
    }

    void refusesARecordThatIsNoneOfItsOwn()
    {
        UnsavedFixture f("a\n", "xa\n");
        RecoveryRecord otherKind = *f.record;
        otherKind.description[word("kind")] = word("table");
        RecoveryRecord fewerTexts = *f.record;
        fewerTexts.texts.clear();
        RecoveryRecord noText = *f.record;
        noText.texts.first() = "\xFF\n";
        RecoveryRecord oddTexts = *f.record;
        oddTexts.description[word("texts")] = QJsonArray{1};
        for (const RecoveryRecord &bad : {otherKind, fewerTexts, noText}) {
            SessionFixture again;
            again.session.recover(bad, [] { QFAIL("kept what it cannot show"); });
            again.wait();
            QVERIFY(!again.scene().document());
        }
        SessionFixture again;
        again.session.recover(oddTexts, [] {});
        again.wait(); // shows what can be shown
    }
};

VELMORA_TEST(TextRecoveryTest)
#include "text_recovery_test.moc"
