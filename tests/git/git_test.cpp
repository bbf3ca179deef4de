#include "made_repository.h"
#include "support/test_main.h"
#include "vfs/git/git_comparison.h"
#include "vfs/git/git_content.h"
#include "vfs/git/git_history.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFileInfo>
#include <QRandomGenerator>

using namespace velmora;
using namespace velmora::test;

namespace {

GitComparison compared(const QString &path, const char *left, const char *right)
{
    Progress silent;
    GitRequest request;
    request.path = path;
    request.sides = {gitSideOf(word(left)), gitSideOf(word(right))};
    return compareGit(request, CancelFlag(), silent);
}

QByteArray bytesOf(const QString &path)
{
    const std::string bytes = nativeName(path);
    return {bytes.data(), qsizetype(bytes.size())};
}

/// The changes as git itself writes them.
QByteArray rawOf(const GitComparison &comparison)
{
    QByteArray raw;
    for (const GitChange &change : comparison.changes) {
        const bool hasTwo = change.status == GitStatus::Renamed || change.status == GitStatus::Copied;
        raw += ':' + QByteArray::number(change.entries.left.mode, 8).rightJustified(6, '0') + ' ' +
               QByteArray::number(change.entries.right.mode, 8).rightJustified(6, '0') + ' ' +
               change.entries.left.name + ' ' + change.entries.right.name + ' ' + gitStatusLetter(change.status);
        if (hasTwo)
            raw += QByteArray::number(change.likeness).rightJustified(3, '0') + '\0' + bytesOf(change.paths.left);
        raw += '\0' + bytesOf(change.path()) + '\0';
    }
    return raw;
}

QByteArray stateOf(const QString &folder)
{
    QMap<QString, QByteArray> files;
    for (QDirIterator all(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories); all.hasNext();) {
        const QString path = all.next();
        files.insert(path, contentsOf(path));
    }
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (auto file = files.begin(); file != files.end(); ++file) {
        hash.addData(file.key().toUtf8());
        hash.addData(file.value());
    }
    return hash.result();
}

/// Changes files of a repository at random, under names that take some care.
class RandomEdits {
public:
    RandomEdits(const MadeRepository &repository, quint32 seed) : m_repository(repository), m_random(seed) {}

    void editSome()
    {
        for (int i = 0; i < 6; ++i)
            editOne();
    }

private:
    [[nodiscard]] QString anyName()
    {
        static const QStringList names{word("a"),     word("dir/b"),   word("dir/deep/c"), word("-dash"),
                                       word("a\nb"),  word("tab\tx"),  word(" blank "),    word("dir/naïve.txt"),
                                       word("*?[x]"), word("\"quote"), word("dir-x/y"),    word("z.bin")};
        return names.at(m_random.bounded(int(names.size())));
    }

    void editOne()
    {
        const QString name = anyName();
        const QString path = m_repository.path(name);
        switch (m_random.bounded(6)) {
        case 0:
            QFile::remove(path);
            break;
        case 1:
            QDir().mkpath(QFileInfo(m_repository.path(anyName())).path());
            QFile::rename(path, m_repository.path(anyName()));
            break;
        case 2:
            QFile::remove(path);
            QDir().mkpath(QFileInfo(path).path());
            QFile::link(word("../target"), path);
            break;
        case 3:
            QFile::setPermissions(path, QFile::permissions(path) ^ (QFile::ExeOwner | QFile::ExeUser));
            break;
        default:
            if (QFileInfo(path).isSymLink())
                QFile::remove(path);
            m_repository.write(name, lines(m_random.bounded(4), 20) + lines(m_random.bounded(90), 3));
        }
    }

    const MadeRepository &m_repository;
    QRandomGenerator m_random;
};

/// A program that leaves a mark when it is run.
QString trap(const MadeRepository &repository, const char *name)
{
    const QString path = repository.path(QStringLiteral(".git/") + word(name));
    QDir().mkpath(QFileInfo(path).path());
    const QByteArray mark = repository.path(word("MARK")).toUtf8();
    if (!makeFile(path, "#!/bin/sh\necho $0 >> '" + mark + "'\ncat\n"))
        return {};
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

} // namespace

class GitTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { SKIP_WITHOUT_GIT(); }

    void listsWhatGitLists()
    {
        for (quint32 seed = 1; seed <= 5; ++seed) {
            const MadeRepository repository;
            RandomEdits edits(repository, seed);
            edits.editSome();
            repository.commit(word("first"));
            for (int round = 0; round < 2; ++round) {
                edits.editSome();
                const QByteArray before = stateOf(repository.path(word(".git")));
                const GitComparison disk = compared(repository.path(), "HEAD", ":worktree");
                QVERIFY2(!disk.fault.isError(), qPrintable(disk.fault.detail));
                QCOMPARE(stateOf(repository.path(word(".git"))), before);
                repository.run("add -A");
                const GitComparison index = compared(repository.path(), "HEAD", ":index");
                const GitComparison folder =
                    compared(repository.path(), "HEAD", repository.path().toUtf8().constData());
                repository.commit(word("next"));
                const QByteArray plain = repository.run("diff --raw -z -M -C --no-abbrev HEAD~1 HEAD");
                QCOMPARE(rawOf(compared(repository.path(), "HEAD~1", "HEAD")), plain);
                QCOMPARE(rawOf(disk), plain);
                QCOMPARE(rawOf(index), plain);
                QCOMPARE(rawOf(folder), plain);
            }
        }
    }

    void knowsNamesThatAreNoText()
    {
        const MadeRepository repository;
        repository.commit(word("nothing"));
        const QByteArray id = repository.run("hash-object -w --stdin").trimmed();
        QByteArray tree = "100644 bad\xFF.txt";
        tree += '\0' + QByteArray::fromHex(id);
        const QString treeFile = repository.path(word("t"));
        QVERIFY(makeFile(treeFile, tree));
        const QByteArray name = repository.run("hash-object -t tree -w t").trimmed();
        const GitComparison result = compared(repository.path(), "HEAD", name.constData());
        QCOMPARE(result.changes.size(), std::size_t(1));
        QCOMPARE(bytesOf(result.changes.front().path()), QByteArray("bad\xFF.txt"));
    }

    void readsStashesSubmodulesAndTheParting()
    {
        const MadeRepository library;
        library.write(word("f"), "1\n");
        library.commit(word("library"));
        const MadeRepository repository;
        repository.write(word("a"), lines(1, 10));
        repository.commit(word("start"));
        repository.run("tag v1");
        repository.run("checkout -q -b topic v1");
        repository.write(word("topic"), "t\n");
        repository.commit(word("topic"));
        repository.run("checkout -q main");
        git(repository.path(), {word("submodule"), word("--quiet"), word("add"), library.path(), word("sub")});
        repository.commit(word("with submodule"));
        git(repository.path(word("sub")), {word("commit"), word("-q"), word("--allow-empty"), word("-m"), word("x")});
        const GitComparison moved = compared(repository.path(word("sub/..")), "HEAD", ":worktree");
        QCOMPARE(moved.changes.size(), std::size_t(1));
        QVERIFY(moved.changes.front().entries.right.isSubmodule());
        QCOMPARE(moved.changes.front().entries.right.name,
                 git(repository.path(word("sub")), {word("rev-parse"), word("HEAD")}).trimmed());

        Progress silent;
        GitRequest request{repository.path(), {gitSideOf(word("main")), gitSideOf(word("topic"))}, true};
        GitComparison parted = compareGit(request, CancelFlag(), silent);
        QCOMPARE(parted.changes.size(), std::size_t(1));
        QCOMPARE(parted.changes.front().path(), word("topic"));
        QVERIFY(!fillDetails(parted, CancelFlag()).isError());
        QCOMPARE(parted.changes.front().lines, std::optional(GitLines{1, 0}));
        const GitCommits commits =
            commitsBetween(parted.repository, parted.states.left.commit, parted.states.right.commit, CancelFlag());
        QCOMPARE(commits.commits.size(), std::size_t(1));
        QCOMPARE(commits.commits.front().subject, word("topic"));

        repository.write(word("a"), "changed\n");
        repository.run("stash -q");
        QCOMPARE(compared(repository.path(), "HEAD", "stash@{0}").changes.size(), std::size_t(1));
        const GitRefs refs = listRefs(parted.repository, CancelFlag());
        QStringList names;
        for (const GitRef &ref : refs.refs)
            names.append(ref.name);
        names.sort();
        QCOMPARE(names, (QStringList{word("main"), word("stash@{0}"), word("topic"), word("v1")}));
    }

    // Everything that git can be told to run leaves a mark. The traps are tried first.
    void runsNothingOfTheRepository()
    {
        const MadeRepository repository;
        repository.write(word(".gitattributes"), "* filter=evil diff=evil\n");
        repository.write(word("a"), "one\n");
        repository.commit(word("first"));
        repository.write(word("a"), "two\n");
        repository.commit(word("second"));
        repository.write(word("a"), "three\n");
        repository.write(word("new"), "new\n");
        const QString evil = trap(repository, "evil");
        for (const char *hook : {"post-index-change", "reference-transaction", "fsmonitor-watchman"})
            QVERIFY(!trap(repository, qPrintable(QStringLiteral("hooks/") + word(hook))).isEmpty());
        for (const char *setting :
             {"core.fsmonitor", "filter.evil.clean", "filter.evil.smudge", "filter.evil.process", "diff.external",
              "diff.evil.command", "diff.evil.textconv", "core.pager", "core.editor", "core.sshCommand", "core.askPass",
              "credential.helper", "alias.diff-tree", "gpg.program", "pager.log", "pager.diff-tree"})
            git(repository.path(), {word("config"), word(setting), evil});
        for (const char *setting : {"log.showSignature", "core.untrackedCache", "core.splitIndex"})
            git(repository.path(), {word("config"), word(setting), word("true")});
        const QString mark = repository.path(word("MARK"));
        repository.run("diff --ext-diff HEAD~1 HEAD");
        QVERIFY2(QFile::remove(mark), "the traps do not work");
        repository.run("status");
        QVERIFY2(QFile::remove(mark), "the traps do not work");

        for (const char *right : {":worktree", ":index", "HEAD~1"}) {
            GitComparison result = compared(repository.path(), "HEAD", right);
            QVERIFY2(!result.fault.isError(), qPrintable(result.fault.detail));
            QVERIFY(!fillDetails(result, CancelFlag()).isError());
            QVERIFY(!listRefs(result.repository, CancelFlag()).fault.isError());
            QVERIFY(
                !commitsBetween(result.repository, result.states.left.commit, result.states.right.commit, CancelFlag())
                     .fault.isError());
            const QTemporaryDir copies;
            for (const GitChange &change : result.changes) {
                for (const Side side : bothSides) {
                    if (change.entries[side].isThere())
                        QVERIFY(!layOutChange(result, change, side, copies.path(), CancelFlag()).path.isEmpty());
                }
            }
        }
        QVERIFY2(!QFile::exists(mark), contentsOf(mark).constData());
    }

    void laysNothingOutElsewhere()
    {
        const MadeRepository repository;
        repository.commit(word("nothing"));
        const QByteArray blob = QByteArray::fromHex(repository.run("hash-object -w --stdin").trimmed());
        const QByteArray inner = QByteArray("100644 config") + '\0' + blob;
        QVERIFY(makeFile(repository.path(word("t")), inner));
        const QByteArray folder = QByteArray::fromHex(repository.run("hash-object -t tree -w --literally t").trimmed());
        const QByteArray outer = QByteArray("40000 ..") + '\0' + folder + "40000 .git" + '\0' + folder +
                                 "100644 a/../../b" + '\0' + blob + "100644 con" + '\0' + blob;
        QVERIFY(makeFile(repository.path(word("t")), outer));
        const QByteArray tree = repository.run("hash-object -t tree -w --literally t").trimmed();
        const GitComparison result = compared(repository.path(), "HEAD", tree.constData());
        QVERIFY2(!result.fault.isError(), qPrintable(result.fault.detail));
        QCOMPARE(result.changes.size(), std::size_t(4));
        QCOMPARE(result.oddNames.size(), 3);
        const QTemporaryDir copies;
        for (const GitChange &change : result.changes) {
            const QString path = layOutChange(result, change, Side::Right, copies.path(), CancelFlag()).path;
            QVERIFY2(QFileInfo(path).canonicalFilePath().startsWith(QFileInfo(copies.path()).canonicalFilePath()),
                     qPrintable(path));
        }
    }

    void takesGitsWordForWhatItMayRead()
    {
        const MadeRepository repository;
        repository.commit(word("one"));
        qputenv("GIT_TEST_ASSUME_DIFFERENT_OWNER", "1");
        qputenv("GIT_CONFIG_GLOBAL", "/dev/null");
        const GitFault refused = compared(repository.path(), "HEAD", "HEAD").fault;
        qunsetenv("GIT_TEST_ASSUME_DIFFERENT_OWNER");
        qunsetenv("GIT_CONFIG_GLOBAL");
        QCOMPARE(refused.kind, GitFaultKind::NotOurs);
        QVERIFY(refused.detail.contains(word("safe.directory")));
        QCOMPARE(compared(repository.path(), "HEAD", "--output=x").fault.kind, GitFaultKind::UnknownState);
        QCOMPARE(compared(repository.path(), "HEAD", "HEAD\nmain").fault.kind, GitFaultKind::UnknownState);
        QCOMPARE(compared(QDir::rootPath(), "HEAD", "HEAD").fault.kind, GitFaultKind::NoRepository);
        // Lines whose ends git turns when it adds them are no difference.
        repository.write(word("crlf"), "one\ntwo\n");
        repository.commit(word("two"));
        repository.write(word("crlf"), "one\r\ntwo\r\n");
        QCOMPARE(compared(repository.path(), "HEAD", ":worktree").changes.size(), std::size_t(1));
        repository.run("config core.autocrlf true");
        QCOMPARE(compared(repository.path(), "HEAD", ":worktree").changes.size(), std::size_t(0));
    }
};

VELMORA_TEST(GitTest)
#include "git_test.moc"
