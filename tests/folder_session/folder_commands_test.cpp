#include "core/settings_store.h"
#include "folder/actions/compare_contents_dialog.h"
#include "folder_session_fixture.h"
#include "support/test_main.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QMenu>
#include <QToolButton>

using namespace velmora;
using namespace velmora::test;

/// What is done with the rows of a folder session: commands on files, and the sessions that are opened on entries.
class FolderCommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { SessionSettings().clear(); }

    void copyingComparesOnlyWhatWasTouched()
    {
        Filled f;
        f.goTo(word("file10"));
        QTRY_VERIFY(f.action("copyToRightAction")->isEnabled());
        const quint64 generation = f.session.comparison().generation();
        f.session.onCopyToRight();
        QTRY_VERIFY_WITH_TIMEOUT(f.rows().contains(word("file10 ≈ file10")), 20000);
        QVERIFY(QFile::exists(f.disk.path(word("right/file10"))));
        QVERIFY(f.session.logText().contains(word(" copy: ")));
        QCOMPARE(f.session.comparison().generation(), generation);
        QCOMPARE(f.current(), word("file10"));
        // A command that ends without a word leaves the sums of now, not those of before the copy.
        f.session.onDeleteSelected();
        QTRY_COMPARE(f.session.status(),
                     word("Files compared: 5, differences: 2; 1 of the same size and time not read"));
    }

    void namesAreExcludedAndIgnoredFromTheMenu()
    {
        Filled f;
        f.session.show();
        const auto choose = [&](const char *name) {
            f.session.onTreeContextMenu(QPoint(10, 10));
            auto *action = f.session.findChild<QAction *>(QLatin1String(name));
            QVERIFY(action);
            action->trigger();
            // The menu goes when it is closed.
            auto *menu = qobject_cast<QMenu *>(action->parent());
            menu->close();
            QCoreApplication::sendPostedEvents(menu, QEvent::DeferredDelete);
        };
        f.goTo(word("src/main.cpp"));
        choose("ignoreByNameAction");
        QTRY_COMPARE(f.rows().at(1), word("src = src"));
        QVERIFY(f.rows().contains(word("main.cpp ≠ main.cpp")));
        f.goTo(word("file10"));
        choose("excludeByNameAction");
        QTRY_VERIFY(!f.rows().contains(word("file10 ← ")));
        QCOMPARE(f.session.options().value(word("excludedNames")).toArray().first().toString(), word("file10"));
    }

    void contentsOfTheSelectionAreCompared()
    {
        FolderSessionFixture f;
        // By rules these are the same: only what they hold differs.
        f.disk.file(word("left/sub/a"), "1", 7);
        f.disk.file(word("right/sub/a"), "2", 7);
        f.disk.file(word("left/b"), "1", 7);
        f.disk.file(word("right/b"), "2", 7);
        f.compare();
        QCOMPARE(f.rows(), words("sub ≈ sub|b ≈ b"));
        QCOMPARE(f.session.status(), word("Files compared: 2, no differences; 2 of the same size and time not read"));
        f.goTo(word("sub"));
        f.action("compareContentsAction")->trigger();
        auto *dialog = f.session.findChild<CompareContentsDialog *>();
        QVERIFY(dialog);
        dialog->accept();
        QTRY_COMPARE(f.rows(), words("sub ≠ sub|b ≈ b"));
        QVERIFY(f.session.logText().contains(word(" content compare (binary): ")));
        // One click reads the rest, and what was read stays known.
        f.session.findChild<QToolButton *>(word("readUnreadButton"))->click();
        QTRY_COMPARE(f.rows(), words("sub ≠ sub|b ≠ b"));
        QVERIFY(f.session.findChild<QToolButton *>(word("readUnreadButton"))->isHidden());
    }

    void entriesAreAlignedByHand()
    {
        FolderSessionFixture f;
        f.disk.file(word("left/sub/old name"), "text");
        f.disk.file(word("right/sub/new name"), "text", 3);
        f.compare();
        f.session.onExpandAll();
        f.session.view().selectNames({word("sub/old name"), word("sub/new name")});
        f.session.onManualAlign();
        QTRY_COMPARE(f.rows(), words("sub = sub|old name = new name"));
        QCOMPARE(f.session.status(), word("Files compared: 1, no differences"));
        QVERIFY(f.session.logText().contains(word(" manual align: old name <-> new name")));
        QCOMPARE(f.session.options().value(word("alignOverrides")).toArray().size(), 1);
        f.session.onRefresh();
        f.wait();
        QCOMPARE(f.rows(), words("sub = sub|old name = new name"));
    }

    void pairsThatWereOpenedAreComparedAnewOnTheWayBack()
    {
        Filled f;
        f.session.show();
        f.session.onExpandAll();
        f.goTo(word("src/main.cpp"));
        f.key(Qt::Key_Return);
        QTRY_COMPARE(f.host.opened.size(), 1);
        f.session.hide();
        f.disk.file(word("right/src/main.cpp"), "one", 5);
        f.session.show();
        QTRY_VERIFY(f.rows().contains(word("main.cpp = main.cpp")));
        QCOMPARE(f.session.status(), word("Files compared: 5, differences: 2"));
        // The tab is still open, and work in it goes on.
        f.session.hide();
        f.disk.file(word("right/src/main.cpp"), "three", 3);
        f.session.show();
        QTRY_VERIFY(f.rows().contains(word("main.cpp ≠ main.cpp")));
        f.session.hide();
        f.session.show();
        f.session.onCancelCompare();
        QTRY_COMPARE(f.session.status(), word("Compare cancelled"));
        // It is so wherever one has gone meanwhile.
        f.goTo(word("src"));
        f.key(Qt::Key_Return);
        f.wait();
        f.session.hide();
        f.disk.file(word("right/src/main.cpp"), "one", 5);
        f.session.show();
        QTRY_VERIFY(f.rows().contains(word("main.cpp = main.cpp")));
    }

    /// What reading both files has found is not forgotten for an entry that was only looked at.
    void contentsThatWereComparedStayDecidedUntilTheyChange()
    {
        FolderSessionFixture f;
        for (const char *name : {"left/a", "left/sub/b"})
            f.disk.file(QLatin1String(name), "1", 7);
        for (const char *name : {"right/a", "right/sub/b"})
            f.disk.file(QLatin1String(name), "2", 7);
        f.session.show();
        f.compare();
        f.session.onExpandAll();
        QCOMPARE(f.rows(), words("sub ≈ sub|b ≈ b|a ≈ a"));
        f.session.view().leftPane().clearSelection();
        f.action("compareContentsAction")->trigger();
        f.session.findChild<CompareContentsDialog *>()->accept();
        const QStringList decided{word("sub ≠ sub"), word("b ≠ b"), word("a ≠ a")};
        QTRY_COMPARE(f.rows(), decided);
        f.goTo(word("a"));
        f.key(Qt::Key_Return);
        QTRY_COMPARE(f.host.opened.size(), 1);
        f.goTo(word("sub"));
        f.session.onTreeContextMenu(QPoint(10, 10));
        f.action("openInNewTabAction")->trigger();
        f.session.hide();
        f.session.show();
        f.wait();
        QCOMPARE(f.rows(), decided);
        f.disk.file(word("right/sub/b"), "1", 7);
        f.disk.file(word("left/sub/b"), "1", 8);
        f.session.hide();
        f.session.show();
        QTRY_COMPARE(f.rows().first(), word("sub = sub"));
        QCOMPARE(f.rows().last(), word("a ≠ a"));
    }

    void aFileThatIsGoneIsNotOpened()
    {
        Filled f;
        QVERIFY(QFile::remove(f.disk.path(word("right/src/main.cpp"))));
        f.session.onExpandAll();
        f.goTo(word("src/main.cpp"));
        f.key(Qt::Key_Return);
        QTRY_VERIFY(f.rows().contains(word("main.cpp ← ")));
        QVERIFY(f.session.status().startsWith(word("No longer there: ")));
        QVERIFY(f.host.opened.isEmpty());
    }

    void readOnlySidesAreNotWrittenTo()
    {
        Filled f;
        QJsonObject options = f.session.options();
        options.insert(word("rightReadOnly"), true);
        f.session.setOptions(options);
        f.session.onRefresh();
        f.wait();
        f.goTo(word("file10"));
        QTRY_VERIFY(!f.action("copyToRightAction")->isEnabled());
        QVERIFY(f.action("copyToRightAction")->toolTip().contains(word("read-only")));
        f.session.onCopyToRight();
        QVERIFY(!QFile::exists(f.disk.path(word("right/file10"))));
    }

    /// Commands that must be told a side mean that of the pane with the keyboard.
    void renamingMeansTheSideOfTheKeyboard()
    {
        Filled f;
        f.session.show();
        FolderView &view = f.session.view();
        for (const bool left : {true, false}) {
            f.goTo(word("src/same.h"));
            QFocusEvent focus(QEvent::FocusIn);
            QCoreApplication::sendEvent(left ? &view.leftPane() : &view.rightPane(), &focus);
            const QString name = left ? word("left.h") : word("right.h");
            f.dialogs.answerText(name);
            QTRY_VERIFY(f.action("renameAction")->isEnabled());
            f.action("renameAction")->trigger();
            const QString row = left ? word("left.h ← ") : word(" → right.h");
            QTRY_VERIFY_WITH_TIMEOUT(f.rows().contains(row), 20000);
            QVERIFY(QFile::exists((left ? f.disk.left() : f.disk.right()) + word("/src/") + name));
            QTRY_VERIFY(!f.session.hasUnsavedChanges());
        }
        QVERIFY(!f.rows().join(u' ').contains(word("same.h")));
    }

    void pathsOfTheSelectionAreCopied()
    {
        Filled f;
        f.session.view().selectNames({word("docs"), word("file10")});
        const auto copied = [](TreeLineTreeWidget &pane) {
            QTest::keyClick(&pane, Qt::Key_C, Qt::ControlModifier);
            return QGuiApplication::clipboard()->text().split(u'\n');
        };
        FolderView &view = f.session.view();
        QCOMPARE(copied(view.leftPane()), QStringList({QDir::toNativeSeparators(f.disk.path(word("left/docs"))),
                                                       QDir::toNativeSeparators(f.disk.path(word("left/file10")))}));
        QCOMPARE(copied(view.rightPane()), QStringList(QDir::toNativeSeparators(f.disk.path(word("right/docs")))));
    }

    void aCommandThatWorksKeepsTheTab()
    {
        Filled f;
        int closed = 0;
        const auto close = [&] { f.session.confirmClose([&](bool mayClose) { closed += mayClose ? 1 : 0; }); };
        f.goTo(word("src"));
        f.session.onCopyToRight();
        QVERIFY(f.session.hasUnsavedChanges());
        close();
        QCOMPARE(f.dialogs.asked().last().title, word("Close"));
        QCOMPARE(closed, 0);
        f.dialogs.answerNumber(1);
        close();
        QCOMPARE(closed, 1);
        QTRY_VERIFY_WITH_TIMEOUT(!f.session.hasUnsavedChanges(), 20000);
        close();
        QCOMPARE(closed, 2);
        // The question that followed was not answered, and the status line says again how things are.
        QTRY_COMPARE(f.session.status(), word("Files compared: 5, differences: 3"));
        QCOMPARE(f.rows().size(), 4);
    }
};

VELMORA_TEST(FolderCommandsTest)
#include "folder_commands_test.moc"
