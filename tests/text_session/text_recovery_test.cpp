#include "core/recovery_store.h"
#include "edit_fixture.h"
#include "support/test_main.h"
#include "text/text_recovery.h"

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
        QDirIterator all(folder.path(), {QStringLiteral("*.unsaved")}, QDir::Files, QDirIterator::Subdirectories);
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

} // namespace

class TextRecoveryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsWhatIsUnsavedAndNothingElse()
    {
        RecoveryTest r;
        EditFixture f("a\r\nb", "b\n", &r.store);
        f.typeAt(Side::Left, 1, QStringLiteral("x"));
        const auto record = r.recordOf("xa\r\nb");
        QVERIFY(record);
        QCOMPARE(record->texts.size(), 1);
        QCOMPARE(record->description.value(QStringLiteral("left")).toString(), f.left);
        QCOMPARE(contentOf(f.left), QByteArray("a\r\nb"));

        QTest::keyClicks(&f.pane(Side::Left), QStringLiteral("y"));
        QVERIFY(r.recordOf("xya\r\nb"));
        f.save(Side::Left);
        QTRY_COMPARE(r.files(), QStringList());

        f.typeAt(Side::Right, 1, QStringLiteral("z"));
        QVERIFY(r.recordOf("zb\n"));
        f.session.edit(EditCommand::UndoRight);
        QTRY_COMPARE(r.files(), QStringList());
    }

    void keepsItLaterWhatCannotBeKeptNow()
    {
        RecoveryTest r;
        EditFixture f("a\n", "b\n", &r.store);
        f.typeAt(Side::Left, 1, QStringLiteral("x"));
        QVERIFY(r.recordOf("xa\n"));
        const QString file = r.files().constFirst();
        QVERIFY(QFile::remove(file) && QDir().mkdir(file));
        QTest::keyClicks(&f.pane(Side::Left), QStringLiteral("y"));
        QTRY_VERIFY(f.status().startsWith(QStringLiteral("Unsaved changes cannot be kept for a restart: ")));
        QVERIFY(QDir().rmdir(file));
        QVERIFY(r.recordOf("xya\n"));
    }

    void goesWithItsSession()
    {
        RecoveryTest r;
        auto f = std::make_unique<EditFixture>("a\n", "b\n", &r.store);
        f->typeAt(Side::Left, 1, QStringLiteral("x"));
        QVERIFY(r.recordOf("xa\n"));
        QTest::keyClicks(&f->pane(Side::Left), QStringLiteral("y"));
        f.reset();
        QCOMPARE(r.files(), QStringList());
    }

    void bringsBackBothSidesWithWhatBelongsToThem()
    {
        RecoveryTest r;
        EditFixture f(QByteArray::fromHex("fffe61000d000a00"), "b\n", &r.store);
        QGuiApplication::clipboard()->setText(QStringLiteral("pasted\n"));
        f.session.useClipboardText(Side::Right);
        f.wait();
        f.typeAt(Side::Left, 1, QStringLiteral("x"));
        const auto record = r.recordOf("xa\r\n");
        QVERIFY(record);
        QCOMPARE(record->texts.size(), 2); // nobody else has the pasted text

        RecoveryTest later;
        SessionFixture again(&later.store);
        bool kept = false;
        again.session.recover(*record, [&kept] { kept = true; });
        QTRY_VERIFY(kept);
        QVERIFY(later.recordOf("xa\r\n"));
        QVERIFY(again.session.hasUnsavedChanges());
        QCOMPARE(again.session.paths(), (SessionPaths{f.left, QStringLiteral("[Clipboard]"), {}}));
        const DiffDocument &document = *again.scene().document();
        QCOMPARE(document.source(Side::Left).text(0), QStringLiteral("xa"));
        QCOMPARE(document.source(Side::Right).text(0), QStringLiteral("pasted"));

        again.session.onSaveLeft();
        QTRY_VERIFY(!again.session.hasUnsavedChanges());
        QCOMPARE(contentOf(f.left), QByteArray::fromHex("fffe780061000d000a00"));
        QTRY_COMPARE(later.files(), QStringList());
    }

    /// As when the program ended between the two: the file is saved, and its record is still there.
    void aTextThatIsSavedByNowIsNotUnsaved()
    {
        RecoveryTest r;
        EditFixture f(QByteArray::fromHex("fffe61000d000a00"), "b\n", &r.store);
        f.typeAt(Side::Left, 1, QStringLiteral("x"));
        f.typeAt(Side::Right, 1, QStringLiteral("y"));
        std::optional<RecoveryRecord> record;
        QVERIFY(QTest::qWaitFor(
            [&] { return (record = r.recordOf("xa\r\n")) && record->texts.value(1) == QByteArray("yb\n"); }, 30000));
        f.save(Side::Left);
        QVERIFY(holdsUnsavedText(*record));
        SessionFixture again;
        again.session.recover(*record, [] {});
        again.wait();
        QCOMPARE(again.scene().document()->source(Side::Left).text(0), QStringLiteral("xa"));
        QVERIFY(!again.session.canEdit(EditCommand::UndoLeft));
        QVERIFY(again.session.hasUnsavedChanges());

        f.save(Side::Right);
        QVERIFY(!holdsUnsavedText(*record));
        RecoveryTest later;
        SessionFixture both(&later.store);
        bool kept = false;
        both.session.recover(*record, [&kept] { kept = true; });
        QTRY_VERIFY(kept);
        QVERIFY(!both.session.hasUnsavedChanges());
        QCOMPARE(later.files(), QStringList());
    }

    void bringsBackATextWhoseFileIsGone()
    {
        RecoveryTest r;
        EditFixture f("a\n", "b\n", &r.store);
        f.typeAt(Side::Left, 1, QStringLiteral("x"));
        const auto record = r.recordOf("xa\n");
        QVERIFY(record);
        QVERIFY(QFile::remove(f.left) && QFile::remove(f.right));
        SessionFixture again;
        again.session.recover(*record, [] {});
        again.wait();
        QVERIFY(again.session.hasUnsavedChanges());
        QCOMPARE(again.scene().document()->source(Side::Left).text(0), QStringLiteral("xa"));
        again.dialogs.answerNumber(1); // write it anew
        again.session.onSaveLeft();
        QTRY_VERIFY(!again.session.hasUnsavedChanges());
        QCOMPARE(contentOf(f.left), QByteArray("xa\n"));
    }

    void refusesARecordThatIsNoneOfItsOwn()
    {
        RecoveryTest r;
        EditFixture f("a\n", "b\n", &r.store);
        f.typeAt(Side::Left, 1, QStringLiteral("x"));
        const auto record = r.recordOf("xa\n");
        QVERIFY(record);
        RecoveryRecord otherKind = *record;
        otherKind.description[QStringLiteral("kind")] = QStringLiteral("table");
        RecoveryRecord fewerTexts = *record;
        fewerTexts.texts.clear();
        RecoveryRecord noText = *record;
        noText.texts.first() = "\xFF\n";
        RecoveryRecord oddSides = *record;
        oddSides.description[QStringLiteral("sides")] = QJsonArray{1};
        for (const RecoveryRecord &bad : {otherKind, fewerTexts, noText}) {
            SessionFixture again;
            again.session.recover(bad, [] { QFAIL("kept what it cannot show"); });
            again.wait();
            QVERIFY(!again.scene().document());
        }
        SessionFixture again;
        again.session.recover(oddSides, [] {});
        again.wait(); // shows what can be shown
    }
};

VELMORA_TEST(TextRecoveryTest)
#include "text_recovery_test.moc"
