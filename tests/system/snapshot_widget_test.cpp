#include "session/list/list_model.h"
#include "session/list/list_view.h"
#include "session/session_record.h"
#include "session/theme.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"
#include "system/engine/snapshot_file.h"
#include "system/snapshot_widget.h"
#include "system_fixture.h"

#include <QClipboard>
#include <QHeaderView>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QToolButton>
#include <QVariantList>

using namespace velmora;
using namespace velmora::test;

namespace {

/// A session in a window, with scripted answers and files of its own.
template <typename Session>
class SnapshotFixture {
public:
    SnapshotFixture()
    {
        session.resize(1100, 700);
        session.show();
        session.activateWindow();
        if (!QTest::qWaitForWindowActive(&session)) // keys are for the active window
            qFatal("the window is not active");
    }

    void wait() { QTRY_VERIFY_WITH_TIMEOUT(!session.isBusy(), 30000); }

    template <typename Part>
    [[nodiscard]] Part &part(const QString &name)
    {
        auto *found = session.template findChild<Part *>(name);
        if (!found)
            qFatal("no %s", qPrintable(name));
        return *found;
    }
    [[nodiscard]] QAction &action(const char *name) { return part<QAction>(word(name)); }

    /// Clicks the button of an action and waits until what it began has ended.
    void click(const char *name)
    {
        QTest::mouseClick(&part<QToolButton>(QLatin1String(name) + word("Button")), Qt::LeftButton);
        wait();
    }

    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&view(), Qt::Key(key), modifiers);
        wait();
    }

    void type(const char *field, const QString &text)
    {
        auto &line = part<QLineEdit>(word(field));
        line.selectAll();
        QTest::keyClick(&line, Qt::Key_Delete);
        QTest::keyClicks(&line, text);
        session.activateWindow(); // which a list of completions has been for a moment, and not every platform goes back
    }
    void enter(const char *field)
    {
        QTest::keyClick(&part<QLineEdit>(word(field)), Qt::Key_Return);
        wait();
    }
    [[nodiscard]] QString field(const char *name) { return part<QLineEdit>(word(name)).text(); }
    [[nodiscard]] QString label(const char *name) { return part<QLabel>(word(name)).text(); }
    [[nodiscard]] QString box(const char *name) { return part<QPlainTextEdit>(word(name)).toPlainText(); }
    [[nodiscard]] ListView &view() { return *session.template findChild<ListView *>(); }

    /// The rows as a person sees them.
    [[nodiscard]] QStringList rows()
    {
        QStringList lines;
        for (int row = 0; row < session.rows().rowCount(); ++row) {
            QStringList columns;
            for (int column = 0; column < session.rows().columnCount(); ++column)
                columns.append(session.rows().index(row, column).data().toString());
            lines.append(columns.join(u'|'));
        }
        return lines;
    }
    [[nodiscard]] QString current() { return view().currentIndex().siblingAtColumn(RowSource::Key).data().toString(); }

    void compareFiles(const QString &left, const QString &right)
    {
        session.setPaths({left, right, {}});
        session.start();
        wait();
    }

    TestFiles files;
    ScriptedDialogs dialogs;
    RecordingHost host;
    Session session{host};
};

using EnvFixture = SnapshotFixture<EnvSnapshotWidget>;
using ServiceFixture = SnapshotFixture<ServiceSnapshotWidget>;
using StartupFixture = SnapshotFixture<StartupSnapshotWidget>;

/// An environment session on two small files.
class Compared : public EnvFixture {
public:
    Compared()
    {
        left = files.write(word("left.kvenv"),
                           json("{'HOME': '/home/a', 'LANG': 'C', 'ONLY_L': 'x', 'PATH': '/bin:/usr/bin:/opt'}"));
        right = files.write(word("right.kvenv"),
                            json("{'HOME': '/home/a', 'LANG': 'de', 'ONLY_R': 'a\\nb', 'PATH': '/bin:/sbin:/opt'}"));
        compareFiles(left, right);
    }

    QString left;
    QString right;
};

QByteArray services(const char *startMode)
{
    return json("[{'name': 'Spooler', 'displayName': 'Print Spooler', 'state': 'Running', 'startMode': '") + startMode +
           json("'}]");
}

} // namespace

class SnapshotWidgetTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { qputenv("VELMORA_TEST_VARIABLE", "first"); }
    void cleanup() { qunsetenv("VELMORA_TEST_VARIABLE"); }

    void comparesTwoFiles()
    {
        EnvFixture f;
        QSignalSpy finished(&f.session, &SessionWidget::comparisonFinished);
        QSignalSpy title(&f.session, &SessionWidget::tabTitleChanged);
        const QString left = f.files.write(word("a.kvenv"), json("{'A': '1', 'B': '1', 'C': '1', 'PATH': '/x'}"));
        const QString right = f.files.write(word("b.kvenv"), json("{'B': '1', 'C': '2', 'D': '', 'PATH': '/x'}"));
        f.type("leftSnapshot", QDir::toNativeSeparators(left));
        f.enter("leftSnapshot");
        QCOMPARE(f.label("statusLabel"), word("Loaded 4 item(s)"));
        f.type("rightSnapshot", u'"' + right + u'"');
        f.key(Qt::Key_F5);
        QCOMPARE(f.rows(), (QStringList{word("Left only|A|1|"), word("Same|B|1|1"), word("Changed|C|1|2"),
                                        word("Right only|D||"), word("Same|PATH|/x|/x")}));
        QCOMPARE(f.label("statusLabel"), word("Compare finished (5 item(s))"));
        QCOMPARE(f.label("countsLabel"), word("Same: 2   Changed: 1   Left only: 1   Right only: 1"));
        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished[0], (QVariantList{left, right}));
        QCOMPARE(title.size(), 1);
        QCOMPARE(title[0][0].toString(), word("a.kvenv <-> b.kvenv"));

        // A file that has changed is read again, one that is gone is not.
        f.files.write(word("a.kvenv"), json("{'NEW': '1'}"));
        QVERIFY(QFile::remove(right));
        f.key(Qt::Key_F5);
        QCOMPARE(f.rows().value(3), word("Left only|NEW|1|"));
        QCOMPARE(f.rows().size(), 5);

        // The tab is called after what is compared.
        f.click("captureRightAction");
        f.key(Qt::Key_F5);
        QCOMPARE(title.last()[0].toString(), word("a.kvenv <-> [Current environment]"));
        f.type("leftSnapshot", QString());
        f.key(Qt::Key_F5);
        QCOMPARE(title.last()[0].toString(), word("Environment variables compare"));
    }

    void comparesTheLiveEnvironmentWhereASideIsEmpty()
    {
        EnvFixture f;
        QCOMPARE(f.session.findChild<QLineEdit *>(word("leftSnapshot"))->placeholderText(),
                 word("Leave empty for current process environment"));
        f.click("captureLeftAction");
        const qsizetype count = captureEnvironment().size();
        QCOMPARE(f.label("statusLabel"), word("Captured %1 variable(s)").arg(count));
        QCOMPARE(f.field("leftSnapshot"), word("[Current environment]"));
        qputenv("VELMORA_TEST_VARIABLE", "second");
        const auto variable = [&f] { return f.rows().filter(word("VELMORA_TEST_VARIABLE")).value(0); };
        f.key(Qt::Key_F5); // the right side is what it is now, the left what it was
        QCOMPARE(variable(), word("Changed|VELMORA_TEST_VARIABLE|first|second"));
        QCOMPARE(f.field("rightSnapshot"), QString());
        QCOMPARE(f.label("statusLabel"), word("Compare finished (%1 item(s))").arg(count));
        qunsetenv("VELMORA_TEST_VARIABLE");
        f.key(Qt::Key_F5);
        QCOMPARE(variable(), word("Left only|VELMORA_TEST_VARIABLE|first|"));

        // A record says what was live, and opening it captures anew.
        const SessionRecord record = f.session.record();
        QCOMPARE(record.paths, (SessionPaths{word("[Current environment]"), {}, {}}));
        qputenv("VELMORA_TEST_VARIABLE", "third");
        EnvFixture again;
        again.compareFiles(record.paths.left, record.paths.right);
        QCOMPARE(again.rows().filter(word("VELMORA_TEST_VARIABLE")).value(0),
                 word("Same|VELMORA_TEST_VARIABLE|third|third"));
    }

    void savesWhatItHolds()
    {
        EnvFixture f;
        const QString path = f.files.path(word("saved.kvenv"));
        f.dialogs.answerPath(path);
        f.click("saveRightAction"); // an empty side stands for this process
        QCOMPARE(f.label("statusLabel"), word("Saved %1").arg(QDir::toNativeSeparators(path)));
        QCOMPARE(loadSnapshot(path, SnapshotForm::TextObject).snapshot, captureEnvironment());
        QCOMPARE(f.dialogs.asked().last().start, word("environment.kvenv"));
        QCOMPARE(f.dialogs.asked().last().text, word("Environment snapshot (*.kvenv)"));

        f.dialogs.answerPath(path);
        f.click("loadLeftAction");
        QCOMPARE(f.dialogs.asked().last().text, word("Environment snapshot (*.kvenv);;All files (*.*)"));
        QCOMPARE(f.session.paths().left, path);
        const QString folder = f.files.path(word("none/x.kvenv"));
        f.dialogs.answerPath(folder);
        f.key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(f.label("statusLabel"), word("Cannot write: %1").arg(QDir::toNativeSeparators(folder)));
        QVERIFY(!f.label("statusDetail").isEmpty());
    }

    void keepsWhatItHasWhenAFileIsBad()
    {
        Compared f;
        const QStringList before = f.rows();
        const QString bad = f.files.write(word("bad.kvenv"), "[]");
        const QString missing = f.files.path(word("missing.kvenv"));
        const QString cannotOpen = word("Cannot open: %1").arg(QDir::toNativeSeparators(missing));
        QSignalSpy finished(&f.session, &SessionWidget::comparisonFinished);

        f.dialogs.answerPath(bad);
        f.click("loadLeftAction");
        QCOMPARE(f.label("statusLabel"), word("Invalid environment snapshot format"));
        QVERIFY(!f.label("statusDetail").isEmpty());
        QCOMPARE(f.session.paths().left, f.left);
        f.type("rightSnapshot", missing);
        f.enter("rightSnapshot");
        QCOMPARE(f.label("statusLabel"), cannotOpen);
        f.key(Qt::Key_F5);
        QCOMPARE(f.label("statusLabel"), cannotOpen);
        QCOMPARE(f.rows(), before);
        QCOMPARE(finished.size(), 0);
        // The snapshot that was there is still at hand for its place.
        QVERIFY(QFile::remove(f.right));
        f.type("rightSnapshot", f.right);
        f.key(Qt::Key_F5);
        QCOMPARE(finished.size(), 1);
        QCOMPARE(f.rows(), before);
    }

    void walksFiltersAndSortsRows()
    {
        Compared f;
        f.view().setFocus();
        QCOMPARE(f.current(), word("HOME"));
        const auto walk = [&f](int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
            f.key(key, modifiers);
            return f.current();
        };
        QCOMPARE(walk(Qt::Key_F8), word("LANG"));
        QCOMPARE(walk(Qt::Key_F8), word("ONLY_L"));
        QCOMPARE(walk(Qt::Key_Up, Qt::AltModifier), word("LANG"));
        QCOMPARE(walk(Qt::Key_F8, Qt::ShiftModifier), word("LANG"));
        QCOMPARE(f.label("statusLabel"), word("No earlier difference"));

        f.key(Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(f.rows().size(), 4);
        QCOMPARE(f.current(), word("LANG")); // what was current stays so
        QVERIFY(f.label("countsLabel").endsWith(word("Hidden: 1")));
        QCOMPARE(f.session.options(), (QJsonObject{{word("onlyDifferences"), true}}));
        f.key(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.rows().size(), 5);
        QVERIFY(f.session.options().isEmpty());
        f.session.setOptions({{word("onlyDifferences"), true}});
        QVERIFY(f.action("showDifferencesAction").isChecked());

        f.key(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget()->objectName(), word("rowFilter"));
        f.type("rowFilter", word("only RIGHT"));
        QCOMPARE(f.rows(), QStringList(word("Right only|ONLY_R||a \u21b5 b")));
        f.type("rowFilter", word("nothing"));
        QVERIFY(f.rows().isEmpty());
        QCOMPARE(f.view().notice(), word("No row holds these words."));
        f.type("rowFilter", QString());

        f.session.setOptions({});
        f.view().header()->setSortIndicator(RowSource::Key, Qt::DescendingOrder);
        QVERIFY(f.rows().first().startsWith(word("Changed|PATH|")));
        f.view().header()->setSortIndicator(RowSource::Status, Qt::AscendingOrder);
        QVERIFY(f.rows().first().startsWith(word("Same|HOME|")));
        f.view().header()->setSortIndicator(-1, Qt::AscendingOrder);
        QVERIFY(f.rows().last().startsWith(word("Changed|PATH|")));
    }

    void showsAndCopiesWholeValues()
    {
        Compared f;
        f.view().goToRow(4);
        QCOMPARE(f.label("detailsTitle"), word("PATH"));
        QCOMPARE(f.box("leftValue"), word("/bin\n/usr/bin\n\n/opt"));
        QCOMPARE(f.box("rightValue"), word("/bin\n\n/sbin\n/opt"));
        f.view().goToRow(3);
        QCOMPARE(f.box("leftValue"), QString(u'\n'));
        QCOMPARE(f.box("rightValue"), word("a\nb"));
        f.key(Qt::Key_Up, Qt::ShiftModifier);
        f.key(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 word("Left only\tONLY_L\tx\t\nRight only\tONLY_R\t\t\"a\nb\"\n"));

        // No value is taken for markup.
        const QString bold = f.files.write(word("b.kvenv"), json("{'A': '<b>x</b>'}"));
        f.compareFiles(bold, bold);
        QVERIFY(
            f.session.rows().index(0, RowSource::Left).data(Qt::ToolTipRole).toString().contains(word("&lt;b&gt;")));
    }

    void takesDroppedFiles()
    {
        Compared f;
        f.session.setPaths({});
        QVERIFY(f.session.acceptsDroppedPaths());
        const auto *right = f.session.findChild<QLineEdit *>(word("rightSnapshot"));
        const QPoint onRight = right->mapTo(&f.session, right->rect().center());
        f.session.dropPaths({f.left}, onRight);
        f.wait();
        QCOMPARE(f.session.paths(), (SessionPaths{{}, f.left, {}}));
        f.session.dropPaths({f.right}, QPoint(600, 500)); // where the rows are: for the side that has none
        f.wait();
        QCOMPARE(f.session.paths(), (SessionPaths{f.right, f.left, {}}));
        f.session.dropPaths({f.left, f.right}, QPoint(600, 500));
        f.wait();
        QCOMPARE(f.session.paths(), (SessionPaths{f.left, f.right, {}}));
        QCOMPARE(f.rows().size(), 5);
    }

    void comparesServices()
    {
        FakePowerShell shell;
        shell.says(
            json("[{'Name': 'Spooler', 'State': 'Running', 'StartMode': 'Auto', 'DisplayName': 'Print Spooler'}]"));
        ServiceFixture f;
        QVERIFY(!f.action("compareAction").isEnabled());
        QCOMPARE(f.action("compareAction").toolTip(),
                 word("The left side holds nothing yet: capture it or load a file first"));
        QVERIFY(!f.action("saveLeftAction").isEnabled());
        f.key(Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(f.label("statusLabel"), word("Captured 1 service(s)"));
        QVERIFY(!f.action("compareAction").isEnabled());
        f.dialogs.answerPath(f.files.write(word("new.kvsvc"), services("Manual")));
        f.click("loadRightAction");
        f.key(Qt::Key_F5);
        QCOMPARE(f.rows(), QStringList(word("Changed|Spooler|Running / Auto|Running / Manual")));
        QCOMPARE(f.label("statusLabel"), word("Services compare finished (1 item(s))"));
        QCOMPARE(f.session.paths().left, word("[Current services]"));

        const QString saved = f.files.path(word("saved.kvsvc"));
        f.dialogs.answerPath(saved);
        f.click("saveLeftAction");
        QCOMPARE(loadSnapshot(saved, SnapshotForm::ServiceArray).snapshot.first(),
                 serviceItem(word("Print Spooler"), word("Running"), word("Auto")));

        // Both sides of a record are what the system says now, and it is asked once.
        ServiceFixture again;
        shell.says("[]");
        shell.listens();
        again.compareFiles(word("[Current services]"), word("[Current services]"));
        QCOMPARE(again.label("statusLabel"), word("Services compare finished (0 item(s))"));
        QCOMPARE(again.view().notice(), word("Neither side holds an item."));
        QCOMPARE(shell.call().count(word("-NoProfile")), 1);
    }

    void saysWhyThereAreNoServices()
    {
        FakePowerShell shell;
        ServiceFixture f;
        f.dialogs.answerPath(f.files.write(word("a.kvsvc"), services("Auto")));
        f.click("loadLeftAction");
        f.click("captureLeftAction"); // ends with an error
        QCOMPARE(f.label("statusLabel"), word("Cannot parse service list JSON"));
        QCOMPARE(f.label("statusDetail"), word("Get-CimInstance: access denied"));
        QVERIFY(f.view().notice().startsWith(word("Cannot parse service list JSON\n")));
        f.enter("leftSnapshot");
        QCOMPARE(f.label("statusLabel"), word("Loaded 1 item(s)"));
        QVERIFY(!f.view().notice().contains(word("JSON")));
        QCOMPARE(f.session.paths().left, f.files.path(word("a.kvsvc")));
        FakePowerShell::goes();
        f.click("captureRightAction");
        QCOMPARE(f.label("statusLabel"), word("Cannot parse service list JSON"));
        QVERIFY(f.label("statusDetail").contains(word("powershell.exe")));
        QCOMPARE(f.field("rightSnapshot"), QString());
        f.dialogs.answerPath(f.files.write(word("bad.kvsvc"), "{}"));
        f.click("loadRightAction");
        QCOMPARE(f.label("statusLabel"), word("Invalid service snapshot format"));

        for (const auto &[fault, text] :
             {std::pair(CaptureFault::TimedOut, word("PowerShell timed out")),
              std::pair(CaptureFault::CannotStart, word("Cannot parse service list JSON"))}) {
            SnapshotKind kind = serviceSnapshots();
            kind.capture = [fault = fault](const CancelFlag &, Progress &) { return SnapshotCapture{{}, fault}; };
            SnapshotWidget session(kind, f.host);
            session.findChild<QAction *>(QStringLiteral("captureLeftAction"))->trigger();
            QTRY_COMPARE(session.findChild<QLabel *>(QStringLiteral("statusLabel"))->text(), text);
        }
    }

    void canBeCancelledWhilePowerShellRuns()
    {
        FakePowerShell shell;
        FakePowerShell::hangs();
        ServiceFixture f;
        f.action("captureLeftAction").trigger();
        QVERIFY(f.session.isBusy());
        QTRY_VERIFY(f.label("statusLabel").startsWith(word("Asking PowerShell for the services")));
        QVERIFY(!f.action("captureRightAction").isEnabled());
        f.key(Qt::Key_Escape);
        QCOMPARE(f.label("statusLabel"), word("Cancelled"));
        QVERIFY(f.action("captureRightAction").isEnabled());
        QVERIFY(!f.action("cancelAction").isEnabled());
        f.action("captureLeftAction").trigger(); // closing the session does not wait for it
    }

    void comparesStartupItems()
    {
        StartupFixture f;
        QDir home = QDir::home();
        const QString folder = word("AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Startup");
        QVERIFY(home.mkpath(folder));
        QFile item(home.filePath(folder + word("/notes.bat")));
        QVERIFY(item.open(QIODevice::WriteOnly));
        item.close();
        f.click("captureRightAction");
        QVERIFY(f.label("statusLabel").startsWith(word("Captured ")));
        QCOMPARE(f.field("rightSnapshot"), word("[Current startup]"));
        f.type("leftSnapshot",
               f.files.write(word("old.kvstartup"), json("{'CommonStartup\\\\old.lnk': 'C:/old.lnk'}")));
        f.key(Qt::Key_F5);
        QCOMPARE(f.rows().first(), word("Left only|CommonStartup\\old.lnk|C:/old.lnk|"));
        QVERIFY(f.rows().contains(word("Right only|Startup\\notes.bat||") + item.fileName()));
        f.dialogs.answerPath(f.files.path(word("none/x")));
        f.click("saveRightAction");
        QCOMPARE(f.label("statusLabel"), word("Cannot write file"));
        QVERIFY(item.remove());
    }

    void followsTheTheme()
    {
        Compared f;
        const auto colour = [&f] {
            return f.session.rows().index(1, RowSource::Left).data(Qt::BackgroundRole).value<QBrush>().color();
        };
        const QColor light = colour();
        applyTheme(true);
        f.session.refreshTheme();
        QVERIFY(colour() != light);
        applyTheme(false);
    }
};

VELMORA_TEST(SnapshotWidgetTest)
#include "snapshot_widget_test.moc"
