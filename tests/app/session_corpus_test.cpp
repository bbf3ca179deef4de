#include "app/library/session_files.h"
#include "app/library/session_history.h"
#include "app/library/session_library.h"
#include "app/probe_session.h"
#include "app/scripted_dialogs.h"
#include "app/session_kinds.h"
#include "app/window/session_tabs.h"
#include "app/window/tarnwick.h"
#include "core/settings_store.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QTemporaryDir>

using namespace velmora;
using velmora::test::contentsOf;
using velmora::test::word;

namespace {

constexpr char casesFolder[] = VELMORA_SOURCE_DIR "/tests/app/cases";

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
        QVERIFY(test::makeFile(path, content));
        ScriptedDialogs dialogs;
        SessionTabs tabs;
        SessionHistory history;
        history.add(word("text"), word("kept"), {word("/k"), {}, {}});
        SessionLibrary library(tabs, history, &tabs);
        QStringList opened;
        connect(&library, &SessionLibrary::recordOpened, this, [&] { opened.append(word("opened")); });
        connect(&library, &SessionLibrary::recordRestored, this, [&] { opened.append(word("restored")); });
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

    void everyKindComesBackAsItWas_data()
    {
        QTest::addColumn<QString>("kind");
        for (const SessionKindRow &kind : sessionKinds())
            QTest::newRow(kind.id.data()) << QString(kind.id);
    }

    void everyKindComesBackAsItWas()
    {
        QFETCH(QString, kind);
        const QString sessionFile = m_folder.filePath(kind + word(".kvsession"));
        const QString workspaceFile = m_folder.filePath(kind + word(".kvworkspace"));
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
                options = {{word("probe"), 1}};
            session->setOptions(options);
            session->setPaths({.left = row.sides > 0 ? m_folder.filePath(word("l & <b> ä")) : QString(),
                               .right = row.sides > 1 ? m_folder.filePath(word("r %1")) : QString(),
                               .base = row.sides > 2 ? m_folder.filePath(word("b")) : QString()});
            saved = session->record();
            QCOMPARE(saved.type, kind);
            QVERIFY2(saved.options.isEmpty() || saved.options == options, "the options were not taken up whole");
            saved.name = word("A & B");
            saved.timestamp = {};
            QVERIFY(writeJsonFile(sessionFile, sessionToJson(saved)));
            Q_EMIT session->tabTitleChanged(saved.name);
            if (row.remote)
                dialogs.answers = {1}; // it is asked about first
            // A session file wins on the command line.
            window.handleArguments({word("velmora"), word("--binary"), word("/p"), sessionFile, word("/q")});
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
