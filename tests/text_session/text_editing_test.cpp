#include "edit_fixture.h"
#include "support/test_main.h"
#include "text/text_compare_bar.h"

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QJsonObject>
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
        QTest::keyClicks(&f.pane(Side::Left), QStringLiteral("x"));
        QTest::keyClick(&f.pane(Side::Left), Qt::Key_Delete);
        QVERIFY2(f.status().contains(QStringLiteral("locked")), qPrintable(f.status()));
        QVERIFY(!f.session.hasUnsavedChanges());

        // Bytes that saving would lose, and a side that the options protect.
        for (const auto &[option, value] :
             {std::pair(QStringLiteral("leftEncoding"), QJsonValue(QStringLiteral("UTF-8"))),
              std::pair(QStringLiteral("leftReadOnly"), QJsonValue(true))}) {
            EditFixture other("damaged \xFF line\n", "x\n");
            QJsonObject options = other.session.options();
            options[option] = value;
            other.session.setOptions(options);
            other.session.start();
            other.wait();
            other.put(Side::Left, {0, 0});
            QTest::keyClicks(&other.pane(Side::Left), QStringLiteral("y"));
            QVERIFY(!other.session.hasUnsavedChanges());
            QVERIFY2(other.status().startsWith(QStringLiteral("This side ")), qPrintable(other.status()));
            other.session.setEditingEnabled(false);
            other.session.onArrowCopyRightToLeft(0);
            QVERIFY2(!other.session.isEditingEnabled(), "nothing to unlock for");
            other.save(Side::Left);
            QCOMPARE(contentOf(other.left), QByteArray("damaged \xFF line\n"));
        }
    }

    void typesErasesAndUndoesByKeys()
    {
        EditFixture f("alpha\r\nbeta\r\n", "alpha\r\nbeta\r\n");
        DiffPane &pane = f.pane(Side::Left);
        f.put(Side::Left, {0, 5});
        QTest::keyClicks(&pane, QStringLiteral(" one"));
        QTest::keyClick(&pane, Qt::Key_Return);
        QTest::keyClick(&pane, Qt::Key_Tab);
        QTest::keyClicks(&pane, QStringLiteral("two words"));
        QTest::keyClick(&pane, Qt::Key_Backspace, Qt::ControlModifier);
        QTest::keyClick(&pane, Qt::Key_Backspace);
        QCOMPARE(f.rows().join(u','), QStringLiteral("~alpha one|alpha,-\ttwo|-,=beta|beta"));
        QTest::keyClick(&pane, Qt::Key_Delete); // joins the lines
        QVERIFY(f.rows().contains(QStringLiteral("~\ttwobeta|beta")) ||
                f.rows().contains(QStringLiteral("-\ttwobeta|-")));
        QVERIFY(f.session.canEdit(EditCommand::Undo));
        QVERIFY(!f.session.canEdit(EditCommand::UndoRight));
        f.save(Side::Left);
        QCOMPARE(contentOf(f.left), QByteArray("alpha one\r\n\ttwobeta\r\n"));
        for (int k = 0; k < 20 && f.session.canEdit(EditCommand::UndoLeft); ++k)
            f.session.edit(EditCommand::UndoLeft);
        QCOMPARE(f.rows().join(u','), QStringLiteral("=alpha|alpha,=beta|beta"));
        QCOMPARE(f.scene().caret().position, (TextPosition{0, 5}));
        QVERIFY(f.session.hasUnsavedChanges()); // the file has the edits
    }

    void cutsPastesAndTakesInputMethods()
    {
        EditFixture f("one\ntwo\nthree\n", "one\ntwo\nthree\n");
        DiffPane &pane = f.pane(Side::Right);
        f.put(Side::Right, {0, 1}, {2, 2});
        QTest::keyClick(&pane, Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("ne\ntwo\nth"));
        QCOMPARE(f.scene().document()->source(Side::Right).count(), 1);
        QTest::keyClick(&pane, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.rows().join(u','), QStringLiteral("=one|one,=two|two,=three|three"));

        QInputMethodEvent preedit(QStringLiteral("ni"), {});
        QCoreApplication::sendEvent(&pane, &preedit);
        QCOMPARE(f.rows().last(), QStringLiteral("=three|three"));
        QInputMethodEvent commit;
        commit.setCommitString(QStringLiteral("\u4f60"));
        QCoreApplication::sendEvent(&pane, &commit);
        QCOMPARE(f.scene().document()->text(2, Side::Right), QStringLiteral("th\u4f60ree"));
    }

    void writesIntoAnEmptySide()
    {
        EditFixture f("", "b\n");
        f.put(Side::Left, {0, 0});
        QTest::keyClicks(&f.pane(Side::Left), QStringLiteral("b"));
        QCOMPARE(f.rows().join(u','), QStringLiteral("=b|b"));
        f.save(Side::Left);
        QCOMPARE(contentOf(f.left), QByteArray("b\n"));
    }

    void comparesTheWholeAgainAndKeepsTheCaret()
    {
        QByteArray text;
        for (int k = 0; k < 300; ++k)
            text += "line " + QByteArray::number(k) + '\n';
        EditFixture f(text, text);
        f.scene().goToLine(Side::Left, 200);
        f.put(Side::Left, {199, 3});
        const auto top = f.scene().top();
        QTest::keyClicks(&f.pane(Side::Left), QStringLiteral("zzz"));
        QCOMPARE(f.scene().document()->kind(198), Equal);
        QTRY_VERIFY_WITH_TIMEOUT(f.status().startsWith(QStringLiteral("Compare done: 1 ")) ||
                                     f.status().startsWith(QStringLiteral("Compare done: 2 ")),
                                 10000);
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
        QCOMPARE(f.rows().join(u','), QStringLiteral("=same|same,=left line|left line"));
        QVERIFY(save->isEnabled());
        QVERIFY2(f.session.focusWidget() == &f.pane(Side::Right), "undo and save are for the side that was changed");
        QTest::keyClick(f.session.focusWidget(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!save->isEnabled());
        QTest::mouseClick(handle, Qt::LeftButton, {}, {4, y});
        QCOMPARE(f.rows().join(u','), QStringLiteral("=same|same,=left lime|left lime"));
    }

    void copiesDifferencesEachAsOneStep()
    {
        EditFixture f("a\nnew 1\nnew 2\nb\nsame word here\n", "a\nb\nsame word there\nextra\n");
        f.session.setEditingEnabled(false);
        QSignalSpy state(&f.session, &SessionWidget::editStateChanged);
        f.session.onArrowCopyLeftToRight(1);
        QVERIFY2(f.session.isEditingEnabled(), "copying unlocks");
        QVERIFY(!state.isEmpty());
        QCOMPARE(f.rows().mid(0, 4).join(u','), QStringLiteral("=a|a,=new 1|new 1,=new 2|new 2,=b|b"));
        f.session.onNextDiff();
        f.session.onNextDiff();
        const qsizetype block = f.scene().layout().block(0).first;
        f.session.onArrowCopyRightToLeft(int(block));
        QCOMPARE(f.scene().layout().blockCount(), 0);
        QCOMPARE(f.rows().last(), QStringLiteral("=extra|extra"));
        f.session.edit(EditCommand::UndoLeft);
        f.session.edit(EditCommand::UndoRight);
        QVERIFY(!f.session.hasUnsavedChanges());
        f.put(Side::Left, {1, 0}, {2, 0}); // the first of two added lines
        f.session.onCopyLeftToRight();
        QCOMPARE(f.scene().document()->source(Side::Right).count(), 5);
        QCOMPARE(f.scene().document()->source(Side::Right).text(1), QStringLiteral("new 1"));
    }

    // Files -----------------------------------------------------------------------------------------------------------

    void asksBeforeEditsAreLost()
    {
        EditFixture f("a\n", "b\n");
        f.put(Side::Left, {0, 0});
        QTest::keyClicks(&f.pane(Side::Left), QStringLiteral("x"));
        f.session.onReloadRight();
        f.wait();
        QVERIFY(f.dialogs.asked().isEmpty());
        QVERIFY(f.session.hasUnsavedChanges());
        f.session.onReloadLeft();
        QCOMPARE(f.dialogs.asked().last().text, QStringLiteral("The left side has unsaved changes. Reload from disk?"));
        QVERIFY(f.session.hasUnsavedChanges());
        f.put(Side::Right, {0, 0});
        QTest::keyClicks(&f.pane(Side::Right), QStringLiteral("y"));
        f.session.onReloadBoth();
        QCOMPARE(f.dialogs.asked().last().text,
                 QStringLiteral("There are unsaved changes. Reload both sides from disk?"));
        f.session.setPaths({f.file(QStringLiteral("other"), "o\n"), f.right, {}});
        f.session.onCompare();
        QCOMPARE(f.dialogs.asked().last().title, QStringLiteral("Unsaved changes"));
        QVERIFY(f.session.hasUnsavedChanges());
    }

    void aFileThatChangesOnDiskIsToldOfAtOnceAndLosesNoEdits()
    {
        EditFixture f("a\n", "b\n");
        const auto *bar = f.child<QWidget>("changeBar");
        QVERIFY(!bar->isVisible());
        for (const char *text : {"theirs\n", "theirs again\n"}) { // each by a file that takes its place
            const QString beside = f.file(QStringLiteral("beside"), text);
            QVERIFY(QFile::remove(f.right) && QFile::rename(beside, f.right));
            QTRY_VERIFY(bar->isVisible());
            QVERIFY(f.label(QStringLiteral("changeText")).contains(QDir::toNativeSeparators(f.right)));
            f.child<QAbstractButton>("changeReload")->click();
            f.wait();
            QVERIFY(!bar->isVisible());
            QCOMPARE(f.scene().document()->source(Side::Right).text(0) + u'\n', QString::fromUtf8(text));
        }
        f.typeAt(Side::Left, 1, QStringLiteral("x"));
        f.file(QStringLiteral("left.txt"), "other\n");
        QTRY_VERIFY(bar->isVisible());
        f.child<QAbstractButton>("changeReload")->click(); // a question, and no answer
        QCOMPARE(f.dialogs.asked().last().text, QStringLiteral("The left side has unsaved changes. Reload from disk?"));
        QVERIFY(f.session.hasUnsavedChanges() && bar->isVisible());
        f.child<QAbstractButton>("changeDismiss")->click();
        QVERIFY(!bar->isVisible());
        f.dialogs.answerNumber(1);
        f.save(Side::Left); // writes over it, and is no news
        f.waitForSave();
        QVERIFY(!QTest::qWaitFor([bar] { return bar->isVisible(); }, 500));
        QVERIFY(QFile::remove(f.left));
        QTRY_VERIFY(bar->isVisible() && f.label(QStringLiteral("changeText")).contains(QStringLiteral("no longer")));
    }

    void swapsWithEdits()
    {
        EditFixture f("a\n", "b\n");
        f.put(Side::Left, {0, 0});
        QTest::keyClicks(&f.pane(Side::Left), QStringLiteral("x"));
        QSignalSpy titles(&f.session, &SessionWidget::tabTitleChanged);
        f.session.onSwapSides();
        f.wait();
        QCOMPARE(f.scene().document()->source(Side::Right).text(0), QStringLiteral("xa"));
        QCOMPARE(titles.last().first().toString(), QStringLiteral("right.txt <-> *left.txt"));
        f.save(Side::Right);
        QCOMPARE(contentOf(f.left), QByteArray("xa\n"));
    }
};

VELMORA_TEST(TextEditingTest)
#include "text_editing_test.moc"
