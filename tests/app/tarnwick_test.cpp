#include "app/help/about.h"
#include "app/library/session_panel.h"
#include "app/session_kinds.h"
#include "app/start/build_stamp.h"
#include "app/start/single_instance.h"
#include "app/window/session_tabs.h"
#include "app/window/tarnwick.h"
#include "app/window/window_fit.h"
#include "app/window/window_memory.h"
#include "core/settings_store.h"
#include "session/session_widget.h"
#include "session/theme.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QImageReader>
#include <QMenuBar>
#include <QMessageBox>
#include <QSplitter>
#include <QStatusBar>
#include <QTabBar>
#include <QTemporaryDir>
#include <QThread>
#include <QToolButton>
#include <QTreeWidget>

using namespace velmora;
using velmora::test::word;
using velmora::test::words;

namespace {

/// The main window with what tests look at.
struct Shell {
    Tarnwick window;
    SessionTabs *tabs = window.findChild<SessionTabs *>(word("tabHost"));

    [[nodiscard]] QString title() const { return tabs->titleAt(tabs->currentIndex()); }
    [[nodiscard]] QString kind() const
    {
        return tabs->currentSession() ? tabs->currentSession()->kind() : word("home");
    }
    [[nodiscard]] QString status() const { return window.statusBar()->currentMessage(); }
    void run(const QStringList &arguments) { window.handleArguments(words("velmora") + arguments); }
};

/// A menu as text: its entries with their keys, submenus in brackets, separators as "|".
QString drawn(const QWidget *menu)
{
    QStringList entries;
    for (const QAction *action : menu->actions()) {
        const QString keys = action->shortcut().toString(QKeySequence::PortableText);
        entries.append(action->isSeparator() ? word("|") : action->text());
        if (!keys.isEmpty())
            entries.last() += u' ' + keys;
        if (action->menu())
            entries.last() += word(" [") + drawn(action->menu()) + u']';
    }
    return entries.join(word(", "));
}

} // namespace

class TarnwickTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // A server of its own, so that a running program hears nothing of the tests.
        qputenv("USERNAME", "velmora-test-" + QByteArray::number(QCoreApplication::applicationPid()));
        QGuiApplication::setApplicationDisplayName(word("Velmora"));
        QVERIFY(m_folder.isValid());
        for (const char *name : {"a.txt", "b.txt"}) {
            QFile file(path(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QFile zip(path("a.zip"));
        QVERIFY(zip.open(QIODevice::WriteOnly) && zip.write(QByteArray("PK\5\6").leftJustified(22, '\0')) == 22);
        for (const char *name : {"one", "two"})
            QVERIFY(QDir(m_folder.path()).mkdir(QLatin1String(name)));
    }

    void kindsAreWhole_data()
    {
        QTest::addColumn<int>("row");
        const auto kinds = sessionKinds();
        QCOMPARE(kinds.size(), size_t(23));
        for (size_t i = 0; i < kinds.size(); ++i)
            QTest::newRow(kinds[i].id.data()) << static_cast<int>(i);
    }

    void kindsAreWhole()
    {
        QFETCH(int, row);
        const SessionKindRow &kind = sessionKinds()[static_cast<size_t>(row)];
        QCOMPARE(findSessionKind(QLatin1String("  ") + QString(kind.id).toUpper() + u' '), &kind);
        if (!kind.alias.isEmpty())
            QCOMPARE(findSessionKind(kind.alias), &kind);
        for (const SessionKindRow &other : sessionKinds()) {
            QVERIFY(&other == &kind || (other.id != kind.id && other.alias != kind.id));
            QVERIFY(&other == &kind || QLatin1String(other.slot) != QLatin1String(kind.slot));
        }
        QVERIFY(sessionKindIcon(word("nothing")).isNull() && sessionKindIcon({}).isNull());
        for (const bool dark : {false, true}) {
            applyTheme(dark);
            QVERIFY2(QImageReader(themedIconPath(QString::fromLatin1(kind.icon))).canRead(), kind.icon);
            QVERIFY(!sessionKindIcon(kind.id).pixmap(64).isNull());
        }
        applyTheme(false);

        Shell shell;
        QVERIFY2(QMetaObject::invokeMethod(&shell.window, kind.slot), kind.slot);
        QCOMPARE(shell.kind(), QString(kind.id));
        QCOMPARE(shell.title(), QString::fromLatin1(kind.tabTitle).arg(1));
        const SessionPaths paths{word("/x/left"), word("/x/right"), {}};
        shell.window.openSession(kind.id, paths);
        QCOMPARE(shell.kind(), QString(kind.id));
        QCOMPARE(shell.title(), sessionTitle(kind, paths));
    }

    void hasItsMenus()
    {
        Shell shell;
        QCOMPARE(drawn(shell.window.menuBar()),
                 QStringLiteral(
                     "Session(&S) [New session(&N) [Folder compare(&F), Text compare(&I), Text merge(&E), "
                     "Table compare(&T), Hex compare(&H), Image compare(&P), MP3 compare(&M), |, Folder merge(&O), "
                     "Folder sync(&Y), |, Registry compare(&R), Version compare(&V), |, Git compare(&G), "
                     "Archive compare(&A), Checksum(&K), |, Duplicate finder(&D), Folder snapshot(&N), "
                     "Environment compare(&E), Disk usage(&U), Services snapshot(&S), Startup items(&T), "
                     "SFTP/SSH folder compare(&H)], New tab(&I) Ctrl+T, |, Save workspace as(&V)..., "
                     "Open workspace(&O)..., Open session file(&N)..., Save current session as(&S)..., |, "
                     "Close tab Ctrl+W, E&xit Ctrl+Q], &Edit [Enable editing, |, Undo Ctrl+Z, Redo %1, |, "
                     "Undo left Ctrl+Alt+Z, Redo left Ctrl+Alt+Y, Undo right Ctrl+Alt+Shift+Z, "
                     "Redo right Ctrl+Alt+Shift+Y], &Tools [Archive browse, |, Duplicates, Snapshot, Environment, "
                     "Disk usage, Services, Startup, SFTP compare, |, Options..., |, Past operations...], "
                     "&Help [&Legend, &Keyboard shortcuts F1, |, &About]")
                     .arg(QKeySequence(QKeySequence::Redo).toString(QKeySequence::PortableText)));
        const QAction *tools = shell.window.menuBar()->actions()[2];
        tools->menu()->actions().constFirst()->trigger();
        QCOMPARE(shell.title(), word("Archive browse 1"));
    }

    void opensWithTheHomePage()
    {
        Shell shell;
        QCOMPARE(shell.window.windowTitle(), word("Velmora 1.0.0"));
        QCOMPARE(shell.window.minimumSize(), QSize(1280, 800));
        QCOMPARE(shell.window.size(), QSize(1280, 800));
        QVERIFY(shell.window.acceptDrops());
        QCOMPARE(shell.status(), word("Ready"));
        QCOMPARE(shell.tabs->count(), 1);
        QCOMPARE(shell.tabs->tabText(0), word("Home"));
        QVERIFY(shell.tabs->tabsClosable() && shell.tabs->isMovable() && shell.tabs->documentMode());
        const auto *panel = shell.window.findChild<QWidget *>(word("sessionPanel"));
        QCOMPARE(panel->minimumWidth(), 180);
        QCOMPARE(panel->maximumWidth(), 320);
        QVERIFY(panel->findChild<QWidget *>(word("sessionHeader")));
    }

    void comesBackWithThePlaceAndThePanelItHad()
    {
        const auto panelOf = [](const Shell &shell) { return shell.window.findChild<QWidget *>(word("sessionPanel")); };
        {
            Shell shell;
            shell.window.show();
            shell.window.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&shell.window)); // keys are for the active window
            shell.window.findChild<QSplitter *>()->setSizes({260, 500});
            QCOMPARE(panelOf(shell)->width(), 260);
            QTest::keyClick(&shell.window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
            QVERIFY(!panelOf(shell)->isVisible());
            shell.window.close();
        }
        Shell again;
        again.window.show();
        QVERIFY(!panelOf(again)->isVisible());
        again.window.findChild<QToolButton *>(word("panelSwitch"))->click();
        QVERIFY(panelOf(again)->isVisible());
        QCOMPARE(panelOf(again)->width(), 260);
        InterfaceSettings().clear();

        QWidget window;
        QVERIFY(!restorePlace(window));
        window.setGeometry(100, 80, 500, 400);
        rememberPlace(window);
        QWidget other;
        QVERIFY(restorePlace(other));
        QCOMPARE(other.geometry(), window.geometry());
        InterfaceSettings().clear();
    }

    void numbersTabsAcrossKindsAndNeverAgain()
    {
        Shell shell;
        shell.window.onNewTextCompare();
        QCOMPARE(shell.title(), word("Text compare 1"));
        shell.window.onNewFolderCompare();
        QCOMPARE(shell.title(), word("Folder compare 2"));
        shell.window.onCloseCurrentTab();
        shell.window.openCompare(word("text"), path("a.txt"), path("b.txt"));
        shell.window.onNewFolderCompare();
        QCOMPARE(shell.title(), word("Folder compare 3"));
        shell.tabs->showHome();
        shell.window.onCloseCurrentTab();
        QCOMPARE(shell.tabs->count(), 4);
    }

    void opensPairsOfPaths()
    {
        struct {
            const char *typed, *kind, *title;
        } const cases[] = {
            {"one two", "folder", "one <-> two"},
            {"one a.txt", "text", "one <-> a.txt"},
            {"a.txt missing", "text", "a.txt <-> missing"},
            {"--diff one two", "text", "one <-> two"},
            {"--folder a.txt b.txt", "folder", "a.txt <-> b.txt"},
            {"--folder one a.zip", "archive", "one <-> a.zip"},
            {"--sync one/ two", "sync", "Sync one <-> two"},
            {"--git one two", "git", "Git: one"},
            {"%2 %1", "text", "%2 <-> %1"},
            {"--checksum a.txt b.txt", "checksum", "a.txt <-> b.txt"},
            {"--version-compare a.txt b.txt", "version", "a.txt <-> b.txt"},
            {"--duplicate one two", "folder", "one <-> two"},
            {"--browse a.txt b.txt", "text", "a.txt <-> b.txt"},
            {"--git one", "git", "Git: one"},
            {"--checksum a.txt", "checksum", "a.txt"},
            {"--duplicate one", "duplicate", "Duplicates: one"},
            {"--diskusage one", "diskusage", "Disk usage: one"},
            {"--browse a.txt", "archivebrowse", "Browse: a.txt"},
            {"--duplicate a.txt", "home", "Home"},
            {"--browse one", "home", "Home"},
            {"--folder one", "home", "Home"},
            {"", "home", "Home"},
        };
        for (const auto &[typed, kind, title] : cases) {
            Shell shell;
            QStringList arguments = word(typed).split(u' ', Qt::SkipEmptyParts);
            QStringList paths;
            for (QString &argument : arguments) {
                if (!argument.startsWith(u'-')) {
                    argument = m_folder.filePath(argument);
                    paths.append(QDir::cleanPath(argument));
                }
            }
            shell.run(arguments);
            QCOMPARE(shell.kind(), word(kind));
            if (const SessionWidget *session = shell.tabs->currentSession()) {
                QCOMPARE(shell.title(), word(title));
                QCOMPARE(QDir::cleanPath(session->paths().left), paths[0]);
                QCOMPARE(session->paths().right, paths.value(1));
            } else {
                QCOMPARE(shell.tabs->count(), 1);
                QCOMPARE(shell.status().contains(paths.value(0)), !paths.isEmpty() || shell.status() == word("Ready"));
            }
        }
    }

    void pairsTheSidesThatExplorerNames()
    {
        Shell shell;
        shell.run({word("--as-left"), path("one")});
        QCOMPARE(shell.status(),
                 QStringLiteral("Left folder selected: %1 — right-click another item and choose Velmora: set "
                                "as right side")
                     .arg(path("one")));
        QStatusTipEvent tip({}); // as of a walk through the menus
        QApplication::sendEvent(&shell.window, &tip);
        QVERIFY(!shell.status().isEmpty());
        shell.run({word("--as-right"), path("two")});
        QCOMPARE(shell.kind(), word("folder"));
        QCOMPARE(shell.title(), word("one <-> two"));
        QCOMPARE(shell.status(), word("Compare opened"));

        // The pair is used up; a right side alone becomes the left one.
        shell.run({word("--as-right"), path("a.txt")});
        QCOMPARE(shell.status(),
                 QStringLiteral("Left file selected: %1 — right-click another item and choose Velmora: set "
                                "as right side")
                     .arg(path("a.txt")));
        QCOMPARE(shell.tabs->count(), 2);
        shell.run({word("--as-right"), path("one")});
        QCOMPARE(shell.kind(), word("text"));
        QCOMPARE(shell.title(), word("a.txt <-> one"));

        // Two paths on one command line clear what was pending.
        shell.run({word("--as-left"), path("one")});
        shell.run({path("a.txt"), path("b.txt")});
        shell.run({word("--as-right"), path("two")});
        QCOMPARE(shell.tabs->count(), 4);
    }

    void dropsBecomeSides()
    {
        QCOMPARE(pathName(word("/")), word("/"));
        Shell shell;
        const auto dropped = [&shell](const char *kind, const QStringList &paths) {
            shell.window.openDropped(sessionKind(QLatin1String(kind)), paths);
            return shell.tabs->currentSession()->paths();
        };
        const QString a = word("/a");
        const QString b = word("/b");
        const QString c = word("/c");
        QCOMPARE(dropped("text", {a}), (SessionPaths{a, {}, {}}));
        QCOMPARE(shell.title(), word("a"));
        QCOMPARE(dropped("folder", {a, b, c}), (SessionPaths{a, b, {}}));
        QCOMPARE(shell.status(), word("3 paths dropped; this session takes 2"));
        QCOMPARE(dropped("diskusage", {a, b}), (SessionPaths{a, {}, {}}));
        QCOMPARE(dropped("merge", {a, b}), (SessionPaths{a, b, {}}));
        QCOMPARE(dropped("merge", {a, b, c}), (SessionPaths{b, c, a}));
    }

    void thePanelOpensKinds()
    {
        Shell shell;
        shell.window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&shell.window));
        auto *panel = shell.window.findChild<SessionPanel *>();
        QTreeWidget *tree = panel->tree();
        const QTreeWidgetItem *root = tree->topLevelItem(0);
        QCOMPARE(root->data(0, SessionPanel::idRole).toString(), word("category_new"));
        QVERIFY(root->isExpanded());
        QStringList names;
        for (int i = 0; i < root->childCount(); ++i)
            names.append(root->child(i)->text(0));
        QCOMPARE(
            names.join(u','),
            QStringLiteral("Folder compare,Folder merge,Folder sync,Text compare,Text edit,Text merge,Table compare,"
                           "Hex compare,MP3 compare,Image compare,Registry compare,Version compare,Git compare,"
                           "Archive compare,Checksum,Duplicates,Snapshot,SFTP compare,Environment,Disk usage,Services,"
                           "Startup"));

        const QPoint folderSync = tree->visualItemRect(root->child(2)).center();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, folderSync);
        QCOMPARE(shell.title(), word("Folder sync 1"));
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, folderSync);
        QCOMPARE(shell.title(), word("Folder sync 1"));
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, folderSync); // not lost behind it
        QCOMPARE(shell.title(), word("Folder sync 2"));
        tree->setFocus();
        QTest::keyClick(tree, Qt::Key_Return);
        QCOMPARE(shell.title(), word("Folder sync 3"));
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, tree->visualItemRect(root).center());
        QCOMPARE(shell.tabs->count(), 4);
    }

    void takesOverALaterStart()
    {
        Shell shell;
        shell.window.showMinimized();
        // A file that is there only for as long as the later start runs, as other programs make them for a comparison.
        QTemporaryDir folder;
        const auto file = [&folder](const char *name) { return folder.filePath(QLatin1String(name)); };
        for (const QString &name : {file("one"), file("two")}) {
            QFile text(name);
            QVERIFY(text.open(QIODevice::WriteOnly) && text.write("words\n") > 0);
        }
        const QStringList arguments = {word("velmora"), word("--report"), file("report.html"), file("one"),
                                       file("two")};
        // From another thread, as from another process: this one must be free to read what that one writes.
        const std::unique_ptr<QThread> other(QThread::create([&] {
            if (handOver(singleInstanceServerName(), arguments, std::chrono::seconds(20)))
                QFile::remove(file("one"));
        }));
        other->start();
        QVERIFY(!other->wait(300)); // nobody has read anything yet
        QTRY_VERIFY(other->isFinished());
        QVERIFY(!QFileInfo::exists(file("one")));
        QTRY_VERIFY(QFileInfo::exists(file("report.html")));
        QCOMPARE(shell.title(), word("one <-> two"));
        QVERIFY(shell.window.isVisible());
        QVERIFY(!shell.window.isMinimized());
    }

    void theThemeOfTheRunOverrulesTheStoredOne()
    {
        InterfaceSettings().setValue(word("theme"), 1);
        const Shell stored;
        QVERIFY(isDarkTheme());
        const Tarnwick light(false);
        QVERIFY(!isDarkTheme());
        QCOMPARE(InterfaceSettings().value(word("theme")).toInt(), 1);
        InterfaceSettings().remove(word("theme"));
    }

    void saysWhatItIs()
    {
        Shell shell;
        shell.window.onAbout();
        const auto *box = shell.window.findChild<QMessageBox *>();
        QVERIFY(box);
        QCOMPARE(box->windowTitle(), word("About Velmora"));
        QVERIFY(
            box->text().startsWith(QLatin1String("<h2>Velmora</h2><p>File and folder comparison for Windows.</p>")));
        QVERIFY(box->text().endsWith(
            word("<p>Version 1.0.0<br/>build %1<br/>Qt %2</p>").arg(buildStamp(), QString::fromLatin1(qVersion()))));
        const QRegularExpression stamp(word("^[A-Z][a-z]{2} [ \\d]\\d \\d{4} \\d\\d:\\d\\d:\\d\\d$"));
        QVERIFY(stamp.match(buildStamp()).hasMatch());
    }

    void fitsTheScreen()
    {
        const QRect screen(100, 50, 1000, 700);
        QCOMPARE(fittedInto({150, 60, 500, 400}, screen), QRect(150, 60, 500, 400));
        QCOMPARE(fittedInto({0, 0, 1280, 800}, screen), screen);
        QCOMPARE(fittedInto({900, 700, 500, 400}, screen), QRect(600, 350, 500, 400));
        // The screen of the tests is smaller than the window would like to be.
        Shell shell;
        shell.window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&shell.window));
        QVERIFY(shell.window.screen()->availableGeometry().contains(shell.window.frameGeometry()));
    }

private:
    [[nodiscard]] QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

    QTemporaryDir m_folder;
};

VELMORA_TEST(TarnwickTest)
#include "tarnwick_test.moc"
