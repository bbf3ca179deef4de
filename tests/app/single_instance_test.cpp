#include "app/start/single_instance.h"
#include "support/test_main.h"

#include <QLocalSocket>
#include <QProcessEnvironment>
#include <QSignalSpy>
#include <QThread>

using namespace std::chrono_literals;
using namespace velmora;

namespace {

QString uniqueName()
{
    static int number = 0;
    return QStringLiteral("velmora-test-%1-%2").arg(QCoreApplication::applicationPid()).arg(++number);
}

/// Hands over from another thread while this one serves, as another process would: some systems let nobody finish
/// writing before the other side has read.
bool handOverFromElsewhere(const QString &server, const QStringList &arguments)
{
    bool handedOver = false;
    const std::unique_ptr<QThread> thread(QThread::create([&] { handedOver = handOver(server, arguments); }));
    thread->start();
    return QTest::qWaitFor([&] { return thread->isFinished(); }) && handedOver;
}

/// A later start that says what a test wants and leaves or stays.
class RawClient {
public:
    explicit RawClient(const QString &server)
    {
        socket.connectToServer(server);
        socket.waitForConnected(1000);
    }

    void say(const QByteArray &bytes)
    {
        socket.write(bytes);
        socket.flush();
    }

    QLocalSocket socket;
};

} // namespace

class SingleInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { qputenv("USERNAME", QByteArray()); }

    void namesTheServerAfterTheUser()
    {
        qputenv("USERNAME", "anna");
        const QString anna = singleInstanceServerName();
        QCOMPARE(anna, QStringLiteral("Ostrafen-SingleInstance-%1").arg(qHash(QStringLiteral("anna"), 0)));
        qunsetenv("USERNAME");
        QCOMPARE(singleInstanceServerName(),
                 QStringLiteral("Ostrafen-SingleInstance-%1").arg(qHash(QStringLiteral("default"), 0)));
        QCOMPARE(singleInstanceServerNames().constFirst(), singleInstanceServerName());
    }

    void encodesEachArgumentWithItsZero()
    {
        const QStringList arguments = {QStringLiteral("velmora"), QStringLiteral("ä b"), QString()};
        QCOMPARE(encodeArguments(arguments), QByteArray("velmora\0\xc3\xa4 b\0\0", 14));
        QCOMPARE(decodeArguments(encodeArguments(arguments)), arguments);
        QCOMPARE(decodeArguments({}), QStringList());
        QCOMPARE(decodeArguments("cut off"), std::nullopt);
        QCOMPARE(decodeArguments(QByteArray("\xff\xfe\0", 3)), std::nullopt);
        QCOMPARE(decodeArguments(QByteArray("\xc3\0", 2)), std::nullopt);
        QCOMPARE(decodeArguments(QByteArray(handOverLimit + 1, '\0')), std::nullopt);
    }

    void handsArgumentsOver()
    {
        const QString name = uniqueName();
        const QStringList arguments = {QStringLiteral("velmora"), QStringLiteral("--diff"),
                                       QStringLiteral("/päth with blanks")};
        QVERIFY(!handOver(name, arguments));

        SingleInstanceServer server;
        QVERIFY(server.listen(name));
        QSignalSpy connected(&server, &SingleInstanceServer::instanceConnected);
        QVERIFY(handOverFromElsewhere(name, arguments));
        QVERIFY(handOverFromElsewhere(name, {QStringLiteral("again")}));
        QTRY_COMPARE(connected.count(), 2);
        QCOMPARE(server.take().arguments, arguments);
        QCOMPARE(server.take().arguments, QStringList{QStringLiteral("again")});
        QCOMPARE(server.take().arguments, QStringList());
        QVERIFY(!handOver(name, {QString(handOverLimit, u'x')})); // it would be refused
        QTRY_VERIFY(!server.isHearing());
        server.stop();
        QVERIFY(!handOver(name, arguments));
    }

    // It ended before the window had read the file that its caller then removed.
    void aStartWaitsUntilItIsLetGo()
    {
        const QString name = uniqueName();
        SingleInstanceServer server;
        QVERIFY(server.listen(name));
        const std::unique_ptr<QThread> start(
            QThread::create([&name] { return handOver(name, {QStringLiteral("a")}, 20s); }));
        HandedOver heard;
        connect(&server, &SingleInstanceServer::instanceConnected, this, [&] { heard = server.take(); });
        start->start();
        QTRY_VERIFY(heard.sender);
        QVERIFY(!start->wait(300));
        heard.sender.reset();
        QVERIFY(start->wait(5000));
    }

    void knowsTheSameDisplayAndProfile()
    {
        const auto environment = [](const char *variables) {
            QProcessEnvironment result;
            const QStringList all = QString::fromLatin1(variables).split(u' ', Qt::SkipEmptyParts);
            for (const QString &variable : all)
                result.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
            return result;
        };
        struct {
            const char *one, *other;
            bool share;
        } const cases[] = {
            {"", "", true},
            {"HOME=/a DISPLAY=:0", "HOME=/a DISPLAY=:0.1", true},
            {"HOME=/a DISPLAY=/run/of.x/here", "HOME=/a DISPLAY=/run/of.x/there", false},
            {"HOME=/a", "HOME=/b", false},
            {"HOME=/a", "XDG_CONFIG_HOME=/a/.config/ HOME=/b", true},
            {"HOME=/a XDG_CONFIG_HOME=/x", "HOME=/a", false},
            {"DISPLAY=:0", "DISPLAY=:1", false},
            {"DISPLAY=:0", "DISPLAY=localhost:10.0", false},
            {"DISPLAY=:0 WAYLAND_DISPLAY=wayland-0", "DISPLAY=:0", true},
            {"DISPLAY=:0 WAYLAND_DISPLAY=wayland-0", "DISPLAY=:0 WAYLAND_DISPLAY=wayland-1", false},
            {"DISPLAY=:0", "WAYLAND_DISPLAY=wayland-0", false},
            {"DISPLAY=:0", "", true},
        };
        for (const auto &[one, other, share] : cases) {
            QVERIFY2(shareAPlace(environment(one), environment(other)) == share, other);
            QVERIFY2(shareAPlace(environment(other), environment(one)) == share, one);
        }
    }

    void hearsOutAnyStart_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("heard");
        const QStringList next = {QStringLiteral("next")};
        QTest::newRow("silent") << QByteArray() << QStringList{QString(), QStringLiteral("next")};
        QTest::newRow("stays") << QByteArray("velmora\0a\0", 10)
                               << QStringList{QStringLiteral("velmora a"), QStringLiteral("next")};
        QTest::newRow("too long") << QByteArray(handOverLimit, 'x') + QByteArray("y\0", 2) << next;
        QTest::newRow("not UTF-8") << QByteArray("velmora\0\xff\0", 10) << next;
        QTest::newRow("never ends") << QByteArray("velmora\0/some/pa", 16) << next;
    }

    // What is no message is dropped; after each the server hangs up and goes on to hear the next.
    void hearsOutAnyStart()
    {
        QFETCH(QByteArray, bytes);
        const QString name = uniqueName();
        SingleInstanceServer server(200ms);
        QVERIFY(server.listen(name));
        QStringList heard;
        connect(&server, &SingleInstanceServer::instanceConnected, this,
                [&] { heard.append(server.take().arguments.join(u' ')); });
        RawClient client(name);
        client.say(bytes);
        QTRY_COMPARE_WITH_TIMEOUT(client.socket.state(), QLocalSocket::UnconnectedState, 4000);
        QVERIFY(handOverFromElsewhere(name, {QStringLiteral("next")}));
        QTRY_VERIFY(!heard.isEmpty() && heard.constLast() == QStringLiteral("next"));
        QTEST(heard, "heard");
    }

    void diesWhileSomebodyIsTalking()
    {
        const QString name = uniqueName();
        auto server = std::make_unique<SingleInstanceServer>();
        QVERIFY(server->listen(name));
        RawClient client(name);
        client.say("velmora");
        QTRY_VERIFY(!server->children().isEmpty());
        QCoreApplication::processEvents();
        server.reset();
        QTRY_COMPARE(client.socket.state(), QLocalSocket::UnconnectedState);
    }

    void leavesALivingInstanceItsName()
    {
        const QString name = uniqueName();
        SingleInstanceServer first;
        QVERIFY(first.listen(name));
        SingleInstanceServer second;
        QVERIFY(!second.listen(name));
        QStringList heard;
        connect(&first, &SingleInstanceServer::instanceConnected, this, [&] { heard += first.take().arguments; });
        QVERIFY(handOverFromElsewhere(name, {QStringLiteral("a")}));
        QTRY_COMPARE(heard, QStringList{QStringLiteral("a")});
    }
};

VELMORA_TEST(SingleInstanceTest)
#include "single_instance_test.moc"
