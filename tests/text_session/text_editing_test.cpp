#include "edit_fixture.h"
#include "support/test_main.h"
#include "text/text_compare_bar.h"

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QSplitter>

using namespace velmora;
using namespace velmora::test;

class TextEditingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void refusesToChangeLockedAndReadOnlySides()
    {
        EditFixture f("a\n", "b\n");
        f.session.setEditingEnabled(false);
        f.put(Side::Left, {0, 0});
        QTest::keyClicks(&f.pane(Side::Left), word("x"));
        QTest::keyClick(&f.pane(Side::Left), Qt::Key_Delete);
        QVERIFY2(f.status().contains(word("locked")), qPrintable(f.status()));
        QVERIFY(!f.session.hasUnsavedChanges());

        // Bytes that saving would lose, and a side that the options protect.
        for (const char *option : {R"({"leftEncoding": "UTF-8"})", R"({"leftReadOnly": true})"}) {
            EditFixture other("damaged \xFF line\n", "x\n");
            other.setOptions(option);
            other.session.start();
            other.wait();
            other.put(Side::Left, {0, 0});
            QTest::keyClicks(&other.pane(Side::Left), word("y"));
            QVERIFY(!other.session.hasUnsavedChanges());
            QVERIFY2(other.status().startsWith(word("This side ")), qPrintable(other.status()));
            other.session.setEditingEnabled(false);
            other.session.onArrowCopyRightToLeft(0);
            QVERIFY2(!other.session.isEditingEnabled(), "nothing to unlock for");
            other.save(Side::Left);
            QCOMPARE(contentsOf(other.left), QByteArray("damaged \xFF line\n"));
        }
    }

    void typesErasesAndUndoesByKeys()
    {
        EditFixture f("alpha\r\nbeta\r\n", "alpha\r\nbeta\r\n");
        TextPane &pane = f.pane(Side::Left);
        f.put(Side::Left, {0, 5});
        QTest::keyClicks(&pane, word(" one"));
        f.press(Side::Left, "Return|Tab");
        QTest::keyClicks(&pane, word("two words"));
        f.press(Side::Left, "Ctrl+Backspace|Backspace");
        QCOMPARE(f.picture(), word("~alpha one|alpha,-\ttwo|-,=beta|beta"));
        f.press(Side::Left, "Del"); // joins the lines
        QVERIFY(f.picture().contains(word("~\ttwobeta|beta")) || f.picture().contains(word("-\ttwobeta|-")));
        QVERIFY(f.session.canEdit(EditCommand::Undo));
        QVERIFY(!f.session.canEdit(EditCommand::UndoRight));
        f.save(Side::Left);
        QCOMPARE(contentsOf(f.left), QByteArray("alpha one\r\n\ttwobeta\r\n"));
        for (int k = 0; k < 20 && f.session.canEdit(EditCommand::UndoLeft); ++k)
            f.session.edit(EditCommand::UndoLeft);
        QCOMPARE(f.picture(), word("=alpha|alpha,=beta|beta"));
        QCOMPARE(f.scene().caret().position, (TextPosition{0, 5}));
        QVERIFY(f.session.hasUnsavedChanges()); // the file has the edits
    }

    /// Rows in which this side has no line.
    void keysBetweenLinesPutLinesIn()
    {
        EditFixture f("a\nb\n", "a\nnew\nb\n");
        for (const char *key : {"Backspace", "Del"}) {
            f.put(Side::Left, {1, 0});
            f.press(Side::Left, key);
            QVERIFY(!f.session.hasUnsavedChanges()); // there is nothing to remove
        }
        f.put(Side::Left, {1, 0});
        f.press(Side::Left, "Return");
        QCOMPARE(f.text(Side::Left, 1), QString());
        QCOMPARE(f.scene().document()->source(Side::Left).count(), 3);
    }

    void cutsPastesAndTakesInputMethods()
    {
        EditFixture f("one\ntwo\nthree\n", "one\ntwo\nthree\n");
        TextPane &pane = f.pane(Side::Right);
        f.put(Side::Right, {0, 1}, {2, 2});
        f.press(Side::Right, "Ctrl+X");
        QCOMPARE(QGuiApplication::clipboard()->text(), word("ne\ntwo\nth"));
        QCOMPARE(f.scene().document()->source(Side::Right).count(), 1);
        f.press(Side::Right, "Ctrl+V");
        QCOMPARE(f.picture(), word("=one|one,=two|two,=three|three"));

        QInputMethodEvent preedit(word("ni"), {});
        QCoreApplication::sendEvent(&pane, &preedit);
        QCOMPARE(f.rows().last(), word("=three|three"));
        QInputMethodEvent commit;
        commit.setCommitString(word("\u4f60"));
        QCoreApplication::sendEvent(&pane, &commit);
        QCOMPARE(f.scene().document()->text(2, Side::Right), word("th\u4f60ree"));
    }

    void writesIntoAnEmptySide()
    {
        EditFixture f("", "b\n");
        f.put(Side::Left, {0, 0});
        QTest::keyClicks(&f.pane(Side::Left), word("b"));
        QCOMPARE(f.picture(), word("=b|b"));
        f.save(Side::Left);
        QCOMPARE(contentsOf(f.left), QByteArray("b\n"));
    }

    void comparesTheWholeAgainAndKeepsTheCaret()
    {
        const QByteArray text = numberedLines(300);
        EditFixture f(text, text);
        f.scene().goToLine(Side::Left, 200);
        f.put(Side::Left, {199, 3});
        const auto top = f.scene().top();
        QTest::keyClicks(&f.pane(Side::Left), word("zzz"));
        QCOMPARE(f.session.view().document()->kind(198), Equal);
        QTRY_VERIFY_WITH_TIMEOUT(f.diffs() == 1 || f.diffs() == 2, 10000);
        QVERIFY(f.scene().top() == top);
        QCOMPARE(f.scene().caret().position.unit, 6);
        QCOMPARE(f.scene().document()->lineNumber(f.scene().caret().position.row, Side::Left), 200);
        QVERIFY(f.session.canEdit(EditCommand::Undo));
        f.session.start(); // comparing by hand compares the edited text and keeps the undo steps
        f.wait();
        QVERIFY(f.session.hasUnsavedChanges());
        f.session.edit(EditCommand::Undo);
        QVERIFY(!f.session.hasUnsavedChanges());
        QCOMPARE(f.scene().layout().blockCount(), 0);
    }

    void copiesByAClickOnAnArrow()
    {
        EditFixture f("same\nleft line\n", "same\nleft lime\n");
        QWidget *handle = f.child<QSplitter>("diffSplitter")->handle(1);
        const auto *save = f.child<QAction>("saveRightAction");
        QVERIFY(!save->isEnabled());
        const int y = f.scene().layout().rowHeight() * 3 / 2;
        QTest::mouseClick(handle, Qt::LeftButton, {}, {handle->width() - 5, y});
        QCOMPARE(f.picture(), word("=same|same,=left line|left line"));
        QVERIFY(save->isEnabled());
        QVERIFY2(f.session.focusWidget() == &f.pane(Side::Right), "undo and save are for the side that was changed");
        QTest::keyClick(f.session.focusWidget(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!save->isEnabled());
        QTest::mouseClick(handle, Qt::LeftButton, {}, {4, y});
        QCOMPARE(f.picture(), word("=same|same,=left lime|left lime"));
    }

    void copiesDifferencesEachAsOneStep()
    {
        EditFixture f("a\nnew 1\nnew 2\nb\nsame word here\n", "a\nb\nsame word there\nextra\n");
        f.session.setEditingEnabled(false);
        QSignalSpy state(&f.session, &SessionWidget::editStateChanged);
        f.session.onArrowCopyLeftToRight(1);
        QVERIFY2(f.session.isEditingEnabled(), "copying unlocks");
        QVERIFY(!state.isEmpty());
        QCOMPARE(f.rows().mid(0, 4).join(u','), word("=a|a,=new 1|new 1,=new 2|new 2,=b|b"));
        f.session.onNextDiff();
        f.session.onNextDiff();
        const qsizetype block = f.scene().layout().block(0).first;
        f.session.onArrowCopyRightToLeft(int(block));
        QCOMPARE(f.scene().layout().blockCount(), 0);
        QCOMPARE(f.rows().last(), word("=extra|extra"));
        f.session.edit(EditCommand::UndoLeft);
        f.session.edit(EditCommand::UndoRight);
        QVERIFY(!f.session.hasUnsavedChanges());
        f.put(Side::Left, {1, 0}, {2, 0}); // the first of two added lines
        f.session.onCopyLeftToRight();
        QCOMPARE(f.scene().document()->source(Side::Right).count(), 5);
        QCOMPARE(f.text(Side::Right, 1), word("new 1"));
    }

    // Files -----------------------------------------------------------------------------------------------------------

    void asksBeforeEditsAreLost()
    {
        EditFixture f("a\n", "b\n");
        f.typeAt(Side::Left, 1, word("x"));
        f.session.onReloadRight();
        f.wait();
        QVERIFY(f.dialogs.asked().isEmpty());
        QVERIFY(f.session.hasUnsavedChanges());
        f.session.onReloadLeft();
        QCOMPARE(f.question(), word("The left side has unsaved changes. Reload from disk?"));
        QVERIFY(f.session.hasUnsavedChanges());
        f.typeAt(Side::Right, 1, word("y"));
        f.session.onReloadBoth();
        QCOMPARE(f.question(), word("There are unsaved changes. Reload both sides from disk?"));
        f.session.setPaths({f.file("other", "o\n"), f.right, {}});
        f.session.onCompare();
        QCOMPARE(f.dialogs.asked().last().title, word("Unsaved changes"));
        QVERIFY(f.session.hasUnsavedChanges());
    }

    void aFileThatChangesOnDiskIsToldOfAtOnceAndLosesNoEdits()
    {
        EditFixture f("a\n", "b\n");
        const auto *bar = f.child<QWidget>("changeBar");
        QVERIFY(!bar->isVisible());
        for (const char *text : {"theirs\n", "theirs again\n"}) { // each by a file that takes its place
            const QString beside = f.file("beside", text);
            QVERIFY(QFile::remove(f.right) && QFile::rename(beside, f.right));
            QTRY_VERIFY(bar->isVisible());
            QVERIFY(f.label("changeBarText").contains(QDir::toNativeSeparators(f.right)));
            f.child<QAbstractButton>("changeBarAction")->click();
            f.wait();
            QVERIFY(!bar->isVisible());
            QCOMPARE(f.text(Side::Right, 0) + u'\n', QString::fromUtf8(text));
        }
        f.typeAt(Side::Left, 1, word("x"));
        f.file("left.txt", "other\n");
        QTRY_VERIFY(bar->isVisible());
        f.child<QAbstractButton>("changeBarAction")->click(); // a question, and no answer
        QCOMPARE(f.question(), word("The left side has unsaved changes. Reload from disk?"));
        QVERIFY(f.session.hasUnsavedChanges() && bar->isVisible());
        f.child<QAbstractButton>("changeBarClose")->click();
        QVERIFY(!bar->isVisible());
        f.dialogs.answerNumber(1);
        f.save(Side::Left); // writes over it, and is no news
        f.waitForSave();
        QVERIFY(!QTest::qWaitFor([bar] { return bar->isVisible(); }, 500));
        QVERIFY(QFile::remove(f.left));
        QTRY_VERIFY(bar->isVisible() && f.label("changeBarText").contains(word("no longer")));
    }

    void swapsWithEdits()
    {
        EditFixture f("a\n", "b\n");
        f.typeAt(Side::Left, 1, word("x"));
        QSignalSpy titles(&f.session, &SessionWidget::tabTitleChanged);
        f.session.onSwapSides();
        f.wait();
        QCOMPARE(f.text(Side::Right, 0), word("xa"));
        QCOMPARE(titles.last().first().toString(), word("right.txt <-> *left.txt"));
        f.save(Side::Right);
        QCOMPARE(contentsOf(f.left), QByteArray("xa\n"));
    }
};

VELMORA_TEST(TextEditingTest)
#include "text_editing_test.moc"
