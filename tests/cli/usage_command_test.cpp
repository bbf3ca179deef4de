#include "cli_fixture.h"
#include "support/test_main.h"

using namespace velmora;
using namespace velmora::test;

class UsageCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void answersByOutputAndStatus()
    {
        const CliFiles files;
        QVERIFY(QDir().mkpath(word("d/in")));
        CliFiles::write("d/in/a", "123456");
        CliFiles::write("d/b", "12");
        const auto lines = [](const CliResult &result) { return QString::fromUtf8(result.output).simplified(); };
        QCOMPARE(lines(runCli("usage d")), word("8 100.0% 2 d/ 6 75.0% 1 in/"));
        QCOMPARE(lines(runCli("usage d --files --depth 1")), word("8 100.0% 2 d/ 6 75.0% 1 in/ 6 75.0% a 2 25.0% b"));
        const CliResult json = runCli("usage d --files --format json");
        QCOMPARE(json.status, 0);
        QVERIFY(json.output.contains("\n{\"name\":\"in\",\"depth\":1,\"folder\":true,\"size\":6,"));
        QVERIFY(runCli("usage none").errors.endsWith("none: is no folder\n"));
        QCOMPARE(runCli("usage d --depth x").status, 2);
        QCOMPARE(runCli("usage").status, 2);
    }

    void tellsWhatHasGrown()
    {
        const CliFiles files;
        QVERIFY(QDir().mkpath(word("d/in")));
        CliFiles::write("d/in/a", "123456");
        CliFiles::write("d/b", "12");
        QCOMPARE(runCli("usage d --files --format json --output scan.json").status, 0);
        QCOMPARE(runCli("snapshot create --output d.kvsnapshot d").status, 0);
        CliFiles::write("d/in/a", "1");
        CliFiles::write("d/new", "1234");
        for (const char *since : {"scan.json", "d.kvsnapshot"}) {
            const CliResult result = runCli(QByteArray("usage d --files --since ") + since);
            QCOMPARE(QString::fromUtf8(result.output).simplified(),
                     word("7 100.0% 3 -1 d/ 4 57.1% - +4 new 2 28.6% - 0 b 1 14.3% 1 -5 in/ 1 14.3% - -5 a"));
            const QByteArray hidden = runCli(QByteArray("usage d --hidden --since ") + since).errors;
            QVERIFY2(hidden.endsWith("has no hidden files: leave out --hidden\n"), hidden.constData());
        }
        QVERIFY(runCli("usage d --since scan.json --format json").output.contains("\"growth\":-5}"));
        QVERIFY(runCli("usage d --since d/b").errors.contains("is neither a folder snapshot nor"));
        QVERIFY(runCli("usage d --since none").errors.endsWith("none: cannot be opened\n"));
    }
};

VELMORA_TEST(UsageCommandTest)
#include "usage_command_test.moc"
