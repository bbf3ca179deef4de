#include "app/single_instance.h"
#include "core/settings_store.h"
#include "support/test_main.h"

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
        qputenv("USERNAME", "velmora-program-" + QByteArray::number(QCoreApplication::applicationPid()));
    }

    void answersOnTheConsole()
    {
        Program program(*m_home);
        QCOMPARE(program.run({QStringLiteral("--version")}), 0);
        QCOMPARE(program.process.readAllStandardOutput().trimmed(), QByteArray("Velmora 1.0.0"));
        QCOMPARE(program.run({QStringLiteral("--bogus"), QStringLiteral("--help")}), 0);
        QVERIFY(program.process.readAllStandardOutput().contains("Velmora — file and folder comparison"));
    }

    void aSecondStartHandsOver()
    {
        if (!InterfaceSettings().fileName().endsWith(QLatin1String(".conf")))
            QSKIP("this system keeps settings where no profile of a test's own can be given");
        Program first(*m_home);
        first.start({});
        QTRY_VERIFY_WITH_TIMEOUT(isListening(), 20000);
        Program second(*m_home);
        QCOMPARE(second.run({QStringLiteral("one"), QStringLiteral("--folder"), QStringLiteral("two")}), 0);
        // The first one opened the tab: it is in the history of their profile, with the paths of the second's folder.
        const QString expected = QStringLiteral("leftPath=%1/one").arg(QFileInfo(m_home->path()).canonicalFilePath());
        QTRY_VERIFY(profile().contains(expected.toUtf8()));
        QCOMPARE(first.process.state(), QProcess::Running);

        // After a crash the next start does not wait for the dead, and is heard in its place.
        first.process.kill();
        QVERIFY(first.process.waitForFinished());
        Program third(*m_home);
        third.start({});
        QTRY_VERIFY_WITH_TIMEOUT(isListening(), 20000);
        QCOMPARE(second.run({QStringLiteral("three"), QStringLiteral("four")}), 0);
        QTRY_VERIFY(profile().contains("/three"));
    }

private:
    [[nodiscard]] static bool isListening()
    {
        QLocalSocket socket;
        socket.connectToServer(singleInstanceServerName());
        return socket.waitForConnected(100);
    }

    [[nodiscard]] QByteArray profile() const
    {
        QFile file(m_home->filePath(QStringLiteral("Tarnwick/Tarnwick.conf")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_home;
};

VELMORA_TEST(ProgramTest)
#include "program_test.moc"
