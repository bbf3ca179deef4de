#include "folder/engine/folder_engine.h"
#include "sftp/local_host.h"
#include "support/files.h"
#include "support/test_main.h"
#include "vfs/blob_name.h"
#include "vfs/local_folder.h"
#include "vfs/place/other_tree.h"
#include "vfs/place/tree_path.h"
#include "vfs/remote/remote_digests.h"
#include "vfs/remote/remote_tree_listing.h"

using namespace velmora;
using namespace velmora::test;

namespace {

/// "name kind size" for each entry of a source, by path.
QStringList drawn(const TreeSource &source, const QString &folder = word("/"))
{
    QStringList rows;
    const auto add = [&](FolderEntry &&entry) {
        const QString path = (folder == u"/" ? QString() : folder) + u'/' + entry.name;
        const bool isFolder = entry.kind == EntryKind::Folder;
        rows.append(word("%1 %2").arg(path, isFolder ? word("d") : QString::number(entry.size)));
        if (isFolder)
            rows += drawn(source, path);
        return true;
    };
    (void)source.readFolder(folder, HiddenEntries::Listed, add);
    rows.sort();
    return rows;
}

/// The content as its opener gives it, in reads of an odd length; "failed" where it cannot be read.
QByteArray readAll(const TreeSource &source, const QString &path)
{
    const std::unique_ptr<OpenFile> file = source.makeOpener()->open(path, OpenHint::Unknown);
    QByteArray content;
    QByteArray buffer(1'000'003, '\0');
    for (;;) {
        const FilePiece piece = file ? file->readAt(content.size(), buffer.data(), buffer.size()) : FilePiece{0, true};
        if (piece.failed)
            return "failed";
        content += buffer.first(piece.length);
        if (piece.length < buffer.size())
            return content;
    }
}

RemoteFault faultOf(const TreeAt &tree)
{
    return std::get<RemoteOpening>(tree.other).fault;
}

} // namespace

class RemoteTreeTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<LocalHost> m_host;
    std::unique_ptr<QTemporaryDir> m_there;
    QByteArray m_searchPath;
    Progress m_silent;

    [[nodiscard]] QString address(const QString &folder) const { return remoteAddress(m_host->target(folder).place); }
    [[nodiscard]] TreeAt opened(const QString &path)
    {
        ArchiveRequest request;
        request.path = path;
        return treeAt(request, {}, m_silent);
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_host = std::make_unique<LocalHost>();
        m_searchPath = qgetenv("PATH");
        qputenv("PATH", m_host->searchPath().toUtf8() + ':' + m_searchPath);
    }
    void cleanupTestCase() { qputenv("PATH", m_searchPath); }
    void init()
    {
        m_there = std::make_unique<QTemporaryDir>();
        const QByteArray test = QTest::currentTestFunction();
        if (!m_host->lack().isEmpty() && !test.startsWith("text"))
            QSKIP(qPrintable(m_host->lack()));
    }

    void textOfAddresses()
    {
        const auto read = [](const char *text) {
            const std::optional<RemotePlace> place = remotePlaceOf(word(text));
            return place ? word("%1|%2|%3|%4").arg(place->user, place->host).arg(place->port).arg(place->folder)
                         : word("none");
        };
        QCOMPARE(read("sftp://u@h:2022/srv//a b/../c/"), word("u|h|2022|/srv/c"));
        QCOMPARE(read("SFTP://h"), word("|h|22|/"));
        QCOMPARE(read("sftp://a@b@[fe80::1]:7/~/x/"), word("a@b|[fe80::1]|7|x"));
        QCOMPARE(read("sftp://h//~"), word("|h|22|/~"));
        QCOMPARE(read("sftp:/h/x"), word("none"));
        for (const char *text : {"sftp://u@h:2022/srv/c", "sftp://h", "sftp://h/~", "sftp://[::1]:7/~/x"})
            QCOMPARE(otherTreeText(word(text)), word(text));
        QStringList above;
        for (QString at = word("sftp://h/~/a/b"); !at.isEmpty(); at = otherTreeAround(at))
            above.append(otherTreeTitle(at));
        QCOMPARE(above, words("b (h)|a (h)|h"));
        using Fault = RemotePlaceFault;
        const std::pair<const char *, Fault> faults[] = {
            {"sftp://", Fault::Missing},           {"sftp://u@/x", Fault::Missing},
            {"sftp://-oX/x", Fault::BadHost},      {"sftp://h;x/y", Fault::BadHost},
            {"sftp://-l@h/x", Fault::BadUser},     {"sftp://h:0/x", Fault::BadPort},
            {"sftp://h:99999/x", Fault::BadPort},  {"sftp://h:ssh/x", Fault::BadPort},
            {"sftp://u@h/a\nb", Fault::BadFolder}, {"sftp://h/a;b", Fault::NoUser},
        };
        for (const auto &[text, fault] : faults)
            QVERIFY2(faultOf(*remotePlaceOf(word(text))) == fault, text);
    }

    void textOfListings()
    {
        const auto read = [](const QByteArray &output, qint64 most = 100) {
            const RemoteTreeListing listing = parseTreeListing(output, most);
            QByteArray text = QByteArray::number(listing.unlisted) + (listing.isWhole ? " whole" : " cut");
            for (const ArchiveEntry &entry : listing.entries)
                text += '|' + entry.name + ' ' + QByteArray::number(entry.size) + ' ' +
                        QByteArray::number(entry.modifiedMs) + (entry.cannotList ? " closed" : "") + entry.target;
            return text;
        };
        QByteArray found(
            "hello\nvelmora-tree-1\nf 7 1700000000.1239999990~a\nb~~d 4096 1.5~d~~u 1 -2~d/e~~l 3 0.0~l~->~"
            "end 0");
        found.replace('~', '\0');
        QCOMPARE(read(found), "0 whole|a\nb 7 1700000000123|d/ 0 1500|d/e/ 0 -2000 closed|l 0 0->");
        QCOMPARE(read(found, 1), "0 cut|a\nb 7 1700000000123|d/ 0 1500"); // one more shows that there are too many
        for (qsizetype end = 0; end < found.size(); ++end)
            QVERIFY(!parseTreeListing(found.first(end), 100).isWhole);
        QCOMPARE(read("velmora-tree-2\n41ed 9 5 .\n81a4 7 5 ./a b\n81a4 3 5 ./x\ny\nz\na1ff 1 5 ./l\nend 0"),
                 "1 whole|a b 7 5000|l 0 5000");
        QCOMPARE(read("velmora-tree-2\n81a4 7 5 ./a\nend 1"), "0 cut|a 7 5000");
        QVERIFY(!parseTreeListing("Welcome!\n", 100).isMarked);
    }

    void textOfDigests()
    {
        const std::vector<RemoteFileName> files{{"a", 1}, {"b c", 22}, {"x\ny", 3}, {"a", 1}};
        const QByteArray sum(64, 'e');
        const auto read = [&](QByteArray lines) {
            RemoteDigestTalk talk(files, RemoteDigest::Sha256);
            for (const QByteArray &line : lines.replace("SUM", sum).split('|')) {
                if (const auto taken = talk.take(line); taken != RemoteDigestTalk::Taken::Line)
                    return QByteArray(taken == RemoteDigestTalk::Taken::Odd ? "odd" : "end");
            }
            QByteArray told;
            for (const QByteArray &value : talk.digests())
                told += value.isEmpty() ? '-' : '+';
            return told;
        };
        QCOMPARE(RemoteDigestTalk(files, RemoteDigest::Sha256).question(), "sha256\n./a\n./b c\n\n");
        QCOMPARE(read("s1 ./a|s22 ./b c|SUM  ./a|SUM  ./b c|s1 ./a|s22 ./b c"), "++--");
        QCOMPARE(read("s1 ./a|s22 ./b c|SUM  ./b c|s1 ./a|s23 ./b c"), "----"); // unreadable, and grown
        QCOMPARE(read("s1 ./a|SUM  ./a|SUM  ./a|s1 ./a"), "----");
        QCOMPARE(read("SUM  ./a|s1 ./a"), "----");
        for (const char *odd :
             {"s1 ./c", "s1./a", "SUM  ./c", "SUM  -", "SUM", "eSUM  ./a", "x", "!|!|!|!|!|!|!|!|!|!"})
            QCOMPARE(read(odd), "odd");
    }

    void aFolderOfAHostIsATree()
    {
        const QDir there(m_there->path());
        const QStringList names = words("plain|a b|it's|\"q\"|$HOME|`id`|-rf|a\\nb|!x| ends |\u4e2d")
                                  << word("line\nfeed\n");
        QVERIFY(there.mkpath(word("sub/empty")));
        for (const QString &name : names)
            QVERIFY(makeFile(there.filePath(word("sub/") + name), name.toUtf8()));
        QByteArray large(9'000'000, 'x');
        large[4'194'304] = 'y';
        QVERIFY(makeFile(there.filePath(word("large")), large) && makeFile(there.filePath(word("none")), {}));
        QVERIFY(QFile::link(word("sub/plain"), there.filePath(word("inner"))));
        QVERIFY(QFile::link(word("/etc/passwd"), there.filePath(word("outer"))));

        const TreeAt tree = opened(address(m_there->path()));
        QVERIFY2(tree.folder.isThere(), qPrintable(faultOf(tree).end.error));
        const TreeSource &source = *tree.folder.source;
        QCOMPARE(source.writeBar(), WriteBar::FixedState);
        QStringList wanted = words("/inner 5|/large 9000000|/none 0|/sub d|/sub/empty d");
        for (const QString &name : names)
            wanted.append(word("/sub/%1 %2").arg(name).arg(name.toUtf8().size()));
        wanted.sort();
        QCOMPARE(drawn(source), wanted);
        for (const QString &name : names)
            QCOMPARE(readAll(source, word("/sub/") + name), name.toUtf8());
        QCOMPARE(readAll(source, word("/large")), large);
        QCOMPARE(readAll(source, word("/none")), QByteArray());

        const auto hostName = source.contentIdentity(word("/large"));
        const auto file = FileAccess::native().makeOpener()->open(there.filePath(word("large")), OpenHint::Unknown);
        QVERIFY(hostName && hostName == blobName(*file, ContentIdentity::Algorithm::GitBlobSha1, {}));
        m_host->setHostProgram("sha1sum", "exit 1"); // then it is fetched
        QVERIFY(!opened(address(m_there->path())).folder.source->contentIdentity(word("/large")));
        m_host->setHostProgram("sha1sum", {});

        // Sizes and times agree with those of the disk, to the millisecond; only what is read can differ then.
        FolderInput input{{localFolder(m_there->path()), tree.folder}};
        input.hidden = HiddenEntries::Listed;
        const auto different = [&] {
            QStringList found;
            for (const FolderDiffItem &item : compareFolderTree(input, {})) {
                if (!item.isDir && item.diffStatus() != FolderDiffStatus::Same)
                    found.append(item.name);
            }
            return found;
        };
        QCOMPARE(different(), words("outer"));

        // What has changed since it was listed is not given out as what was listed.
        QVERIFY(makeFile(there.filePath(word("sub/plain")), "other length"));
        QCOMPARE(readAll(source, word("/sub/plain")), "failed");
        QCOMPARE(readAll(source, word("/sub/it's")), "it's");
        const QTemporaryDir here;
        QVERIFY(!source.layOut(word("/inner"), here.path(), {}).ok());
        QCOMPARE(contentsOf(source.layOut(word("/sub/it's"), here.path(), {}).path), "it's");
        QCOMPARE(entriesOf(here.path()).size(), 1);
    }

    void manyContentsAreToldApartAsOneByOne()
    {
        const QTemporaryDir here;
        QStringList names = words("a b|it's|$HOME|`id`|-rf|--|a\\nb|back\\| ends |\u4e2d|shut|grows|goes|pipe|late")
                            << word("line\nfeed\n") << word("\n./late") << word("return\r");
        for (int i = 0; i < 40; ++i)
            names.append(word("d%1/f%2").arg(i % 3).arg(i));
        for (int i = 0; i < names.size(); ++i) {
            for (const QString &root : {m_there->path(), here.path()}) {
                const bool isOther = root == here.path() && i % 3 == 0;
                QVERIFY(QDir(root).mkpath(QFileInfo(root + u'/' + names.at(i)).path()));
                QVERIFY(makeFile(root + u'/' + names.at(i), names.at(i).toUtf8() + (isOther ? 'y' : 'x')));
                QFile file(root + u'/' + names.at(i));
                const qint64 time = root == here.path() ? 100'000 : 200'000;
                QVERIFY(file.open(QIODevice::ReadWrite) &&
                        file.setFileTime(QDateTime::fromMSecsSinceEpoch(time), QFileDevice::FileModificationTime));
            }
        }
        const TreeAt many = opened(address(m_there->path()));
        const TreeAt oneByOne = opened(address(m_there->path()));
        QVERIFY(many.folder.isThere() && oneByOne.folder.isThere());
        QStringList paths;
        for (const QString &name : std::as_const(names))
            paths.append(u'/' + name);
        using enum ContentIdentity::Algorithm;
        for (const auto &[algorithm, perl] : {std::pair(Sha256, ""), {GitBlobSha1, ""}, {GitBlobSha1, "exit 1"}}) {
            m_host->setHostProgram("perl", perl);
            const TreeAt tree = opened(address(m_there->path()));
            const auto known = tree.folder.source->contentIdentities(paths, algorithm, {});
            m_host->setHostProgram("perl", {});
            for (int i = 0; i < paths.size(); ++i) {
                const auto file = FileAccess::native().makeOpener()->open(m_there->path() + paths.at(i), {});
                const bool isPlain =
                    !paths.at(i).contains(u'\n') && !paths.at(i).contains(u'\r') && !paths.at(i).contains(u'\\');
                QVERIFY2(known[std::size_t(i)] == (isPlain ? blobName(*file, algorithm, {}) : std::nullopt),
                         qPrintable(paths.at(i)));
            }
        }
        const QDir there(m_there->path());
        QVERIFY(makeFile(there.filePath(word("grows")), "longer than it was"));
        QVERIFY(QFile::remove(there.filePath(word("goes"))) && QFile::remove(there.filePath(word("pipe"))));
        QCOMPARE(QProcess::execute(word("mkfifo"), {there.filePath(word("pipe"))}), 0);
        // Nobody is kept from reading who runs this as root.
        const QByteArray shuts = "case \"$*\" in *shut*) exit 1;; esac\nexec ";
        m_host->setHostProgram("dd", shuts + "/bin/dd \"$@\"");
        m_host->setHostProgram("cat", shuts + "/bin/cat \"$@\"");
        m_host->setHostProgram("sha256sum",
                               "for f do shift; case $f in ./shut) ;; *) set -- \"$@\" \"$f\";; esac; done\n"
                               "exec /usr/bin/sha256sum \"$@\"");
        const auto compared = [&](const TreeAt &tree) {
            QList<FolderProblem> problems;
            FolderInput input{{localFolder(here.path()), tree.folder}};
            QStringList told;
            for (const FolderDiffItem &item : compareFolderTree(input, {}, {nullptr, &problems}))
                told.append(word("%1 %2").arg(item.status).arg(item.name));
            for (const FolderProblem &problem : std::as_const(problems))
                told.append(problem.path);
            return told;
        };
        const QStringList found = compared(many);
        FolderInput byBlocks{{localFolder(here.path()), many.folder}};
        byBlocks.method = CompareMethod::Binary;
        QStringList blocks;
        for (const FolderDiffItem &item : compareFolderTree(byBlocks, {}))
            blocks.append(word("%1 %2").arg(item.status).arg(item.name));
        QCOMPARE(blocks, found.first(blocks.size()));
        m_host->setHostProgram("xargs", "exit 1");
        const QStringList plain = compared(oneByOne);
        for (const char *program : {"xargs", "sha256sum", "cat", "dd"})
            m_host->setHostProgram(program, {});
        QCOMPARE(found, plain);
        QCOMPARE(found.last(4), words("/goes|/grows|/pipe|/shut"));
        QVERIFY(found.contains(word("0 late")) && found.contains(word("3 d0/f0")));
    }

    void aHostWithoutTheFindOfGnuTellsTheSame()
    {
        const QDir there(m_there->path());
        QVERIFY(there.mkpath(word("it's \"a\"/b")) && makeFile(there.filePath(word("it's \"a\"/b/c d")), "123") &&
                makeFile(there.filePath(word("line\nfeed")), "1"));
        const QString place = address(m_there->path());
        const QStringList all = drawn(*opened(place).folder.source);
        m_host->setHostProgram("find", "case \"$*\" in *-printf*) exit 1;; esac\nexec /usr/bin/find \"$@\"");
        const TreeAt tree = opened(place);
        m_host->setHostProgram("find", {});
        QVERIFY(tree.folder.isThere());
        QCOMPARE(tree.opening.problems.size(), 1);
        QCOMPARE(tree.opening.problems.first().kind, ArchiveProblem::Kind::Unlisted);
        QCOMPARE(drawn(*tree.folder.source) << word("/line\nfeed 1"), all);
    }

    void whatKeepsATreeAwayIsTold()
    {
        const auto faultAt = [&](const QString &path) { return faultOf(opened(path)).end.fault; };
        const QString place = address(m_there->path());
        QCOMPARE(faultAt(place + word("/missing")), SshFault::NoFolder);
        m_host->setKnown(LocalHost::Known::None);
        QCOMPARE(faultAt(place), SshFault::UnknownHost);
        m_host->setKnown(LocalHost::Known::Another);
        QCOMPARE(faultAt(place), SshFault::ChangedHost);
        m_host->setKnown(LocalHost::Known::ItsOwn);
        QCOMPARE(faultOf(opened(word("sftp://-oProxyCommand=touch /x@h/y"))).inPlace, RemotePlaceFault::BadHost);
        const TreeAt tree = opened(place);
        m_host->setKnown(LocalHost::Known::None); // between the listing and the reading
        QVERIFY(makeFile(m_there->filePath(word("late")), "x"));
        QCOMPARE(readAll(*tree.folder.source, word("/late")), "failed");
        m_host->setKnown(LocalHost::Known::ItsOwn);
    }
};

VELMORA_TEST(RemoteTreeTest)
#include "remote_tree_test.moc"
