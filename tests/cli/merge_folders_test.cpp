#include "cli_fixture.h"
#include "support/test_main.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace velmora::test;

class MergeFoldersTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_files.emplace();
        for (const char *folder : {"b/sub", "l/sub", "r/sub"})
            QVERIFY(QDir().mkpath(word(folder)));
        for (const char *name :
             {"b/kept", "l/kept", "r/kept", "b/sub/mine", "r/sub/mine", "b/gone", "l/gone", "b/both"})
            CliFiles::write(name, "old");
        CliFiles::write("l/sub/mine", "new");
        CliFiles::write("l/both", "one");
        CliFiles::write("r/both", "two");
        CliFiles::write("r/added", "");
    }

    void writesTheMergedTree()
    {
        const CliResult told = runCli("merge-folders b l r");
        QCOMPARE(told.output, "+R added\n!! both\n-R gone\nL= sub/mine\n5 file(s), 4 changed, 1 conflict(s)\n");
        QCOMPARE(told.status, 1);
        const CliResult written = runCli("merge-folders --output out/new b l r");
        QVERIFY2(written.output.endsWith("Merge complete. Success: 4, failed: 0\n"), written.output.constData());
        QCOMPARE(entriesOf(word("out/new")), words("added|kept|sub"));
        QCOMPARE(CliFiles::read("out/new/sub/mine"), "new");

        CliFiles::write("out/new/kept", "of somebody else");
        QCOMPARE(runCli("merge-folders --output out/new b l r").status, 2);
        QCOMPARE(CliFiles::read("out/new/kept"), "of somebody else");
        const CliResult again = runCli("merge-folders --replace --output out/new b l r"); // "sub" is there, too
        QVERIFY2(again.output.endsWith("Merge complete. Success: 3, failed: 0\n"), again.output.constData());
        QCOMPARE(CliFiles::read("out/new/kept"), "old");
    }

    void refusesWhatWouldWriteIntoTheSources()
    {
        const CliResult inside = runCli("merge-folders --output l/out b l r");
        QVERIFY2(inside.errors.contains("lies in it"), inside.errors.constData());
        QCOMPARE(entriesOf(word("l/out")), QStringList());
        QCOMPARE(runCli("merge-folders b l").status, 2);
        QCOMPARE(runCli("merge-folders b l none").status, 2);
    }

    void writesEveryFileAsJson()
    {
        const QJsonObject json = QJsonDocument::fromJson(runCli("merge-folders --format json b l r").output).object();
        QCOMPARE(json.value(word("conflicts")).toInt(), 1);
        const QJsonObject added = json.value(word("files")).toArray().first().toObject();
        QCOMPARE(added.value(word("status")).toInt(), 6);
        QCOMPARE(added.value(word("leftSize")).toInt(), -1);
    }

private:
    std::optional<CliFiles> m_files;
};

VELMORA_TEST(MergeFoldersTest)
#include "merge_folders_test.moc"
