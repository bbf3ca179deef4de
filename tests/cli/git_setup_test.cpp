#include "cli_fixture.h"
#include "support/test_main.h"

#include <QProcess>
#include <QStandardPaths>

using namespace velmora::test;

namespace {

/// Runs git in the current folder; what it puts out.
QByteArray git(const QByteArray &arguments)
{
    QProcess process;
    process.start(QStringLiteral("git"), QString::fromUtf8(arguments).split(u' '));
    process.waitForFinished();
    return process.readAllStandardOutput().trimmed();
}

} // namespace

class GitSetupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("git")).isEmpty())
            QSKIP("no git here");
        m_files = std::make_unique<CliFiles>();
        // Nobody's own settings are looked at or changed.
        qputenv("GIT_CONFIG_GLOBAL", QFile::encodeName(QFileInfo(QStringLiteral("user's config")).absoluteFilePath()));
        qputenv("GIT_CONFIG_NOSYSTEM", "1");
        CliFiles::write("it's velmora", "#!/bin/sh\nexit 0\n");
        QVERIFY(QFile::setPermissions(QStringLiteral("it's velmora"), QFile::ReadOwner | QFile::ExeOwner));
        m_setup = {word("git-setup"), word("--program"), word("it's velmora")};
    }

    void cleanup()
    {
        qunsetenv("GIT_CONFIG_GLOBAL");
        qunsetenv("GIT_CONFIG_NOSYSTEM");
        m_files.reset();
    }

    void takesBackExactlyWhatItWrote_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::newRow("nothing") << QByteArray("# mine\n[user]\n\tname = me\n");
        QTest::newRow("another tool") << QByteArray(
            "[merge]\n\ttool = meld ; comment\n[diff]\n  tool = \"a b\"\n[x]\n\ty\n");
        QTest::newRow("other keys") << QByteArray("[difftool \"velmora\"]\n\tmine = 1\n[diff]\n\trenames = copies\n");
    }

    void takesBackExactlyWhatItWrote()
    {
        QFETCH(QByteArray, before);
        CliFiles::write("user's config", before);
        for (int time = 0; time < 2; ++time) {
            const CliResult run = runCli(m_setup + QStringList{word("--global")});
            QCOMPARE(run.errors, QByteArray());
            QCOMPARE(run.status, 0);
            QCOMPARE(git("config merge.tool"), QByteArray("velmora"));
            QCOMPARE(git("config mergetool.velmora.trustExitCode"), QByteArray("true"));
            QVERIFY(git("config difftool.velmora.cmd").contains("it'\\''s velmora' --wait \"$LOCAL\" \"$REMOTE\""));
        }
        const CliResult run = runCli("git-setup --global --remove");
        QCOMPARE(run.status, 0);
        QVERIFY(run.output.startsWith("git config --global "));
        QCOMPARE(git("config --get-regexp tool").replace("merge.tool meld", "").replace("diff.tool a b", "").trimmed(),
                 QByteArray(before.contains("mine = 1") ? "difftool.velmora.mine 1" : ""));
        QCOMPARE(git("config --get-regexp ^velmora"), QByteArray());
        if (!before.contains("tool ="))
            QCOMPARE(CliFiles::read("user's config"), before);
    }

    void checksAndTries()
    {
        git("init --quiet");
        const CliResult early = runCli(m_setup + QStringList{word("--check")});
        QCOMPARE(early.status, 1);
        QVERIFY(early.output.contains("merge.tool is not set"));
        QCOMPARE(runCli(m_setup).status, 0);
        const CliResult run = runCli(m_setup + QStringList{word("--check")});
        QVERIFY2(run.status == 0, (run.output + run.errors).constData());
        QCOMPARE(run.output.count("\nok: "), 5);
        // Called from a hook or an alias, git's variables lead to somebody's repository.
        qputenv("GIT_DIR", QFile::encodeName(QFileInfo(QStringLiteral(".git")).absoluteFilePath()));
        const CliResult inside = runCli(m_setup + QStringList{word("--check")});
        qunsetenv("GIT_DIR");
        QVERIFY2(inside.status == 0, (inside.output + inside.errors).constData());
        QCOMPARE(git("rev-list --all"), QByteArray());
    }

    void saysWhatIsWrong()
    {
        QCOMPARE(runCli("git-setup --program missing").status, 2);
        QCOMPARE(runCli("git-setup --remove --check").status, 2);
        // Not in a repository.
        const CliResult run = runCli(m_setup);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.errors.count('\n'), 1);
    }

private:
    std::unique_ptr<CliFiles> m_files;
    QStringList m_setup;
};

VELMORA_TEST(GitSetupTest)

#include "git_setup_test.moc"
