#include "cli_fixture.h"
#include "support/made_music.h"
#include "support/test_main.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace velmora;
using namespace velmora::test;

class Mp3CommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatSongsAreToEachOther()
    {
        const CliFiles files;
        CliFiles::write("a.mp3", id3v2(3, id3Text("TIT2", "\xd6\xd0")) + madeSound());
        CliFiles::write("b.mp3", madeSound() + id3v1("New", ""));
        CliFiles::write("cut.mp3", madeSound().chopped(500));
        CliFiles::write("text.mp3", "no music");
        const CliResult summary = runCli("mp3 a.mp3 b.mp3");
        QCOMPARE(summary.status, 1);
        QVERIFY(summary.output.startsWith("Same sound, other tags\nTotal: "));
        QCOMPARE(runCli("mp3 a.mp3 a.mp3").status, 0);
        QVERIFY(runCli("mp3 a.mp3 b.mp3 --format list").output.contains("< id3v2 TIT2\n> id3v1 title\n"));
        const CliResult json = runCli("mp3 a.mp3 b.mp3 --format json --old-text GBK");
        const QJsonObject all = QJsonDocument::fromJson(json.output).object();
        QCOMPARE(all.value(word("verdict")).toString(), word("sameSound"));
        bool isFound = false;
        for (const QJsonValue &field : all.value(word("fields")).toArray())
            isFound = isFound || field.toObject().value(word("left")).toString() == QStringLiteral("\u4e2d");
        QVERIFY(isFound);
        const CliResult cut = runCli("mp3 a.mp3 cut.mp3");
        QVERIFY(cut.status == 1 && cut.errors.contains("warning: cut.mp3: is cut off"));
        for (const char *line :
             {"mp3 a.mp3 text.mp3", "mp3 a.mp3", "mp3 a.mp3 gone.mp3", "mp3 a.mp3 b.mp3 --old-text none"})
            QCOMPARE(runCli(line).status, 2);
    }
};

VELMORA_TEST(Mp3CommandTest)
#include "mp3_command_test.moc"
