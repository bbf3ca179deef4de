#include "app/library/session_history.h"
#include "app/start/command_line.h"
#include "app/start/waiting_start.h"
#include "app/window/session_tabs.h"
#include "app/window/tarnwick.h"
#include "session/session_widget.h"
#include "support/test_main.h"

#include <QLocalSocket>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <future>
#include <memory>

using namespace std::chrono_literals;
using namespace velmora;

namespace {

/// What a process hears that waits while `window` does something; -1 when the window was lost. It waits on a thread of
/// its own: it hears a window that is gone at once, too, as another process does.
int heard(const std::function<void(const QString &address)> &window, std::chrono::milliseconds patience = 20s)
{
    std::promise<QString> address;
    int status = -1;
    const std::unique_ptr<QThread> process(QThread::create([&] {
        WaitingStart waiting;
        address.set_value(waiting.address());
        status = waiting.wait(patience).value_or(-1);
    }));
    process->start();
    window(address.get_future().get());
    process->wait();
    return status;
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(u' ');
}

} // namespace

class WaitingStartTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hearsTheWorstOfItsTabs()
    {
        const auto closing = [](const QList<int> &statuses) {
            return heard([&](const QString &address) {
                WaitReport report(address);
                for (const int status : statuses)
                    report.sessionClosed(status);
            });
        };
        QCOMPARE(closing({0}), 0);
        QCOMPARE(closing({0, 1, 0}), 1);
        QCOMPARE(closing({}), 1); // nothing was opened
    }

    void noticesThatTheWindowIsLost()
    {
        QCOMPARE(heard([](const QString &) {}, 100ms), -1);
        QCOMPARE(heard([](const QString &address) {
                     QLocalSocket socket;
                     socket.connectToServer(address);
                     socket.write("0"); // went down before it had said it all
                     socket.flush();
                 }),
                 -1);
    }

    // It took the arguments of git's next file, and went.
    void comesBackWhenTheWindowWasClosing()
    {
        int attempts = 0;
        std::unique_ptr<WaitReport> report;
        const auto handOver = [&](const QStringList &message) {
            if (++attempts == 2) {
                report = std::make_unique<WaitReport>(parseCommandLine(message).reportTo);
                report->sessionClosed(0);
                QTimer::singleShot(50, qApp, [&report] { report.reset(); });
            }
            return true;
        };
        QCOMPARE(waitForWindow(words("velmora --wait a b"), handOver, 200ms), 0);
        QCOMPARE(attempts, 2);
    }

    // A message that names any other socket must not make the window write to it.
    void connectsToNoOtherAddress()
    {
        QLocalServer other;
        QVERIFY(other.listen(QStringLiteral("velmora-test-other-%1").arg(QCoreApplication::applicationPid())));
        {
            const WaitReport report(other.fullServerName());
        }
        QVERIFY(!other.waitForNewConnection(100));
    }

    void parses()
    {
        const CommandLine line =
            parseCommandLine(words("velmora --wait --merge l r b surplus --output=o --report-to a"));
        QVERIFY(line.waits);
        QCOMPARE(line.mode, QStringLiteral("merge"));
        QCOMPARE(line.paths, words("l r b"));
        QCOMPARE(line.output, QStringLiteral("o"));
        QCOMPARE(line.reportTo, QStringLiteral("a"));
        QCOMPARE(line.ignored.size(), 1);
        QCOMPARE(withAbsolutePaths(words("velmora --wait --output o --merge l"), QDir(QStringLiteral("/x"))).join(u' '),
                 QStringLiteral("velmora --wait --output /x/o --merge /x/l"));
        QCOMPARE(windowArguments(words("velmora --wait a --theme dark b --lang=zh")),
                 words("--serves-waiting --theme=dark --lang=zh"));
    }

    void aWindowReportsItsTabs_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<bool>("closesTheWindow");
        QTest::addColumn<int>("status");
        QTest::newRow("tab") << QStringLiteral("velmora left right") << false << 0;
        QTest::newRow("window") << QStringLiteral("velmora left right") << true << 0;
        // Nothing has been saved.
        QTest::newRow("merge") << QStringLiteral("velmora --merge left right base --output out") << false << 1;
        QTest::newRow("merge, window") << QStringLiteral("velmora --merge left right base") << true << 1;
        QTest::newRow("merge without a base") << QStringLiteral("velmora --merge left right") << false << 1;
        QTest::newRow("nothing to open") << QStringLiteral("velmora left") << true << 1;
    }

    void aWindowReportsItsTabs()
    {
        QFETCH(QString, arguments);
        QFETCH(bool, closesTheWindow);
        const QTemporaryDir folder;
        for (const char *name : {"left", "right", "base"}) {
            QFile file(folder.filePath(QLatin1String(name)));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("same\n") > 0);
        }
        QTEST(heard([&](const QString &address) {
                  auto window = std::make_unique<Tarnwick>();
                  const QStringList asked = withAbsolutePaths(arguments.split(u' '), QDir(folder.path()));
                  window->handleArguments(withReportTo(asked, address));
                  auto *tabs = window->findChild<SessionTabs *>();
                  const SessionWidget *session = tabs->currentSession();
                  QTRY_VERIFY(!session || !session->isReading());
                  if (closesTheWindow)
                      return;
                  tabs->closeTab(tabs->currentIndex());
                  QTRY_VERIFY(tabs->sessions().isEmpty());
              }),
              "status");
    }

    // Git removes its folders when the process ends, and with them what a text that is still open would be saved to.
    void whatIsOpenedOutOfAFolderIsWaitedFor()
    {
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("left")) &&
                QDir(folder.path()).mkpath(QStringLiteral("right")));
        bool early = true;
        const auto remembered = [] { return SessionHistory().records().size(); };
        const qsizetype before = remembered();
        WaitingStart waiting;
        Tarnwick window;
        auto *tabs = window.findChild<SessionTabs *>();
        window.handleArguments(
            withReportTo(withAbsolutePaths(words("velmora left right"), QDir(folder.path())), waiting.address()));
        window.openSession(QStringLiteral("text"), {.left = folder.filePath(QStringLiteral("left/a")),
                                                    .right = folder.filePath(QStringLiteral("right/a")),
                                                    .base = {}});
        QCOMPARE(tabs->sessions().size(), 2);
        // What is gone in a moment is not remembered; the same files are when nobody waits.
        QCOMPARE(remembered(), before);
        Tarnwick().openSession(QStringLiteral("text"), {.left = folder.filePath(QStringLiteral("left/a")),
                                                        .right = folder.filePath(QStringLiteral("right/b")),
                                                        .base = {}});
        QCOMPARE(remembered(), before + 1);
        SessionWidget *outer = tabs->sessions().first();
        tabs->closeTab(tabs->indexOf(outer));
        QTimer::singleShot(100, &window, [&] {
            early = false;
            tabs->closeTab(tabs->currentIndex());
        });
        QCOMPARE(waiting.wait(500ms), 0);
        QVERIFY(!early);
    }
};

VELMORA_TEST(WaitingStartTest)

#include "waiting_start_test.moc"
