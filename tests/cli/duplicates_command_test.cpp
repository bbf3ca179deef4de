#include "cli_fixture.h"
#include "support/test_main.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace velmora::test;

class DuplicatesCommandTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_files.emplace();
        for (const char *folder : {"in/deep", "old"})
            QVERIFY(QDir().mkpath(word(folder)));
        for (const char *name : {"in/a, b", "in/deep/c", "old/d"})
            CliFiles::write(name, "same");
        CliFiles::write("in/other", "more");
    }

    void listsGroupsInEachFormat()
    {
        const CliResult text = runCli("duplicates in");
        QVERIFY2(text.output.startsWith("2 copies, 4 bytes each\n"), text.output.constData());
        QVERIFY2(text.output.endsWith("3 files, 1 duplicate groups (2 files involved)\n"), text.output.constData());
        QCOMPARE(text.status, 1);
        QCOMPARE(runCli("duplicates old").status, 0);
        const QByteArray csv = runCli("duplicates --format csv in").output;
        QVERIFY2(csv.contains(",51037a4a37730f52c8732586d3aaa316,\""), csv.constData()); // printf same | md5sum
        QVERIFY2(csv.contains("/in/a, b\"\r\n"), csv.constData());
        const QJsonObject json =
            QJsonDocument::fromJson(runCli("duplicates --format json --reference old in").output).object();
        QCOMPARE(json.value(word("wasted")).toInt(), 8);
        const QJsonObject group = json.value(word("groups")).toArray().first().toObject();
        int references = 0;
        for (const QJsonValue &copy : group.value(word("copies")).toArray())
            references += copy.toObject().value(word("reference")).toBool() ? 1 : 0;
        QCOMPARE(references, 1);
    }

    void refusesWhatIsNoFolder()
    {
        for (const char *arguments : {"duplicates", "duplicates none", "duplicates in/other", "duplicates --delete in"})
            QCOMPARE(runCli(arguments).status, 2);
    }

    void deletesWhatItLists()
    {
        const CliResult listed = runCli("duplicates --reference old --extra newest in");
        QCOMPARE(listed.output.count('\n'), 2);
        const CliResult done = runCli("duplicates --reference old --extra newest --delete in");
        QVERIFY2(done.output == "Delete done: 2 ok, 0 failed\n", done.errors.constData());
        QCOMPARE(done.status, 0);
        QCOMPARE(entriesOf(word("in")), words("deep|other"));
        QCOMPARE(CliFiles::read("old/d"), "same");
    }

private:
    std::optional<CliFiles> m_files;
};

VELMORA_TEST(DuplicatesCommandTest)

#include "duplicates_command_test.moc"
