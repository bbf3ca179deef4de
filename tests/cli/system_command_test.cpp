#include "cli_fixture.h"
#include "support/test_main.h"

#include <QJsonDocument>

using namespace velmora;
using namespace velmora::test;

class SystemCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_files.emplace(); // the old one goes first
        CliFiles::write("l.kvenv", R"({"A": "1", "B": "1", "C": "1"})");
        CliFiles::write("r.kvenv", R"({"B": "1", "C": "2", "D": ""})");
        CliFiles::write("l.kvsvc", R"([{"name": "s", "state": "Running", "startMode": "Auto"}])");
        CliFiles::write("r.kvsvc", R"([{"name": "s"}, {"name": "s", "state": "Running", "startMode": "Auto"}])");
    }

    void writesEachFormat()
    {
        const CliResult summary = runCli("system l.kvenv r.kvenv");
        QCOMPARE(summary.errors, QByteArray());
        QCOMPARE(summary.output, "Total: 4 items | Same: 1 | Changed: 1 | Left only: 1 | Right only: 1\n");
        QCOMPARE(summary.status, 1);
        QCOMPARE(runCli("system l.kvenv r.kvenv --format list").output, "< A\n= B\n! C\n> D\n");
        const CliResult json = runCli("system l.kvenv r.kvenv --format json --output out.json");
        QCOMPARE(json.status, 1);
        const QByteArray expected = "{\"kind\": \"env\", \"left\": \"l.kvenv\", \"right\": \"r.kvenv\", \"items\": ["
                                    "{\"key\": \"A\", \"status\": 1, \"left\": \"1\", \"right\": null},"
                                    "{\"key\": \"B\", \"status\": 0, \"left\": \"1\", \"right\": \"1\"},"
                                    "{\"key\": \"C\", \"status\": 3, \"left\": \"1\", \"right\": \"2\"},"
                                    "{\"key\": \"D\", \"status\": 2, \"left\": null, \"right\": \"\"}]}";
        QCOMPARE(QJsonDocument::fromJson(CliFiles::read("out.json")), QJsonDocument::fromJson(expected));
    }

    void readsEveryKind()
    {
        const CliResult services = runCli("system l.kvsvc r.kvsvc");
        QCOMPARE(services.status, 0);
        QVERIFY(services.errors.contains("warning: r.kvsvc: 1 names"));
        QVERIFY(QFile::copy(word("l.kvenv"), word("l.txt")));
        QCOMPARE(runCli("system --kind startup l.txt l.kvenv").status, 0);
    }

    void comparesWithThisProcess()
    {
        qputenv("VELMORA_TEST_VARIABLE", "now");
        CliFiles::write("old.kvenv", "{\"VELMORA_TEST_VARIABLE\": \"then\"}");
        const CliResult result = runCli("system --current old.kvenv --format list");
        QCOMPARE(result.status, 1);
        QVERIFY(result.output.contains("! VELMORA_TEST_VARIABLE\n"));
    }

    void refusesWhatMakesNoSense()
    {
        CliFiles::write("bad.kvenv", "[]");
        const std::pair<const char *, const char *> cases[] = {
            {"system l.kvenv", "two paths are needed, 1 given"},
            {"system --current l.kvenv r.kvenv", "one path is needed, 2 given"},
            {"system l.kvenv l.kvsvc", "l.kvenv and l.kvsvc are snapshots of different kinds"},
            {"system --current l.kvsvc", "only environments can be compared with --current"},
            {"system x y", "x: the name does not tell the kind of snapshot; --kind does"},
            {"system bad.kvenv r.kvenv", "bad.kvenv: is no snapshot of this kind"},
            {"system l.kvenv none.kvenv", "none.kvenv: "},
        };
        for (const auto &[arguments, message] : cases) {
            const CliResult result = runCli(arguments);
            QCOMPARE(result.status, 2);
            QVERIFY2(result.errors.startsWith(QByteArray("velmora-cli: ") + message), result.errors.constData());
        }
    }

private:
    std::optional<CliFiles> m_files;
};

VELMORA_TEST(SystemCommandTest)
#include "system_command_test.moc"
