#include "app/library/record_dialog.h"
#include "app/library/session_files.h"
#include "app/library/session_history.h"
#include "app/library/session_library.h"
#include "app/library/session_panel.h"
#include "app/library/tab_restorer.h"
#include "app/probe_session.h"
#include "app/scripted_dialogs.h"
#include "app/window/session_tabs.h"
#include "app/window/tarnwick.h"
#include "core/settings_store.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/test_main.h"

#include <QAbstractButton>
#include <QJsonDocument>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QVariantList>

using namespace velmora;
using velmora::test::word;
using velmora::test::words;

namespace {

SessionRecord makeRecord(const QString &type, const QString &left, const QString &right = {})
{
    return {.name = left + word(" name"),
            .type = type,
            .paths = {.left = left, .right = right, .base = {}},
            .options = {},
            .timestamp = QDateTime(QDate(2026, 3, 7), QTime(10, 20, 30))};
}

QStringList lefts(const SessionHistory &history)
{
    QStringList result;
    for (const SessionHistory::Entry &entry : history.entries())
        result.append(entry.record.paths.left);
    return result;
}

/// The library over real tabs and a real history, with a scripted person in front.
struct Shelf {
    Shelf()
    {
        auto *home = new QWidget;
        home->setObjectName(word("homePage"));
        tabs.addHome(home, {}, word("Home"));
        QObject::connect(&library, &SessionLibrary::recordOpened, &tabs, [this](const SessionRecord &record) {
            opened.append(record.type + u' ' + record.name);
            add(record.name);
        });
        QObject::connect(&library, &SessionLibrary::recordRestored, &tabs, [this](const SessionRecord &record) {
            opened.append(record.type + u' ' + record.name);
            tabs.addWaitingSession(new ProbeSession(host), {}, record.name);
        });
        QObject::connect(&library, &SessionLibrary::statusMessage, &tabs,
                         [this](const QString &message) { dialogs.said.append(message); });
    }

    ProbeSession *add(const QString &title)
    {
        auto *session = new ProbeSession(host);
        tabs.addSession(session, {}, title);
        return session;
    }

    /// The record dialog on the screen, and a line of it.
    [[nodiscard]] RecordDialog *dialog() { return tabs.findChild<RecordDialog *>(); }
    [[nodiscard]] QLineEdit *line(const char *name) { return dialog()->findChild<QLineEdit *>(QLatin1String(name)); }

    QStringList takeSaid() { return std::exchange(dialogs.said, {}); }

    /// Opens a workspace file and answers yes to everything.
    void restore(const QString &path)
    {
        dialogs.paths = {path};
        dialogs.answers = {1, 1};
        library.chooseWorkspace();
    }

    /// The titles of the sessions that have been started.
    [[nodiscard]] QStringList started() const
    {
        QStringList result;
        const QList<SessionWidget *> sessions = tabs.sessions();
        for (SessionWidget *session : sessions) {
            if (!qobject_cast<ProbeSession *>(session)->log.isEmpty())
                result.append(tabs.titleAt(tabs.indexOf(session)));
        }
        return result;
    }

    ScriptedDialogs dialogs;
    test::RecordingHost host;
    SessionTabs tabs;
    SessionHistory history;
    SessionLibrary library{tabs, history, &tabs};
    QStringList opened;
};

} // namespace

class SessionLibraryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("USERNAME", "velmora-library-" + QByteArray::number(QCoreApplication::applicationPid()));
        QVERIFY(m_folder.isValid());
    }

    void init() { InterfaceSettings().clear(); }
    void cleanupTestCase() { InterfaceSettings().clear(); }

    void remembersASessionOnceInARow()
    {
        SessionHistory history;
        const SessionPaths a{word("a"), {}, {}};
        const SessionPaths b{word("b"), {}, {}};
        const QString text = word("text");
        history.add(text, word("one"), a);
        history.add(text, word("other name"), a);
        history.add(text, {}, {word("a/"), {}, {}}); // the same folder
        QCOMPARE(history.entries().size(), 1);
        history.add(text, {}, b);
        history.add(text, {}, a);
        history.add(word("binary"), {}, a);
        QCOMPARE(lefts(history).join(u' '), word("a b a a"));
    }

    // Storing a hundred times over makes the settings file a hundred times.
    void keepsTheNewestHundredAndStoresThemOnce()
    {
        SessionHistory history;
        QSignalSpy changed(&history, &SessionHistory::changed);
        {
            const SessionHistory::Batch outer(history);
            const SessionHistory::Batch inner(history);
            for (int i = 0; i < 101; ++i)
                history.add(word("text"), {}, {QString::number(i), {}, {}});
        }
        const SessionHistory::Batch idle(history);
        QCOMPARE(changed.count(), 1);
        const QStringList stored = lefts(SessionHistory());
        QCOMPARE(stored.size(), 100);
        QCOMPARE(stored.constFirst(), word("1"));
        QCOMPARE(stored.constLast(), word("100"));
    }

    void storesEachChange()
    {
        SessionHistory history;
        QSignalSpy changed(&history, &SessionHistory::changed);
        const SessionRecord record = makeRecord(word("merge"), word("l"), word("r"));
        history.replaceAll({record, makeRecord(word("text"), word("b")), record});
        const quint64 id = history.entries()[1].id;
        history.remove(id);
        history.remove(id);
        QVERIFY(!history.find(id));
        SessionRecord edited = record;
        edited.paths.base = word("base, with\ta \"quote\"");
        history.replace(history.entries()[0].id, edited);
        QCOMPARE(changed.count(), 3);
        QCOMPARE(SessionHistory().records(), (QList<SessionRecord>{edited, record}));
        QCOMPARE(InterfaceSettings().value(word("sessions/size")).toInt(), 2);
        QVERIFY(!InterfaceSettings().contains(word("sessions/3/name")));
    }

    void makesNothingOfStrangeSettings()
    {
        const std::pair<const char *, QVariant> strange[] = {{"sessions", word("text")},
                                                             {"sessions/size", 2'000'000'000},
                                                             {"sessions/size", -5},
                                                             {"sessions/size", word("many")}};
        for (const auto &[key, value] : strange) {
            InterfaceSettings().setValue(QLatin1String(key), value);
            QVERIFY2(SessionHistory().entries().isEmpty(), qPrintable(value.toString()));
            InterfaceSettings().clear();
        }
    }

    void writesJson()
    {
        const auto text = [](const QJsonObject &object) {
            return QJsonDocument(object).toJson(QJsonDocument::Compact);
        };
        SessionRecord record = makeRecord(word("text"), word("/l"), word("/r"));
        const QByteArray fields = R"("basePath":"","leftPath":"/l","name":"/l name",)";
        const QByteArray rest = R"("rightPath":"/r",)";
        const QByteArray last = R"("timestamp":"2026-03-07T10:20:30","type":"text")";
        QCOMPARE(text(sessionToJson(record)), '{' + fields + rest + last + R"(,"version":1})");
        Workspace workspace{.sessions = {record}, .openTabs = {{record, 3}}, .activeTabIndex = 3};
        workspace.openTabs[0].record.options = {{word("ignoreCase"), true}};
        const QByteArray tab = fields + R"("options":{"ignoreCase":true},)" + rest + R"("tabIndex":3,)" + last;
        QCOMPARE(text(workspaceToJson(workspace)), R"({"activeTabIndex":3,"openTabs":[{)" + tab +
                                                       R"(,"version":2}],"sessions":[{)" + fields + rest + last +
                                                       R"(}],"version":2})");
        QCOMPARE(workspaceFromJson(workspaceToJson(workspace)), workspace);
    }

    void readsSparseJson()
    {
        QCOMPARE(sessionFromJson({{word("name"), 3}, {word("options"), word("x")}}), SessionRecord());
        const auto document =
            QJsonDocument::fromJson(R"({"sessions":[{"type":"text"},{"name":"no type"},7],"openTabs":[{},"x"]})");
        const Workspace sparse = workspaceFromJson(document.object());
        QCOMPARE(sparse.sessions.size(), 1);
        QVERIFY(qAbs(sparse.sessions[0].timestamp.secsTo(QDateTime::currentDateTime())) < 60);
        QVERIFY(sparse.openTabs.isEmpty());
        QCOMPARE(sparse.activeTabIndex, -1);
        // Indices of no tab, as an editor or a damaged disk may leave them.
        for (const char *tab :
             {R"({"type":"text"})", R"({"type":"text","tabIndex":-7})", R"({"type":"text","tabIndex":1.5})"}) {
            const QByteArray odd = QByteArray(R"({"activeTabIndex":-7,"openTabs":[)") + tab + "]}";
            const Workspace desk = workspaceFromJson(QJsonDocument::fromJson(odd).object());
            QCOMPARE(frontTab(desk), -1);
            QCOMPARE(workspaceFromJson(workspaceToJson(desk)).openTabs, desk.openTabs);
        }
    }

    void savesTheSessionInFront()
    {
        Shelf shelf;
        shelf.library.saveSession();
        QCOMPARE(shelf.takeSaid(), words("Switch to a compare or tool tab first"));

        shelf.add(word("R&D"))->sides = {word("/l"), word("/r"), {}};
        shelf.library.saveSession();
        QVERIFY(shelf.dialog());
        QCOMPARE(shelf.dialog()->windowTitle(), word("Save session file as"));
        const QString path = m_folder.filePath(word("saved"));
        shelf.dialogs.paths = {path};
        shelf.dialog()->accept();
        QCOMPARE(shelf.takeSaid(), (QStringList{word("Save session </> Velmora session (*.kvsession)"),
                                                word("Session saved: %1.kvsession").arg(path)}));
        QTRY_VERIFY(!shelf.dialog());

        shelf.library.openSessionFile(path + word(".kvsession"));
        QCOMPARE(shelf.opened, words("text R&D"));
        QCOMPARE(shelf.takeSaid(), words("Session opened: R&D"));

        shelf.dialogs.paths = {m_folder.filePath(word("missing/x.KVSESSION"))};
        shelf.library.saveSession();
        shelf.dialog()->accept();
        QCOMPARE(shelf.takeSaid().constLast(), word("Failed to save session"));
    }

    void opensAChosenFile()
    {
        Shelf shelf;
        const QString path = write("my files.kvsession", R"({"type":"folder","leftPath":"/a"})");
        shelf.dialogs.paths = {path, m_folder.filePath(word("not there"))};
        shelf.library.chooseSession();
        QCOMPARE(shelf.opened, words("folder my files")); // named after its file
        shelf.library.chooseSession();
        QCOMPARE(shelf.dialogs.said.constFirst(),
                 word("Open session file <> Velmora session (*.kvsession);;All files (*.*)"));
        QCOMPARE(shelf.dialogs.said.constLast(), word("Open session: Cannot open session file"));
        QCOMPARE(shelf.opened.size(), 1);
        shelf.dialogs.paths = {m_folder.filePath(word("not there"))};
        shelf.library.chooseWorkspace();
        QCOMPARE(shelf.dialogs.said.constLast(), word("Cannot open workspace file"));
    }

    void savesAndRestoresAWorkspace()
    {
        const QString path = m_folder.filePath(word("desk"));
        {
            Shelf shelf;
            shelf.history.add(word("folder"), word("old"), {word("/o"), {}, {}});
            shelf.add(word("first"));
            shelf.add(word("second"));
            shelf.tabs.setCurrentIndex(1);
            shelf.dialogs.paths = {path};
            shelf.library.saveWorkspace();
            QCOMPARE(shelf.takeSaid(),
                     (QStringList{word("Save workspace <workspace.kvworkspace> Velmora workspace (*.kvworkspace)"),
                                  word("Workspace saved: %1.kvworkspace (2 open tabs)").arg(path)}));
            shelf.dialogs.paths = {m_folder.filePath(word("missing/desk"))};
            shelf.library.saveWorkspace();
            QCOMPARE(shelf.takeSaid().constLast(), word("Failed to save workspace"));
        }
        InterfaceSettings().clear();

        Shelf shelf;
        shelf.history.add(word("text"), word("mine"), {word("/m"), {}, {}});
        const QString file = path + word(".kvworkspace");
        shelf.dialogs.paths = {file};
        shelf.dialogs.answers = {0};
        shelf.library.chooseWorkspace();
        QCOMPARE(
            shelf.takeSaid(),
            (QStringList{word("Open workspace <> Velmora workspace (*.kvworkspace);;All files (*.*)"),
                         QStringLiteral("Open workspace: Replace current session history with 1 session(s) from the "
                                        "workspace? [Yes]")}));
        QCOMPARE(lefts(shelf.history), words("/m"));

        shelf.dialogs.paths = {file};
        shelf.dialogs.answers = {1, 1};
        shelf.library.chooseWorkspace();
        QCOMPARE(shelf.takeSaid().mid(2), (QStringList{word("Open workspace: Restore 2 saved open tab(s)? [No]"),
                                                       word("Workspace loaded: %1").arg(file)}));
        QCOMPARE(lefts(shelf.history), words("/o"));
        QCOMPARE(shelf.opened, words("text first|text second"));
        QCOMPARE(shelf.tabs.currentIndex(), 1);
    }

    // The history itself is offered. An index out of range changes nothing.
    void opensAWorkspaceWithoutTabs()
    {
        Shelf shelf;
        const QString path = write("w", R"({"sessions":[{"type":"text","name":"a"},{"type":"sync","name":"b"}],
                                            "activeTabIndex":99})");
        shelf.dialogs.answers = {1};
        shelf.library.openWorkspace(path);
        QCOMPARE(shelf.takeSaid(),
                 (QStringList{word("Open workspace: Open 2 session(s) from the workspace as tabs? [No]"),
                              word("Workspace loaded: %1").arg(path)}));
        QCOMPARE(shelf.opened, words("text a|sync b"));
        QCOMPARE(shelf.tabs.currentIndex(), 0);
        QVERIFY(shelf.started().isEmpty());
    }

    void restoresManyTabsWithoutStartingThem()
    {
        const QString file = write("many.kvworkspace", manyTabs(60, 57));
        Shelf shelf;
        shelf.history.add(word("text"), {}, {word("/m"), {}, {}});
        shelf.add(word("open before"));
        QSignalSpy stored(&shelf.history, &SessionHistory::changed);
        QSignalSpy current(&shelf.tabs, &QTabWidget::currentChanged);
        QSignalSpy progressed(&shelf.library, &SessionLibrary::restoreProgressed);
        QSignalSpy finished(&shelf.library, &SessionLibrary::restoreFinished);
        shelf.restore(file);
        QTRY_COMPARE(finished.count(), 1);
        QCOMPARE(shelf.tabs.count(), 62);
        // The session that was in front is so again, although other tabs stand before it; no other came to the front.
        QCOMPARE(shelf.tabs.titleAt(shelf.tabs.currentIndex()), word("tab 57"));
        QCOMPARE(current.count(), 1);
        QCOMPARE(shelf.started(), words("tab 57"));
        QCOMPARE(progressed.constFirst(), (QVariantList{QVariant::fromValue(TabRestorer::perTurn), qsizetype(60)}));
        QCOMPARE(stored.count(), 1); // the history of the file
        shelf.tabs.setCurrentIndex(2);
        shelf.tabs.showHome();
        shelf.tabs.setCurrentIndex(2);
        QCOMPARE(shelf.started(), words("tab 1|tab 57"));
        QCOMPARE(qobject_cast<ProbeSession *>(shelf.tabs.sessionAt(2))->log.size(), 1);
    }

    void restoringCanBeStopped()
    {
        const QString file = write("many.kvworkspace", manyTabs(60, 57));
        Shelf shelf;
        QSignalSpy finished(&shelf.library, &SessionLibrary::restoreFinished);
        QObject::connect(&shelf.library, &SessionLibrary::restoreProgressed, &shelf.library,
                         &SessionLibrary::stopRestoring, Qt::QueuedConnection);
        shelf.restore(file);
        QTRY_COMPARE(finished.count(), 1);
        const int there = shelf.tabs.count();
        QVERIFY2(there > 1 && there <= 2 * TabRestorer::perTurn + 1, qPrintable(QString::number(there)));
        QCoreApplication::processEvents();
        QCOMPARE(shelf.tabs.count(), there);
        QCOMPARE(shelf.tabs.currentIndex(), 0);
        QCOMPARE(shelf.takeSaid().constLast(), word("Workspace loaded: %1").arg(file));
    }

    void theWindowMayCloseWhileItRestores()
    {
        const QString file = write("many.kvworkspace", manyTabs(60, 57));
        auto shelf = std::make_unique<Shelf>();
        shelf->restore(file);
        shelf.reset();
        QCoreApplication::processEvents();
    }

    void changesAnEntry()
    {
        Shelf shelf;
        shelf.library.editNewestEntry();
        QCOMPARE(shelf.takeSaid(), words("No recent session to edit"));

        shelf.history.replaceAll({makeRecord(word("text"), word("/a")), makeRecord(word("merge"), word("/b"))});
        shelf.library.editNewestEntry();
        QVERIFY(shelf.line("recordBase")->isVisibleTo(shelf.dialog()));
        shelf.dialog()->reject();
        QTRY_VERIFY(!shelf.dialog());

        const quint64 id = shelf.history.entries()[0].id;
        shelf.library.editEntry(id);
        QCOMPARE(shelf.dialog()->windowTitle(), word("Edit session"));
        QVERIFY(!shelf.line("recordBase")->isVisibleTo(shelf.dialog()));
        shelf.line("recordLeft")->setText(word("  /new  "));
        shelf.dialog()->accept();
        const SessionRecord &record = shelf.history.find(id)->record;
        QCOMPARE(record.paths.left, word("/new"));
        QVERIFY(qAbs(record.timestamp.secsTo(QDateTime::currentDateTime())) < 60);
        QCOMPARE(shelf.opened, words("text /a name"));
    }

    void deletesAnEntryWhenAsked()
    {
        Shelf shelf;
        shelf.history.replaceAll({makeRecord(word("text"), word("/a"))});
        const quint64 id = shelf.history.entries()[0].id;
        shelf.library.deleteEntry(id);
        QCOMPARE(shelf.takeSaid(), words("Delete session: Remove \"/a name\" from auto-save history? [No]"));
        QCOMPARE(shelf.history.entries().size(), 1);
        shelf.dialogs.answers = {1};
        shelf.library.deleteEntry(id);
        QCOMPARE(shelf.takeSaid().constLast(), word("Session removed from auto-save"));
        QVERIFY(shelf.history.entries().isEmpty());
        shelf.library.openEntry(id);
        shelf.library.editEntry(id);
        shelf.library.deleteEntry(id);
        QVERIFY(shelf.opened.isEmpty());
    }

    void groupsTheHistoryByDays()
    {
        const QDate today(2026, 3, 8);
        QCOMPARE(historyDayLabel(today, today), word("Today"));
        QCOMPARE(historyDayLabel(QDate(2026, 3, 7), today), word("Yesterday"));
        QCOMPARE(historyDayLabel(QDate(2026, 3, 6), today), word("2026/3/6"));

        SessionPanel panel;
        SessionHistory history;
        SessionRecord old = makeRecord(word("folder"), word("/o"));
        SessionRecord recent = makeRecord(word("merge"), word("/l"), word("/r"));
        recent.paths.base = word("/b");
        recent.timestamp = QDateTime::currentDateTime();
        history.replaceAll({old, recent, recent, old});
        panel.setHistory(history.entries());
        const QTreeWidgetItem *root = panel.tree()->topLevelItem(1);
        QStringList lines;
        for (int i = 0; i < root->childCount(); ++i) {
            lines.append(root->child(i)->text(0));
            for (int k = 0; k < root->child(i)->childCount(); ++k)
                lines.append(QLatin1Char(' ') + root->child(i)->child(k)->text(0));
        }
        QCOMPARE(lines.join(u'|'), word("2026/3/7| /o name|Today| /l name| /l name|2026/3/7| /o name"));
        const QTreeWidgetItem *item = root->child(1)->child(0);
        QCOMPARE(item->toolTip(0), QDir::toNativeSeparators(word("/b\n/l\n/r")));
        QCOMPARE(root->child(0)->child(0)->toolTip(0), QDir::toNativeSeparators(word("/o\n")));
        QCOMPARE(SessionPanel::entryOf(item), std::optional(history.entries()[2].id));
        QCOMPARE(SessionPanel::entryOf(root), std::nullopt);
        QCOMPARE(item->data(0, SessionPanel::kindRole).toString(), word("merge"));
        QVERIFY(!item->icon(0).isNull());

        // The keys go on from the entry in the place of one that is gone.
        panel.tree()->setCurrentItem(root->child(1)->child(0));
        history.remove(history.entries()[2].id);
        panel.setHistory(history.entries());
        QCOMPARE(SessionPanel::entryOf(panel.tree()->currentItem()), std::optional(history.entries()[1].id));
    }

    void theWindowRemembersWhatItOpens()
    {
        Tarnwick window;
        const auto *panel = window.findChild<SessionPanel *>();
        auto *tabs = window.findChild<SessionTabs *>();
        const auto names = [panel] {
            QStringList result;
            const auto items = panel->tree()->findItems(word("*"), Qt::MatchWildcard | Qt::MatchRecursive);
            for (const QTreeWidgetItem *item : items) {
                if (SessionPanel::entryOf(item))
                    result.append(item->text(0));
            }
            return result;
        };
        window.onNewFolderCompare();
        QVERIFY(names().isEmpty());
        window.openCompare(word("sync"), word("/x/a"), word("/x/b"));
        QCOMPARE(names(), words("Sync a <-> b"));
        Q_EMIT tabs->currentSession()->comparisonFinished(word("/x/a"), word("/x/b"));
        QCOMPARE(names().size(), 1);
        Q_EMIT tabs->currentSession()->tabTitleChanged(word("b <-> c"));
        Q_EMIT tabs->currentSession()->comparisonFinished(word("/x/b"), word("/x/c"));
        QCOMPARE(names(), words("b <-> c|Sync a <-> b"));

        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QSignalSpy deleting(panel, &SessionPanel::deleteRequested);
        panel->tree()->setFocus();
        panel->tree()->setCurrentItem(panel->tree()->topLevelItem(1));
        QTest::keyClick(panel->tree(), Qt::Key_Delete);
        QVERIFY(deleting.isEmpty());
        ScriptedDialogs dialogs;
        panel->tree()->setCurrentItem(panel->tree()->topLevelItem(1)->child(0)->child(1));
        QTest::keyClick(panel->tree(), Qt::Key_Delete);
        QCOMPARE(deleting.count(), 1);
        QVERIFY(dialogs.said.constLast().contains(QLatin1String("Sync a <-> b")));

        const auto menuAt = [&window, panel](const QTreeWidgetItem *item) {
            window.onSessionTreeContextMenu(panel->tree()->visualItemRect(item).center());
            QStringList entries;
            if (const QWidget *menu = QApplication::activePopupWidget()) {
                for (const QAction *action : menu->actions())
                    entries.append(action->text());
            }
            return entries.join(u'|');
        };
        QCOMPARE(menuAt(panel->tree()->topLevelItem(1)), QString());
        QCOMPARE(menuAt(panel->tree()->topLevelItem(1)->child(0)->child(0)), word("Open|Edit|Save as...|Delete"));

        // A click opens the entry again; a recent session on the home page does so too.
        auto *item = panel->tree()->topLevelItem(1)->child(0)->child(1);
        window.onSessionItemClicked(item, 0);
        QCOMPARE(tabs->titleAt(tabs->currentIndex()), word("Sync a <-> b"));
        QCOMPARE(tabs->currentSession()->kind(), word("sync"));
        QCOMPARE(names().size(), 3);
        const auto recent = window.findChildren<QAbstractButton *>(word("recentSession"));
        QCOMPARE(recent.size(), 2);
        recent[1]->click();
        QCOMPARE(tabs->titleAt(tabs->currentIndex()), word("b <-> c"));
    }

    // Whoever wrote the file: what it would open is shown before another machine is asked for it; all else is opened.
    void asksBeforeAFileLeadsToAnotherMachine()
    {
        Shelf shelf;
        const auto open = [&](const char *type, const char *field, const char *path) {
            const QJsonObject object{{word("name"), word("Mine")},
                                     {word("type"), QLatin1String(type)},
                                     {QLatin1String(field), QString::fromUtf8(path)}};
            shelf.library.openNamedSessionFile(write("x.kvsession", QJsonDocument(object).toJson()));
            return !shelf.takeSaid().constFirst().startsWith(QLatin1String("Session opened"));
        };
        for (const char *field : {"leftPath", "rightPath", "basePath"})
            QVERIFY2(open("text", field, "//host/x"), field);
        for (const char *path : {"me@host:x", "sftp://host/x", "\\\\host\\x"})
            QCOMPARE(open("text", "leftPath", path), path[0] != '\\' || QDir::separator() == u'\\');
        QVERIFY(open("sftp", "leftPath", "/x"));
        const QStringList before = shelf.opened;
        for (const char *path : {"/x", "b/c", "C:/x"})
            QVERIFY2(!open("text", "leftPath", path), path);
        QCOMPARE(shelf.opened.size() - before.size(), 3);
    }

    void saysWhatWouldLeadToAnotherMachine()
    {
        Shelf shelf;
        const QString left = QDir::toNativeSeparators(word("//host/a"));
        // Nothing in a path can hide what it is.
        const QString path =
            write("x.kvsession",
                  R"({"name":"M\ny","type":"tExt ","leftPath":"\/\/host/a\u202etxt.exe\n<b>","basePath":"x"})");
        shelf.library.openNamedSessionFile(path);
        QCOMPARE(shelf.takeSaid().constFirst(),
                 QStringLiteral("Open session: The session \"M[LF]y\" leads to another machine. Open it?\n\n"
                                "Type: Text compare\nBase: x\nLeft: %1[RLO]txt.exe[LF]<b> [Yes]")
                     .arg(left));
        const QString workspace = write("y.kvworkspace", R"({"sessions":[{"type":"text","leftPath":"/x"}],
                                                             "openTabs":[{"type":"text","leftPath":"\/\/host/a"}]})");
        shelf.library.openNamedWorkspace(workspace);
        QCOMPARE(shelf.takeSaid(),
                 QStringList{QStringLiteral("Open workspace: The workspace \"y\" leads to another machine. Open it?\n\n"
                                            "Type: Text compare  Left: %1 [Yes]")
                                 .arg(left)});
        QVERIFY(shelf.opened.isEmpty());
    }

    void questionsOfSeveralFilesWaitForEachOther()
    {
        Shelf shelf;
        shelf.dialogs.answersLater = true;
        for (const char *name : {"1", "2", "3"})
            shelf.library.openNamedSessionFile(write(name, R"({"type":"text","leftPath":"\/\/host/a"})"));
        for (const char *name : {"1", "2", "3"}) {
            QCOMPARE(shelf.dialogs.waiting.size(), 1);
            QVERIFY(shelf.dialogs.said.constLast().contains(word("\"%1\"").arg(QLatin1String(name))));
            shelf.dialogs.waiting.takeFirst()(1);
        }
        QCOMPARE(shelf.opened.join(u'|'), word("text 1|text 2|text 3"));
    }

private:
    /// A workspace with numbered tabs, the one at `front` in front.
    static QByteArray manyTabs(int count, int front)
    {
        Workspace workspace;
        workspace.sessions = {makeRecord(word("text"), word("/a"))};
        workspace.activeTabIndex = front;
        for (int i = 1; i <= count; ++i) {
            SessionRecord record = makeRecord(word("text"), QString::number(i));
            record.name = word("tab %1").arg(i);
            workspace.openTabs.append({record, i});
        }
        return QJsonDocument(workspaceToJson(workspace)).toJson();
    }

    QString write(const char *name, const QByteArray &content) const
    {
        const QString path = m_folder.filePath(QLatin1String(name));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", name);
        return path;
    }

    QTemporaryDir m_folder;
};

VELMORA_TEST(SessionLibraryTest)
#include "session_library_test.moc"
