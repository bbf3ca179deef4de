#include "core/save_probe.h"
#include "core/workers.h"
#include "edit_fixture.h"
#include "support/test_main.h"

#include <QAction>
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QSemaphore>
#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;

namespace {

enum Answer { Cancel, Save, Discard };

/// Holds every save before its last step until it is let go.
class HeldSave {
public:
    HeldSave()
    {
        installSaveProbe([this](SaveStep step) {
            if (step == SaveStep::Replace) {
                m_arrived.release();
                m_free.acquire();
            }
            return true;
        });
    }
    ~HeldSave()
    {
        m_free.release(100);
        installSaveProbe({});
    }
    bool waitForArrival() { return m_arrived.tryAcquire(1, 30000); }
    void letGo() { m_free.release(); }

private:
    QSemaphore m_arrived;
    QSemaphore m_free;
};

} // namespace

class TextSavingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { installSaveProbe({}); }

    // Failures -------------------------------------------------------------------------------------------------------

    void keepsFileAndEditsWhateverStepFails()
    {
        EditFixture f("old\n", "b\n");
        f.typeAt(Side::Left, 1, word("x"));
        int failures = 0;
        for (;; ++failures) {
            int left = failures;
            installSaveProbe([&left](SaveStep) { return left-- > 0; });
            f.save(Side::Left);
            installSaveProbe({});
            if (!f.session.hasUnsavedChanges())
                break;
            QCOMPARE(f.dialogs.asked().size(), failures + 1);
            QCOMPARE(f.dialogs.asked().last().title, word("Save failed"));
            const QString why = word("Cannot write file: %1\n\n").arg(QDir::toNativeSeparators(f.left));
            QVERIFY2(f.question().startsWith(why) && f.question() != why, "the system's reason is told");
            QCOMPARE(contentsOf(f.left), QByteArray("old\n"));
            QCOMPARE(entriesOf(f.folder.path()).size(), 2);
            QVERIFY2(failures < 20, "never succeeds");
        }
        QCOMPARE(failures, 5);
        QCOMPARE(contentsOf(f.left), QByteArray("xold\n"));
    }

    void keepsTheEditsWhenFileOrFolderAreGone()
    {
        EditFixture f("a\n", "b\n");
        QVERIFY(QDir(f.folder.path()).mkdir(word("sub")));
        const QString inner = f.file("sub/inner.txt", "inner\n");
        f.compare(inner, f.right);
        f.typeAt(Side::Left, 1, word("x"));
        QVERIFY(QFile::remove(inner));
        f.save(Side::Left);
        QCOMPARE(f.question(),
                 word("This file is no longer there:\n%1\n\nWrite it anew?").arg(QDir::toNativeSeparators(inner)));
        QVERIFY(!QFileInfo::exists(inner));

        f.dialogs.answerNumber(1);
        f.save(Side::Left);
        f.waitForSave();
        QCOMPARE(contentsOf(inner), QByteArray("xinner\n"));
        QVERIFY(!f.session.hasUnsavedChanges());

        f.typeAt(Side::Left, 1, word("y"));
        QVERIFY(QDir(f.path("sub")).removeRecursively());
        if (QFileInfo::exists(f.path("sub")))
            QSKIP("a folder that is watched stays until it is watched no longer");
        f.dialogs.answerNumber(1);
        f.save(Side::Left);
        f.waitForSave();
        QVERIFY(f.dialogs.titles().contains(word("Save failed"))); // and that it has gone, where that is noticed by now
        QVERIFY(f.session.hasUnsavedChanges());
        QCOMPARE(f.text(Side::Left, 0), word("yxinner"));
    }

    void writesOverWhatOthersWroteOnlyWhenTold()
    {
        EditFixture f("a\n", "b\n");
        f.typeAt(Side::Left, 1, word("x"));
        f.file("left.txt", "somebody else's\n");
        f.save(Side::Left);
        QCOMPARE(f.dialogs.asked().last().title, word("External file changed"));
        QVERIFY(f.question().endsWith(word("Write over it?")));
        QCOMPARE(contentsOf(f.left), QByteArray("somebody else's\n"));
        QVERIFY(f.session.hasUnsavedChanges());
        f.dialogs.answerNumber(1);
        f.save(Side::Left);
        f.waitForSave();
        QCOMPARE(contentsOf(f.left), QByteArray("xa\n"));
        f.save(Side::Left); // what was written is known
        QCOMPARE(f.dialogs.asked().size(), 2);

        // A file that was not there when the side was compared as missing.
        const QString late = f.path("late.txt");
        f.compare(late, f.right);
        f.typeAt(Side::Left, 1, word("mine"));
        f.file("late.txt", "theirs\n");
        f.save(Side::Left);
        QCOMPARE(f.dialogs.asked().last().title, word("External file changed"));
        QCOMPARE(contentsOf(late), QByteArray("theirs\n"));
    }

    void stopsBeforeACharacterThatTheEncodingLacks()
    {
        EditFixture f("ascii\n", "caf\xE9 d\xE9j\xE0 vu na\xEFve\nsecond\n");
        f.typeAt(Side::Right, 2, word("ab"));
        QInputMethodEvent commit;
        commit.setCommitString(word("\u4f60"));
        QCoreApplication::sendEvent(&f.pane(Side::Right), &commit);
        const QByteArray before = contentsOf(f.right);
        f.save(Side::Right);
        QCOMPARE(f.dialogs.titles().last(), word("Save failed"));
        const QString text = f.question();
        QVERIFY2(text.contains(word("Line 2")) && text.contains(word("U+4F60")), qPrintable(text));
        QCOMPARE(contentsOf(f.right), before);
        QVERIFY(f.session.hasUnsavedChanges());
    }

    void aFailedSaveGoesToAnotherFile()
    {
        EditFixture f("a\n", "b\n");
        f.typeAt(Side::Left, 1, word("x"));
        bool fails = true;
        installSaveProbe([&fails](SaveStep) { return !std::exchange(fails, false); });
        const QString other = f.path("other.txt");
        f.dialogs.answerNumber(1);
        f.dialogs.answerPath(other);
        QSignalSpy titles(&f.session, &SessionWidget::tabTitleChanged);
        f.save(Side::Left);
        QTRY_COMPARE(contentsOf(other), QByteArray("xa\n"));
        f.waitForSave();
        QCOMPARE(contentsOf(f.left), QByteArray("a\n"));
        QCOMPARE(f.session.paths().left, other);
        QCOMPARE(titles.last().first().toString(), word("other.txt <-> right.txt"));
        QVERIFY(!f.session.hasUnsavedChanges());
    }

    // What is written ------------------------------------------------------------------------------------------------

    void anUnmodifiedSideIsNeitherWrittenNorCalledSaved()
    {
        EditFixture f("a\n", "b\n");
        installSaveProbe([](SaveStep) { return false; });
        f.save(Side::Right);
        QCOMPARE(f.status(), word("The right side has no unsaved changes"));
        QVERIFY(f.dialogs.asked().isEmpty());
    }

    void savesAllSidesThatAreChanged()
    {
        EditFixture f("a\n", "b\n");
        f.typeAt(Side::Left, 1, word("x"));
        f.typeAt(Side::Right, 1, word("y"));
        f.child<QAction>("saveAllAction")->trigger();
        QTRY_VERIFY(!f.session.hasUnsavedChanges());
        QCOMPARE(contentsOf(f.left) + contentsOf(f.right), QByteArray("xa\nyb\n"));
    }

    void theChosenLineEndsAreWritten()
    {
        EditFixture f("a\r\nb\n", "a\nb\n");
        const QString other = f.path("other.txt");
        f.dialogs.answerPath(other);
        f.child<QAction>("saveLeftAsAction")->trigger(); // nothing is chosen: each line keeps its own
        f.waitForSave();
        QCOMPARE(contentsOf(other), QByteArray("a\r\nb\n"));
        f.setOptions(R"({"leftEol": "CRLF"})");
        f.session.start();
        f.wait();
        QVERIFY(!f.session.hasUnsavedChanges());
        f.save(Side::Left);
        f.save(Side::Right);
        QCOMPARE(contentsOf(other), QByteArray("a\r\nb\r\n"));
        QCOMPARE(contentsOf(f.right), QByteArray("a\r\nb\r\n"));
        QCOMPARE(f.format(), word("Left: UTF-8 [CRLF] | Right: UTF-8 [CRLF]"));
        f.session.edit(EditCommand::UndoRight);
        QVERIFY(f.session.hasUnsavedChanges());
    }

    // Meanwhile ------------------------------------------------------------------------------------------------------

    void whatIsTypedDuringASaveStaysUnsaved()
    {
        EditFixture f("a\n", "b\n");
        const auto *button = f.child<QAction>("saveLeftAction");
        f.typeAt(Side::Left, 1, word("x"));
        HeldSave held;
        f.session.onSaveLeft();
        QVERIFY(held.waitForArrival());
        QTest::keyClicks(&f.pane(Side::Left), word("y")); // would be one step with the "x"
        held.letGo();
        f.waitForSave();
        QCOMPARE(contentsOf(f.left), QByteArray("xa\n"));
        QVERIFY(f.session.hasUnsavedChanges());
        QVERIFY(button->isEnabled());
        f.session.edit(EditCommand::UndoLeft);
        QVERIFY(!f.session.hasUnsavedChanges());
        QCOMPARE(f.text(Side::Left, 0), word("xa"));
        f.session.edit(EditCommand::RedoLeft);
        QVERIFY(f.session.hasUnsavedChanges());
        held.letGo();
        f.save(Side::Left);
        QCOMPARE(contentsOf(f.left), QByteArray("xya\n"));
    }

    void whatGivesTheTextUpWaitsForTheSave()
    {
        EditFixture f("a\n", "b\n");
        const QString other = f.file("other.txt", "o\n");
        f.typeAt(Side::Left, 1, word("x"));
        HeldSave held;
        f.session.onSaveLeft();
        QVERIFY(held.waitForArrival());
        QVERIFY(f.session.isSaving());
        f.session.setPaths({other, f.right, {}});
        f.session.onCompare();
        f.session.onReloadBoth();
        f.confirmClose();
        QVERIFY(!f.closeAnswer);
        QVERIFY(!f.session.isComparing());
        held.letGo();
        f.waitForSave();
        QCOMPARE(f.closeAnswer, true);
        f.wait();
        QVERIFY(f.dialogs.asked().isEmpty()); // nothing was unsaved any more
        QCOMPARE(contentsOf(f.left), QByteArray("xa\n"));
        QCOMPARE(f.text(Side::Left, 0), word("o"));
    }

    void goingAwayDuringASaveFinishesIt()
    {
        QTemporaryDir elsewhere;
        const QString target = elsewhere.filePath(word("target.txt"));
        QVERIFY(makeFile(target, {}));
        auto f = std::make_unique<EditFixture>("a\n", "b\n");
        f->compare(target, f->right);
        f->typeAt(Side::Left, 1, QString(1000, u'x'));
        HeldSave held;
        f->session.onSaveLeft();
        QVERIFY(held.waitForArrival());
        f.reset(); // with the save under way, which is not waited for
        held.letGo();
        QVERIFY(joinWorkers(workersPatience));
        QCOMPARE(contentsOf(target).trimmed(), QByteArray(1000, 'x'));
    }

    // Closing --------------------------------------------------------------------------------------------------------

    void asksForEachSideBeforeItCloses()
    {
        EditFixture f("a\n", "b\n");
        f.confirmClose();
        QCOMPARE(f.closeAnswer, true);
        QVERIFY(f.dialogs.asked().isEmpty());

        f.typeAt(Side::Left, 1, word("x"));
        f.typeAt(Side::Right, 1, word("y"));
        f.dialogs.answerNumber(Save);
        f.dialogs.answerNumber(Cancel);
        f.confirmClose();
        QTRY_COMPARE(f.closeAnswer, false);
        QCOMPARE(f.dialogs.titles(), QStringList(2, word("Unsaved changes")));
        QVERIFY(f.dialogs.asked().first().text.contains(QDir::toNativeSeparators(f.left)));
        QVERIFY(f.question().contains(QDir::toNativeSeparators(f.right)));
        QCOMPARE(contentsOf(f.left), QByteArray("xa\n"));
        QCOMPARE(contentsOf(f.right), QByteArray("b\n"));
        QVERIFY(f.session.hasUnsavedChanges());

        installSaveProbe([](SaveStep) { return false; });
        f.dialogs.answerNumber(Save);
        f.confirmClose();
        QTRY_COMPARE(f.closeAnswer, false);
        QCOMPARE(f.dialogs.titles().last(), word("Save failed"));
        QVERIFY(f.session.hasUnsavedChanges());

        f.dialogs.answerNumber(Discard);
        f.confirmClose();
        QCOMPARE(f.closeAnswer, true);
        QCOMPARE(contentsOf(f.right), QByteArray("b\n"));
        QVERIFY2(f.session.hasUnsavedChanges(), "another session may still keep the window open");
    }

    void aPastedTextReplacesEditsOnlyWhenTold()
    {
        EditFixture f("a\n", "b\n");
        QGuiApplication::clipboard()->setText(word("pasted\n"));
        f.typeAt(Side::Left, 1, word("x"));
        f.session.useClipboardText(Side::Left);
        QCOMPARE(f.question(), word("The left side has unsaved changes. Discard them?"));
        QVERIFY(f.session.hasUnsavedChanges());
        QCOMPARE(f.session.paths().left, f.left);
        f.dialogs.answerNumber(1);
        f.session.useClipboardText(Side::Left);
        f.wait();
        QCOMPARE(f.text(Side::Left, 0), word("pasted"));
        QCOMPARE(contentsOf(f.left), QByteArray("a\n"));
    }

    /// The path above an edited text may name the next file already.
    void savesToTheFileThatTheTextIsFrom()
    {
        EditFixture f("a\n", "b\n");
        const QString next = f.file("next.txt", "next\n");
        f.typeAt(Side::Left, 1, word("x"));
        f.session.setPaths({next, f.right, {}});
        f.save(Side::Left);
        QCOMPARE(contentsOf(f.left), QByteArray("xa\n"));
        QCOMPARE(contentsOf(next), QByteArray("next\n"));
        QCOMPARE(f.session.paths().left, next);
    }

    void aTextWithoutAFileAsksForItsName()
    {
        EditFixture f("a\n", "b\n");
        QGuiApplication::clipboard()->setText(word("from elsewhere\n"));
        f.session.useClipboardText(Side::Right);
        f.wait();
        f.typeAt(Side::Right, 1, word("x"));
        f.dialogs.answerNumber(Save);
        f.dialogs.answerNothing();
        f.confirmClose();
        QVERIFY2(!f.closeAnswer, "turned away");
        QVERIFY(f.session.hasUnsavedChanges());

        const QString path = f.path("new\u202E.txt");
        f.dialogs.answerNumber(Save);
        f.dialogs.answerPath(path);
        f.confirmClose();
        QTRY_COMPARE(f.closeAnswer, true);
        QCOMPARE(contentsOf(path), QByteArray("xfrom elsewhere\n"));
        QCOMPARE(f.session.paths().right, path);
        QVERIFY2(f.status().endsWith(word("new[RLO].txt")), qPrintable(f.status()));
    }
};

VELMORA_TEST(TextSavingTest)
#include "text_saving_test.moc"
