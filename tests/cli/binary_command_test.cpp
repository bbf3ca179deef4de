#include "cli_fixture.h"
#include "support/test_main.h"

#include <QJsonDocument>

using namespace velmora;
using namespace velmora::test;

class BinaryCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_files.emplace(); // the old one goes first
        CliFiles::write("l", QByteArray(40, 'a'));
        CliFiles::write("r", QByteArray(20, 'a') + 'b' + QByteArray(19, 'a') + QByteArray(30, 'c'));
    }

    void writesEachFormat()
    {
        const CliResult summary = runCli("binary l r");
        QCOMPARE(summary.output, "Compare done: left 40 bytes, right 70 bytes, 4 diffs | diff rate: 80%\n");
        QCOMPARE(summary.errors, QByteArray());
        QCOMPARE(summary.status, 1);
        QCOMPARE(runCli("binary l l").output, "Compare done: files are identical\n");
        QCOMPARE(runCli("binary l l").status, 0);
        QCOMPARE(runCli("binary l r --format list").output, "! 16+24 16+54\n");
        QCOMPARE(runCli("binary r l --right-start=0x15 --left-start 21 --format list").output, "! 37+33 37+3\n");
        CliFiles::write("base", word("the quick brown fox jumps over the lazy dog, and sleeps").toUtf8().repeated(9));
        CliFiles::write("more", "12345" + contentsOf(word("base")));
        QCOMPARE(runCli("binary --align base more --format list").output, "> 0+0 0+5\n");
        QCOMPARE(runCli("binary --align base more").output,
                 "Compare done: left 495 bytes, right 500 bytes, 1 ranges differ (changed 0, inserted 1, deleted 0)\n");
        QCOMPARE(runCli("binary --align more more").status, 0);
        const QByteArray expected =
            R"({"left": "l", "right": "r", "leftSize": 40, "rightSize": 70, "rowCount": 5, "diffRows": 4,
                "diffRate": 80, "aligned": false, "capped": false, "ranges": [
                {"kind": "changed", "left": 16, "leftLength": 24, "right": 16, "rightLength": 54}]})";
        QCOMPARE(QJsonDocument::fromJson(runCli("binary l r --format json").output), QJsonDocument::fromJson(expected));
    }

    void refusesWhatMakesNoSense()
    {
        const std::pair<const char *, const char *> cases[] = {
            {"binary l", "two paths are needed, 1 given"},
            {"binary l none", "none: cannot be opened, or is no file"},
            {"binary . l", ".: cannot be opened, or is no file"},
            {"binary l r --left-start 0xg", "--left-start: \"0xg\" is no offset"},
            {"binary l r --right-start -1", "--right-start: \"-1\" is no offset"},
        };
        for (const auto &[arguments, message] : cases) {
            const CliResult result = runCli(arguments);
            QCOMPARE(result.status, 2);
            QCOMPARE(result.errors, QByteArray("velmora-cli: ") + message + '\n');
        }
    }

private:
    std::optional<CliFiles> m_files;
};

VELMORA_TEST(BinaryCommandTest)
#include "binary_command_test.moc"
