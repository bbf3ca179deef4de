#include "cli_fixture.h"
#include "support/made_program.h"
#include "support/test_main.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace velmora;
using namespace velmora::test;

class VersionCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatFilesAreToEachOther()
    {
        const CliFiles files;
        MadeProgram newer;
        ++newer.version;
        CliFiles::write("a.dll", madeProgram());
        CliFiles::write("b.dll", madeProgram(newer));
        CliFiles::write("cut.dll", madeProgram().first(80));
        const CliResult summary = runCli("version a.dll b.dll");
        QCOMPARE(summary.status, 1);
        QVERIFY(summary.output.startsWith("Right is newer | Left: 1.2.3.4 | Right: 1.2.3.5\nTotal: "));
        QCOMPARE(runCli("version a.dll a.dll").status, 0);
        QVERIFY(runCli("version a.dll b.dll --format list").output.startsWith("! fileVersion\n! productVersion\n= "));
        const QJsonObject json = QJsonDocument::fromJson(runCli("version a.dll b.dll --format json").output).object();
        QCOMPARE(json.value(word("verdict")).toString(), word("rightNewer"));
        const QJsonObject fact = json.value(word("facts")).toArray().first().toObject();
        QCOMPARE(fact.value(word("fact")).toString(), word("fileVersion"));
        QCOMPARE(fact.value(word("right")).toString(), word("1.2.3.5"));
        QVERIFY(fact.value(word("leftOffset")).toInt() > 0);
        const CliResult cut = runCli("version a.dll cut.dll");
        QCOMPARE(cut.status, 2);
        QVERIFY(cut.errors.contains("cut.dll: the headers are damaged or cut off"));
    }
};

VELMORA_TEST(VersionCommandTest)
#include "version_command_test.moc"
