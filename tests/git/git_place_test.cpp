#include "core/crew.h"
#include "folder/engine/folder_engine.h"
#include "made_repository.h"
#include "support/test_main.h"
#include "vfs/local_folder.h"
#include "vfs/place/state_source.h"

using namespace velmora;
using namespace velmora::test;

namespace {

StateOpening opened(const char *state, const QString &path, const ArchiveLimits &limits = {})
{
    return openState({gitSideOf(word(state)), path}, {}, CancelFlag(), limits);
}

TreeFolder rootOf(const StateOpening &opening)
{
    return {opening.source, QStringLiteral("/") + opening.inside.mid(1)};
}

/// What is not the same, and how many entries there are.
QString differences(const TreeFolder &left, const TreeFolder &right, CompareMethod method)
{
    FolderInput input{.roots = {left, right}, .method = method};
    input.hidden = HiddenEntries::Listed;
    QList<FolderProblem> problems;
    QList<FolderDiffItem> items = compareFolderTree(input, {}, {nullptr, &problems});
    readUnread(input, items, {}, {nullptr, &problems});
    QStringList names;
    for (const FolderDiffItem &item : items) {
        if (item.diffStatus() != FolderDiffStatus::Same)
            names.append(item.name);
    }
    return QStringLiteral("%1 %2 %3").arg(items.size()).arg(problems.size()).arg(names.join(u','));
}

QByteArray bytesIn(const StateOpening &opening, const QString &path)
{
    const std::unique_ptr<OpenFile> file = opening.source->makeOpener()->open(path, OpenHint::Unknown);
    if (!file)
        return "unreadable";
    QByteArray bytes(file->size().value_or(0), '\0');
    return file->readAt(0, bytes.data(), bytes.size()).length == bytes.size() ? bytes : "short";
}

/// Writes a tree whose lines are "MODE NAME" as git would never make it, and the name of a commit of it.
QByteArray oddCommit(const MadeRepository &repository, const QByteArray &listing, const QByteArray &content)
{
    QByteArray tree;
    for (const QByteArray &line : listing.split('|'))
        tree += line + '\0' + QByteArray::fromHex(content);
    repository.write(word("tree"), tree);
    const QByteArray name = repository.run("hash-object -t tree -w --literally tree").trimmed();
    return repository.run(("commit-tree -m odd " + name).constData()).trimmed();
}

} // namespace

class GitPlaceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void placesAreReadAsTheyAreWritten()
    {
        const QDir folder(QDir::rootPath() + QStringLiteral("home"));
        const auto read = [&folder](const char *text) {
            const std::optional<GitPlace> place = gitPlaceOf(word(text), folder);
            return place ? gitPlaceText(*place).replace(folder.path(), word("HOME")) : QString();
        };
        QCOMPARE(read("git:v1:r/docs/../x"), word("git:v1:HOME/r/x"));
        QCOMPARE(read("git::index:."), word("git::index:HOME"));
        QCOMPARE(read("git:a/b@{1}:"), word("git:a/b@{1}:HOME"));
        for (const char *none : {"git", "git:", "git:v1", "git::index", "git::folder:/x:/y", "git::/x", "/git:v1:x",
                                 "./git:v1:x", "git:\n:x", "git: :x"})
            QCOMPARE(read(none), QString());
    }

    void aStateComparesLikeItsFilesOnTheDisk()
    {
        const MadeRepository repository;
        repository.write(word("empty"), "");
        repository.write(word("a b/-c"), "\r\n\0x");
        repository.write(word(".hidden/d.bin"), QByteArray(3'000'000, 'x'));
        for (int i = 0; i < 40; ++i)
            repository.write(QStringLiteral("many/%1").arg(i), lines(i, 5));
#ifndef Q_OS_WIN
        repository.write(nameFromNative("many/\xff"), "no text");
        QVERIFY(QFile::link(word("a b"), repository.path(word("toFolder"))));
        QVERIFY(QFile::link(word("../a b/-c"), repository.path(word("many/toFile"))));
#endif
        repository.commit(word("one"));
        const QTemporaryDir copy;
        repository.run(("checkout-index -a --prefix=" + copy.path().toUtf8() + '/').constData());
        const StateOpening state = opened("HEAD", repository.path());
        const TreeFolder disk = localFolder(copy.path());
        const QString all = differences(disk, disk, CompareMethod::Rules);
        QCOMPARE(differences(rootOf(state), disk, CompareMethod::Rules), all);
        QCOMPARE(differences(disk, rootOf(state), CompareMethod::Crc), all);
        QVERIFY(makeFile(copy.filePath(word("many/7")), lines(8, 5)));
        QCOMPARE(differences(rootOf(state), disk, CompareMethod::Rules), all + word("many,many/7"));

        // The same time and size on both sides, and what the next commit would hold.
        repository.write(word("many/7"), lines(8, 5));
        repository.run("add many/7");
        const StateOpening index = opened(":index", repository.path(word("many")));
        QCOMPARE(index.inside, word("/many"));
        repository.commit(word("two"));
        const StateOpening next = opened("HEAD", repository.path(word("many")));
        QVERIFY(differences(rootOf(opened("HEAD~1", repository.path(word("many")))), rootOf(next), CompareMethod::Rules)
                    .endsWith(word(" 7")));
        QVERIFY(differences(rootOf(index), rootOf(next), CompareMethod::Binary).endsWith(u' '));
        QVERIFY(openState({gitSideOf(word("HEAD")), repository.path()}, next, {}).source == next.source);
    }

    void manyReadAtOnce()
    {
        const MadeRepository repository;
        for (int i = 0; i < 30; ++i)
            repository.write(QString::number(i), lines(i, i * 300));
        repository.commit(word("one"));
        const StateOpening state = opened("main", repository.path());
        std::atomic<int> right{0};
        runCrew(
            4,
            [&](int worker) {
                for (int i = 0; i < 30; ++i) {
                    const int number = (i * 7 + worker) % 30;
                    right += bytesIn(state, QStringLiteral("/%1").arg(number)) == lines(number, number * 300) ? 1 : 0;
                }
            },
            [] {});
        QCOMPARE(right.load(), 120);
    }

    void whatIsHostileGetsNoFurther()
    {
        const MadeRepository repository;
        repository.write(word("b"), "/etc/passwd");
        repository.commit(word("one"));
        const QByteArray blob = repository.run("rev-parse HEAD:b").trimmed();
        const QByteArray odd = oddCommit(
            repository, "100644 ..|100644 .GIT|100644 a/../../b|100644 git~1|120000 link|100644 ok|160000 sub", blob);
        const StateOpening state = opened(odd.constData(), repository.path());
        QStringList names;
        QVERIFY(state.source->readFolder(word("/"), HiddenEntries::Listed, [&names](FolderEntry &&entry) {
            names.append(entry.name + (entry.kind == EntryKind::Folder ? u'/' : u' '));
            return true;
        }) == FolderRead::Complete);
        QCOMPARE(names, words("ok |sub/"));
        QCOMPARE(state.problems.value(0).kind, ArchiveProblem::Kind::NameLeadsOut);
        QCOMPARE(state.problems.value(0).count, 4);
        QCOMPARE(state.problems.value(1).kind, ArchiveProblem::Kind::LinkLeadsOut);
        QVERIFY(state.source->writeBar() != WriteBar::None);

        ArchiveLimits tight;
        tight.unpacked = 10;
        QCOMPARE(bytesIn(opened(odd.constData(), repository.path(), tight), word("/ok")), QByteArray("unreadable"));
        tight.entries = 1;
        QCOMPARE(opened(odd.constData(), repository.path(), tight).problems.value(1).kind,
                 ArchiveProblem::Kind::TooManyEntries);

        // A content that is not there, beside one that is, and one that is no content at all.
        const QByteArray lacking = oddCommit(repository, "100644 gone", QByteArray(40, 'a'));
        const StateOpening gone = opened(lacking.constData(), repository.path());
        QCOMPARE(gone.problems.value(0).kind, ArchiveProblem::Kind::Damaged);
        QCOMPARE(bytesIn(gone, word("/gone")), QByteArray("unreadable"));
        const StateOpening wrong =
            opened(oddCommit(repository, "100644 tree", repository.run("rev-parse HEAD^{tree}").trimmed()).constData(),
                   repository.path());
        QCOMPARE(wrong.source ? bytesIn(wrong, word("/tree")) : QByteArray("unreadable"), QByteArray("unreadable"));
    }

    void nothingOfTheRepositoryIsRun()
    {
        const MadeRepository repository;
        const QByteArray mark = repository.path(word("ran")).toUtf8();
        repository.write(word(".gitattributes"), "* filter=evil diff=evil\n");
        repository.write(word("a"), "a\n");
        repository.commit(word("one"));
        for (const char *key : {"filter.evil.smudge", "filter.evil.clean", "filter.evil.process", "diff.evil.textconv",
                                "diff.evil.command", "core.fsmonitor", "core.pager", "core.alternateRefsCommand"})
            git(repository.path(),
                {word("config"), QLatin1String(key), QStringLiteral("touch %1; cat").arg(word(mark.constData()))});
        repository.write(word("a"), "changed\n");
        for (const char *state : {"HEAD", ":index", ":worktree"}) {
            const StateOpening opening = opened(state, repository.path());
            QCOMPARE(bytesIn(opening, word("/a")), QByteArray(*state == ':' && state[1] == 'w' ? "changed\n" : "a\n"));
        }
        QVERIFY(!QFile::exists(word(mark.constData())));
    }

    void faultsAreTold()
    {
        const MadeRepository repository;
        repository.write(word("a"), "a\n");
        repository.commit(word("one"));
        QCOMPARE(opened("none", repository.path()).fault.kind, GitFaultKind::UnknownState);
        QCOMPARE(opened("--all", repository.path()).fault.kind, GitFaultKind::UnknownState);
        QCOMPARE(opened("HEAD", repository.path(word("a"))).fault.kind, GitFaultKind::NoFolder);
        QCOMPARE(opened("HEAD", repository.path(word("x/y"))).fault.kind, GitFaultKind::NoFolder);
        QCOMPARE(opened("HEAD", QDir::tempPath()).fault.kind, GitFaultKind::NoRepository);
    }
};

VELMORA_TEST(GitPlaceTest)
#include "git_place_test.moc"
