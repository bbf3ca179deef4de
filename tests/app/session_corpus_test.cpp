#include "app/probe_session.h"
#include "app/scripted_dialogs.h"
#include "app/session_files.h"
#include "app/session_history.h"
#include "app/session_kinds.h"
#include "app/session_library.h"
#include "app/session_tabs.h"
#include "app/tarnwick.h"
#include "core/settings_store.h"
#include "support/test_main.h"

#include <QRandomGenerator>
#include <QTemporaryDir>

using namespace velmora;

namespace {

constexpr char casesFolder[] = VELMORA_SOURCE_DIR "/tests/app/cases";

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Damages a text as disks, editors and people do.
QByteArray damaged(QByteArray bytes, QRandomGenerator &random)
{
    const auto place = [&bytes, &random] { return random.bounded(bytes.size() + 1); };
    for (int i = random.bounded(1, 4); i > 0 && !bytes.isEmpty(); --i) {
        switch (random.bounded(6)) {
        case 0:
            bytes.truncate(place());
            break;
        case 1:
            bytes.insert(place(), "{}[]\":,\\0\x80\xff-e9"[random.bounded(15)]);
            break;
        case 2:
            bytes.remove(place(), random.bounded(1, 9));
            break;
        case 3:
            bytes[random.bounded(bytes.size())] = static_cast<char>(random.bounded(256));
            break;
        case 4:
            bytes.insert(place(), bytes.mid(place(), 40));
            break;
        default:
            bytes.insert(place(), QByteArray(random.bounded(2000), '['));
        }
    }
    return bytes;
}

/// Options that differ from what a session of the kind has by itself, in a form that it understands.
QJsonObject changedOptions(const SessionWidget &session)
{
    QJsonObject options = session.options();
    if (options.isEmpty())
        return {};
    const QStringList keys = options.keys();
    for (const QString &key : keys) {
        if (options[key].isBool())
            options[key] = !options[key].toBool();
    }
    return options;
}

} // namespace

/// Files that are not what their names say, and every kind of session on its way through files and back.
class SessionCorpusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("USERNAME", "velmora-corpus-" + QByteArray::number(QCoreApplication::applicationPid()));
        QVERIFY(m_folder.isValid());
    }

    void init() { InterfaceSettings().clear(); }
    void cleanupTestCase() { InterfaceSettings().clear(); }

    // The first line of each case says what is told; what follows is the file.
    void refusesAndChangesNothing_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("told");
        QTest::addColumn<QByteArray>("content");
        const QFileInfoList files = QDir(QString::fromLatin1(casesFolder)).entryInfoList(QDir::Files, QDir::Name);
        QVERIFY(files.size() > 20);
        for (const QFileInfo &file : files) {
            const QByteArray whole = contentsOf(file.filePath());
            const qsizetype line = whole.indexOf('\n');
            QTest::newRow(qPrintable(file.fileName()))
                << file.fileName() << QString::fromUtf8(whole.left(line)) << whole.mid(line + 1);
        }
        const auto made = [](const char *name, const char *told, const QByteArray &content) {
            QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(told) << content;
        };
        const char noSession[] = "Open session: Invalid session file format.";
        const char noWorkspace[] = "Open failed: Invalid workspace file format.";
        const QByteArray deep = R"({"type":"text","options":)" + QByteArray(200'000, '[');
        made("deep.kvsession", noSession, deep);
        made("deep.kvworkspace", noWorkspace, deep);
        const QByteArray large = "{\"type\":\"text\",\"name\":\"" + QByteArray(jsonFileLimit, 'x') + "\"}";
        made("large.kvsession", noSession, large);
        made("large.kvworkspace", noWorkspace, large);
    }

    void refusesAndChangesNothing()
    {
        QFETCH(QString, name);
        QFETCH(QString, told);
        QFETCH(QByteArray, content);
        const QString path = m_folder.filePath(name);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        file.close();

        ScriptedDialogs dialogs;
        SessionTabs tabs;
        SessionHistory history;
        history.add(QStringLiteral("text"), QStringLiteral("kept"), {QStringLiteral("/k"), {}, {}});
        SessionLibrary library(tabs, history, &tabs);
        QStringList opened;
        connect(&library, &SessionLibrary::recordOpened, this, [&] { opened.append(QStringLiteral("opened")); });
        connect(&library, &SessionLibrary::recordRestored, this, [&] { opened.append(QStringLiteral("restored")); });
        connect(&library, &SessionLibrary::statusMessage, this,
                [&](const QString &text) { dialogs.said.append(text); });
        dialogs.answers = {1, 1, 1};
        if (name.endsWith(QLatin1String(".kvsession")))
            library.openSessionFile(path);
        else
            library.openWorkspace(path);
        QCOMPARE(dialogs.said, QStringList{told});
        QVERIFY(opened.isEmpty());
        QCOMPARE(history.records().size(), 1);
        QCOMPARE(contentsOf(path), content);
    }

    void damagedFilesAreReadOrRefused()
    {
        const QByteArray session = R"({"version":2,"name":"n","type":"text","leftPath":"/l","rightPath":"/r",
            "basePath":"","timestamp":"2026-03-07T10:20:30","options":{"a":[1,{"b":null}],"c":"\u00e4"}})";
        const QByteArray workspace = R"({"version":2,"sessions":[{"name":"n","type":"folder","leftPath":"/l",
            "timestamp":"2026-03-07T10:20:30"}],"openTabs":[)" +
                                     session + R"(],"activeTabIndex":1})";
        QRandomGenerator random(20260307);
        int understood = 0;
        for (int i = 0; i < 20'000; ++i) {
            const QByteArray bytes = damaged(i % 2 ? session : workspace, random);
            const QJsonDocument document = QJsonDocument::fromJson(bytes);
            if (!document.isObject())
                continue;
            ++understood;
            // Whatever was made of it is written and read again as the same.
            const SessionRecord record = sessionFromJson(document.object());
            QCOMPARE(sessionFromJson(sessionToJson(record)), record);
            Workspace desk = workspaceFromJson(document.object());
            QVERIFY(frontTab(desk) < desk.openTabs.size());
            for (SessionRecord &entry : desk.sessions)
                entry.timestamp = QDateTime(QDate(2026, 1, 1), QTime(1, 2, 3));
            QCOMPARE(workspaceFromJson(workspaceToJson(desk)), desk);
        }
        QVERIFY(understood > 500);
    }

    void everyKindComesBackAsItWas_data()
    {
        QTest::addColumn<QString>("kind");
        for (const SessionKindRow &kind : sessionKinds())
            QTest::newRow(kind.id.data()) << QString(kind.id);
    }

    void everyKindComesBackAsItWas()
    {
        QFETCH(QString, kind);
        const QString sessionFile = m_folder.filePath(kind + QStringLiteral(".kvsession"));
        const QString workspaceFile = m_folder.filePath(kind + QStringLiteral(".kvworkspace"));
        ScriptedDialogs dialogs;
        SessionRecord saved;
        {
            Tarnwick window;
            auto *tabs = window.findChild<SessionTabs *>();
            const SessionKindRow &row = *findSessionKind(kind);
            window.openEmpty(row);
            SessionWidget *session = tabs->currentSession();
            QJsonObject options = changedOptions(*session);
            if (options.isEmpty())
                options = {{QStringLiteral("probe"), 1}};
            session->setOptions(options);
            session->setPaths({.left = row.sides > 0 ? m_folder.filePath(QStringLiteral("l & <b> ä")) : QString(),
                               .right = row.sides > 1 ? m_folder.filePath(QStringLiteral("r %1")) : QString(),
                               .base = row.sides > 2 ? m_folder.filePath(QStringLiteral("b")) : QString()});
            saved = session->record();
            QCOMPARE(saved.type, kind);
            QVERIFY2(saved.options.isEmpty() || saved.options == options, "the options were not taken up whole");
            saved.name = QStringLiteral("A & B");
            saved.timestamp = {};
            QVERIFY(writeJsonFile(sessionFile, sessionToJson(saved)));
            Q_EMIT session->tabTitleChanged(saved.name);
            window.handleArguments({QStringLiteral("velmora"), sessionFile}); // refused: nothing is opened
            QCOMPARE(tabs->count(), 2);
            dialogs.answers = {1};
            window.handleArguments({QStringLiteral("velmora"), sessionFile});
            QCOMPARE(tabs->count(), 3);
            compare(tabs, 2, saved);
            tabs->closeTab(1);
            QTRY_COMPARE(tabs->count(), 2);
            dialogs.paths = {workspaceFile};
            window.onSaveWorkspace();
        }
        const QList<SessionRecord> history = SessionHistory().records();
        QCOMPARE(history.size(), 1);
        QCOMPARE(history[0].name, saved.name);
        QCOMPARE(history[0].type, saved.type);
        QCOMPARE(history[0].paths, saved.paths);

        InterfaceSettings().clear();
        Tarnwick window;
        auto *tabs = window.findChild<SessionTabs *>();
        dialogs.paths = {workspaceFile};
        dialogs.answers = {1};
        window.onOpenWorkspace();
        QCOMPARE(tabs->count(), 2);
        QCOMPARE(tabs->currentIndex(), 1);
        compare(tabs, 1, saved);
    }

private:
    static void compare(const SessionTabs *tabs, int index, const SessionRecord &expected)
    {
        const SessionRecord found = tabs->sessionAt(index)->record();
        QCOMPARE(found.paths, expected.paths);
        QCOMPARE(found.options, expected.options);
        QCOMPARE(found.type, expected.type);
    }

    QTemporaryDir m_folder;
};

VELMORA_TEST(SessionCorpusTest)
#include "session_corpus_test.moc"
