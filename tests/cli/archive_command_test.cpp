#include "archive/made_archive.h"
#include "cli_fixture.h"
#include "support/test_main.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace velmora;
using namespace velmora::test;

class ArchiveCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_files.emplace(); }

    void listsEverythingThatIsKnown()
    {
        CliFiles::write("in.zip", packed({{"in.tgz", packed(plainFiles, "ustar", "gzip")}, {"x", "123456789"}}, "zip"));
        const CliResult lines = runCli("archive list in.zip");
        QCOMPARE(lines.errors, QByteArray());
        QCOMPARE(lines.status, 0);
        QVERIFY(lines.output.contains("  cbf43926  ") && lines.output.contains(" in.tgz/docs/deep/b.bin\n"));
        QVERIFY(lines.output.contains(" in.tgz/link -> docs/a.txt\n"));
        const QJsonObject json =
            QJsonDocument::fromJson(runCli("archive list --format json in.zip/in.tgz").output).object();
        const QJsonArray entries = json.value(word("entries")).toArray();
        QCOMPARE(entries.size(), 6);
        const QJsonObject file = entries.at(2).toObject();
        QCOMPARE(file.value(word("path")).toString(), word("in.tgz/docs/deep/b.bin"));
        QCOMPARE(file.value(word("size")).toInt(), 300'000);
        QCOMPARE(file.value(word("mode")).toString(), word("644"));
    }

    void testsEveryEntry()
    {
        QByteArray zip = packed({{"a", QByteArray(5000, 'x')}, {"b", "1"}}, "zip");
        CliFiles::write("whole.zip", zip);
        QCOMPARE(runCli("archive test whole.zip").status, 0);
        const qsizetype data = 30 + zip.at(26) + zip.at(28); // behind the header of the entry
        zip[data + 2] = char(zip.at(data + 2) ^ 0x55);
        CliFiles::write("changed.zip", zip);
        const CliResult changed = runCli("archive test changed.zip");
        QCOMPARE(changed.status, 1);
        QVERIFY2(changed.output.startsWith("damaged: /a") && changed.output.contains("Failed: 1"),
                 changed.output.constData());
        CliFiles::write("secret.zip", packed({{"a", "secret"}}, "zip", "none", "word"));
        CliFiles::write("right", "word\n");
        CliFiles::write("wrong", "sword\n");
        QCOMPARE(runCli("archive test secret.zip").status, 1);
        QCOMPARE(runCli("archive test --password-file right secret.zip").status, 0);
        QCOMPARE(runCli("archive test --password-file wrong secret.zip").status, 2);
        CliFiles::write("cut.7z", packed(plainFiles, "7zip").chopped(40));
        const CliResult cut = runCli("archive test cut.7z");
        QCOMPARE(cut.status, 2);
        QVERIFY2(cut.errors.contains("damaged or cut off"), cut.errors.constData());
        CliFiles::write("text", "no archive\n");
        QVERIFY(runCli("archive list text").errors.contains("neither a folder nor an archive"));
    }

private:
    std::optional<CliFiles> m_files;
};

VELMORA_TEST(ArchiveCommandTest)
#include "archive_command_test.moc"
