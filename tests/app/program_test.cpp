#include "app/start/single_instance.h"
#include "support/test_main.h"

#include <QDir>
#include <QLocalSocket>
#include <QProcess>
#include <QTemporaryDir>

using namespace velmora;

namespace {

/// The program as a person starts it, with a profile and a user of its own.
class Program {
public:
    explicit Program(const QTemporaryDir &home)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home.path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(home.path());
    }

    ~Program()
    {
        process.kill();
        process.waitForFinished();
    }

    void start(const QStringList &arguments)
    {
        process.start(QStringLiteral(VELMORA_PROGRAM),
                      QStringList{QStringLiteral("-platform"), QStringLiteral("offscreen")} + arguments);
    }

    /// Runs to the end and says how it ended; -1 when it did not.
    int run(const QStringList &arguments)
    {
        start(arguments);
        return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QProcess process;
};

} // namespace

class ProgramTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<QTemporaryDir>();
        QVERIFY(m_home->isValid());
        // Programs that are killed leave their sockets in the folder for temporary files.
        qputenv("TMPDIR", QFile::encodeName(m_home->path()));
        if (hasProfile())
            forget();
        qputenv("USERNAME", "velmora-program-" + QByteArray::number(QCoreApplication::applicationPid()));
    }

    void cleanup() { qputenv("TMPDIR", m_temporary); }

    // It asked for a display first, and a window that was open took the question and said nothing.
    void answersOnTheConsoleWithoutADisplay()
    {
        Program program(*m_home);
        const QStringList nowhere{QStringLiteral("-platform"), QStringLiteral("nowhere")};
        QCOMPARE(program.run(nowhere + QStringList{QStringLiteral("--version")}), 0);
        QCOMPARE(program.process.readAllStandardOutput().trimmed(), QByteArray("Velmora 1.0.0"));
        QCOMPARE(program.run(nowhere + QStringList{QStringLiteral("--bogus"), QStringLiteral("--help")}), 0);
        QVERIFY(program.process.readAllStandardOutput().contains("Velmora — file and folder comparison"));
    }

    // Both looked for the other before either could be heard, and two windows came up.
    void ofManyStartsAtOnceOneStays()
    {
        std::vector<std::unique_ptr<Program>> programs;
        for (int i = 0; i < 5; ++i) {
            programs.push_back(std::make_unique<Program>(*m_home));
            programs.back()->start({QStringLiteral("left-%1").arg(i), QStringLiteral("right-%1").arg(i)});
        }
        const auto running = [&programs] {
            return std::count_if(programs.begin(), programs.end(),
                                 [](const auto &program) { return program->process.state() != QProcess::NotRunning; });
        };
        QTRY_COMPARE_WITH_TIMEOUT(running(), 1, 60000);
        QTRY_VERIFY_WITH_TIMEOUT(isListening(), 20000);
        QCOMPARE(running(), 1);
        for (const auto &program : programs) {
            if (program->process.state() == QProcess::NotRunning)
                QCOMPARE(program->process.exitCode(), 0);
        }
    }

    void aSecondStartHandsOver()
    {
        if (!hasProfile())
            QSKIP("the settings of whoever runs this would be written to");
        Program first(*m_home);
        first.start({});
        QTRY_VERIFY_WITH_TIMEOUT(isListening(), 20000);
        Program second(*m_home);
        QCOMPARE(second.run({QStringLiteral("--version")}), 0);
        QCOMPARE(second.process.readAllStandardOutput().trimmed(), QByteArray("Velmora 1.0.0"));
        QCOMPARE(second.run({QStringLiteral("one"), QStringLiteral("--folder"), QStringLiteral("two"),
                             QStringLiteral("three"), QStringLiteral("--bogus")}),
                 0);
        QCOMPARE(second.process.readAllStandardError().simplified(),
                 QByteArray("velmora: unknown option --bogus is ignored velmora: surplus path three is ignored"));
        // The first one opened the tab: it is in the history of their profile, with the paths of the second's folder.
        const QString expected = QFileInfo(m_home->path()).canonicalFilePath() + QStringLiteral("/one");
        QTRY_VERIFY(stored("Tarnwick").contains(expected.toUtf8()));
        QCOMPARE(first.process.state(), QProcess::Running);

        // After a crash the next start does not wait for the dead, and is heard in its place.
        first.process.kill();
        QVERIFY(first.process.waitForFinished());
        Program third(*m_home);
        third.start({});
        QTRY_VERIFY_WITH_TIMEOUT(isListening(), 20000);
        QCOMPARE(second.run({QStringLiteral("three"), QStringLiteral("four")}), 0);
        QTRY_VERIFY(stored("Tarnwick").contains("/three"));
    }

    void aWaitingStartStaysUntilItsWindowIsGone()
    {
        if (!hasProfile())
            QSKIP("the settings of whoever runs this would be written to");
        Program window(*m_home);
        window.start({});
        QTRY_VERIFY_WITH_TIMEOUT(isListening(), 20000);
        Program waiting(*m_home);
        // What lies among temporary files would not be remembered.
        const QDir root = QDir::root();
        waiting.start(
            {QStringLiteral("--wait"), root.filePath(QStringLiteral("one")), root.filePath(QStringLiteral("two"))});
        QTRY_VERIFY_WITH_TIMEOUT(stored("Tarnwick").contains("/one"), 20000);
        QVERIFY(!waiting.process.waitForFinished(1500));
        window.process.kill();
        QVERIFY(waiting.process.waitForFinished());
        QCOMPARE(waiting.process.exitCode(), 1);
        QVERIFY(waiting.process.readAllStandardError().contains("the window was lost"));
    }

#ifdef Q_OS_LINUX
    // It went into the window of the other place, where nobody saw it.
    void aStartAtAnotherPlaceOpensItsOwnWindow_data()
    {
        QTest::addColumn<QString>("variable");
        QTest::newRow("display") << QStringLiteral("DISPLAY");
        QTest::newRow("profile") << QStringLiteral("XDG_CONFIG_HOME");
    }

    void aStartAtAnotherPlaceOpensItsOwnWindow()
    {
        QFETCH(QString, variable);
        const auto startsAt = [&](Program &program, const char *place) {
            QProcessEnvironment environment = program.process.processEnvironment();
            environment.insert(variable, m_home->filePath(QLatin1String(place)));
            program.process.setProcessEnvironment(environment);
        };
        Program here(*m_home);
        startsAt(here, "here");
        here.start({});
        QTRY_VERIFY_WITH_TIMEOUT(isListening(), 20000);
        Program there(*m_home);
        startsAt(there, "there");
        there.start({QStringLiteral("--lang=en")});
        // The language is stored in the turn of its start, which the next one waits for.
        const QString store = variable == QLatin1String("DISPLAY") ? QString() : QStringLiteral("there/");
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(m_home->filePath(store + QStringLiteral("Tarnwick/Tarnwick.conf"))),
                                 20000);
        Program again(*m_home);
        startsAt(again, "there");
        QCOMPARE(again.run({}), 0);
        QCOMPARE(here.process.state(), QProcess::Running);
        QCOMPARE(there.process.state(), QProcess::Running);
    }
#endif

    void keepsTwoStoresOfSettings()
    {
        if (!hasProfile())
            QSKIP("the settings of whoever runs this would be written to");
        Program program(*m_home);
        program.start({QStringLiteral("--theme=dark"), QStringLiteral("--lang=zh")});
        QTRY_VERIFY_WITH_TIMEOUT(isListening(), 20000);
        QVERIFY(stored("Ostrafen").contains("theme"));
        QVERIFY(!stored("Tarnwick").contains("theme"));
        QVERIFY(stored("Tarnwick").contains("zh_CN"));
        QVERIFY(!stored("Ostrafen").contains("zh_CN"));
    }

private:
    [[nodiscard]] static bool isListening()
    {
        QLocalSocket socket;
        socket.connectToServer(singleInstanceServerName());
        return socket.waitForConnected(100);
    }

#ifdef Q_OS_WIN
    /// Programs write to the registry of the person who starts them, which only a runner may allow that throws it away.
    [[nodiscard]] static bool hasProfile()
    {
        return qEnvironmentVariableIsSet("VELMORA_THROWAWAY_PROFILE");
    }

    static QByteArray registry(const QStringList &arguments)
    {
        QProcess process;
        process.start(QStringLiteral("reg"), arguments);
        return process.waitForFinished() ? process.readAllStandardOutput() : QByteArray();
    }

    /// What the registry shows of a store.
    [[nodiscard]] QByteArray stored(const char *store) const
    {
        return registry({QStringLiteral("query"), QStringLiteral("HKCU\\Software\\%1\\%1").arg(QLatin1String(store)),
                         QStringLiteral("/s")});
    }

    static void forget()
    {
        for (const char *store : {"Tarnwick", "Ostrafen"})
            registry({QStringLiteral("delete"), QStringLiteral("HKCU\\Software\\") + QLatin1String(store),
                      QStringLiteral("/f")});
    }
#else
    [[nodiscard]] static bool hasProfile()
    {
        return true;
    }

    /// The file of a store.
    [[nodiscard]] QByteArray stored(const char *store) const
    {
        QFile file(m_home->filePath(QStringLiteral("%1/%1.conf").arg(QLatin1String(store))));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static void forget() {}
#endif

    const QByteArray m_temporary = QFile::encodeName(QDir::tempPath());
    std::unique_ptr<QTemporaryDir> m_home;
};

VELMORA_TEST(ProgramTest)
#include "program_test.moc"
