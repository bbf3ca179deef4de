#include "cli_fixture.h"
#include "support/test_main.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace velmora;
using namespace velmora::test;

class RegistryCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writesEachFormat()
    {
        const CliFiles files;
        CliFiles::write("a.reg", "REGEDIT4\n[H\\A]\n@=\"x\"\n\"same\"=dword:1\n[H\\RunMRU]\n\"a\"=\"1\"\n");
        CliFiles::write("b.reg", "REGEDIT4\n[H\\A]\n@=\"y\"\n\"same\"=dword:1\n[H\\RunMRU]\n\"a\"=\"2\"\n[H\\New]\n");
        QCOMPARE(runCli("registry a.reg b.reg").output,
                 "Total: 4 items | Same: 1 | Changed: 2 | Left only: 0 | Right only: 1\n");
        QCOMPARE(runCli("registry a.reg b.reg --noise recentLists --format list").output,
                 "! H\\A\\@\n= H\\A\\same\n> [H\\New]\n~ H\\RunMRU\\a\n");
        const QJsonObject json = QJsonDocument::fromJson(runCli("registry a.reg b.reg --format json").output).object();
        const QJsonObject item = json.value(word("items")).toArray().first().toObject();
        QCOMPARE(item.value(word("right")).toObject().value(word("value")).toString(), word("y"));
        // A patch makes one into the other, as far as it goes beyond what it leaves alone.
        QCOMPARE(runCli("registry a.reg b.reg --format patch --noise-mask *MRU* --output p.reg").status, 1);
        QCOMPARE(runCli("registry a.reg p.reg --format list").output,
                 "! H\\A\\@\n< H\\A\\same\n> [H\\New]\n< [H\\RunMRU]\n< H\\RunMRU\\a\n");
        QCOMPARE(runCli("registry a.reg a.reg").status, 0);
        CliFiles::write("c.reg", "words");
        const CliResult bad = runCli("registry a.reg c.reg");
        QCOMPARE(bad.status, 2);
        QVERIFY(bad.errors.contains("c.reg: is no file of registry entries"));
    }
};

VELMORA_TEST(RegistryCommandTest)
#include "registry_command_test.moc"
