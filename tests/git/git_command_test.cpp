#include "../cli/cli_fixture.h"
#include "made_repository.h"
#include "support/test_main.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace velmora::test;

class GitCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { SKIP_WITHOUT_GIT(); }

    void tellsWhatChanged()
    {
        const MadeRepository repository;
        repository.write(word("old name"), lines(1, 20));
        repository.write(word("kept"), "same\n");
        repository.commit(word("one"));
        repository.run("mv kept kept"); // no change
        QVERIFY(QFile::rename(repository.path(word("old name")), repository.path(word("new"))));
        repository.write(word("docs/b.txt"), "b\n");
        repository.commit(word("two"));
        const auto run = [&repository](const char *options) {
            QStringList arguments{word("git"), repository.path(word("docs"))};
            return runCli(arguments + QString::fromUtf8(options).split(u' '));
        };
        QCOMPARE(run("HEAD~1 HEAD --format list --lines").output,
                 QByteArray("A docs/b.txt +1 -0\nR old name -> new +0 -0\n"));
        QCOMPARE(run("HEAD~1 HEAD --format list --same --status =").output, QByteArray());
        QVERIFY(run("HEAD~1 HEAD --format list --same").output.contains("= kept\n"));
        QCOMPARE(run("HEAD~1 HEAD --format list --include *.txt").output, QByteArray("A docs/b.txt\n"));
        QCOMPARE(run("HEAD~1 HEAD").status, 1);
        QCOMPARE(run("HEAD :worktree").status, 0);
        QCOMPARE(run("HEAD~1 HEAD --status D").status, 0);
        const QJsonObject json = QJsonDocument::fromJson(run("HEAD~1 HEAD --format json --commits").output).object();
        QCOMPARE(json.value(word("files")).toArray().at(1).toObject().value(word("likeness")).toInt(), 100);
        QCOMPARE(json.value(word("commits")).toArray().first().toObject().value(word("subject")).toString(),
                 word("two"));
        const QString folder = repository.path();
        QCOMPARE(runCli({word("folder"), word("git:HEAD~1:") + folder, word("git::index:") + folder, word("--format"),
                         word("list")})
                     .output,
                 QByteArray("> docs/\n> docs/b.txt\n= kept\n> new\n< old name\n"));
        const CliResult unknown = run("HEAD none");
        QCOMPARE(unknown.status, 2);
        QCOMPARE(unknown.errors, QByteArray("velmora-cli: none: the repository does not know this\n"));
    }
};

VELMORA_TEST(GitCommandTest)
#include "git_command_test.moc"
