#include "cli_fixture.h"
#include "support/test_main.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>

using namespace velmora;
using namespace velmora::test;

class SnapshotCommandTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<CliFiles> m_folder;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<CliFiles>();
        QVERIFY(QDir().mkpath(word("tree/sub")));
        QVERIFY(makeFile(word("tree/a"), "one") && makeFile(word("tree/sub/b"), "two"));
    }
    void cleanup() { m_folder.reset(); }

    void aFolderIsVerified()
    {
        QCOMPARE(runCli("snapshot create --digests --output t.kvsnapshot tree").status, 0);
        CliResult result = runCli("snapshot verify --format sha256sum t.kvsnapshot");
        QCOMPARE(result.output, "a: OK\nsub/b: OK\n");
        QCOMPARE(result.status, 0);
        QVERIFY(QFile::rename(word("tree/a"), word("tree/c")) && makeFile(word("tree/sub/b"), "owt"));
        result = runCli("snapshot verify --format sha256sum t.kvsnapshot tree");
        QCOMPARE(result.output, "a: FAILED open or read\nsub/b: FAILED\n");
        QCOMPARE(result.status, 1);
        result = runCli("snapshot compare --digests --format list t.kvsnapshot tree");
        QCOMPARE(result.status, 1);
        QVERIFY(result.output.startsWith("< a  moved to c\n> c  moved from a\n! sub/b"));
        const QJsonObject json =
            QJsonDocument::fromJson(runCli("snapshot compare --format json t.kvsnapshot tree").output).object();
        const QJsonArray items = json.value(word("items")).toArray();
        QCOMPARE(items.size(), 3);
        QCOMPARE(items[1].toObject().value(word("left")), QJsonValue(QJsonValue::Null));
        QCOMPARE(items[2].toObject().value(word("right")).toObject().value(word("size")).toInt(), 3);
    }

    void theListIsThatOfOtherPrograms()
    {
        const QString program = QStandardPaths::findExecutable(word("sha256sum"));
        if (program.isEmpty())
            QSKIP("there is no sha256sum here");
        QCOMPARE(runCli("snapshot create --format sha256sum --output SUMS tree").status, 0);
        QProcess check;
        check.setWorkingDirectory(word("tree"));
        check.start(program, {word("--check"), word("--strict"), word("../SUMS")});
        QVERIFY(check.waitForFinished());
        QCOMPARE(check.readAllStandardOutput(), "a: OK\nsub/b: OK\n");
    }

    void wrongRequestsAreTold_data()
    {
        QTest::addColumn<QByteArray>("arguments");
        QTest::addColumn<QByteArray>("message");
        const auto add = [](const char *arguments, const char *message) {
            QTest::newRow(arguments) << QByteArray(arguments) << QByteArray(message);
        };
        add("snapshot tree", "create, compare or verify");
        add("snapshot create", "create needs one folder");
        add("snapshot create missing", "is no folder");
        add("snapshot compare tree", "needs two paths");
        add("snapshot compare tree missing", "is neither a folder nor a snapshot");
        add("snapshot verify missing.kvsnapshot", "missing.kvsnapshot: ");
        add("snapshot verify tree/a tree", "is neither a folder nor a snapshot");
    }

    void wrongRequestsAreTold()
    {
        QFETCH(QByteArray, arguments);
        QFETCH(QByteArray, message);
        const CliResult result = runCli(arguments);
        QCOMPARE(result.status, 2);
        QVERIFY2(result.errors.contains(message), result.errors.constData());
    }
};

VELMORA_TEST(SnapshotCommandTest)
#include "snapshot_command_test.moc"
