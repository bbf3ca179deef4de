#include "folder/engine/folder_engine.h"
#include "folder/engine/folder_snapshot.h"
#include "folder_engine/test_tree.h"
#include "support/diff_items.h"
#include "support/test_main.h"
#include "vfs/place/snapshot_source.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <algorithm>

using namespace velmora;
using namespace velmora::test;

namespace {

SnapshotOpening opened(const QString &path, const SnapshotOpening &before = {})
{
    Progress silent;
    const std::optional<SnapshotPlace> place = snapshotPlaceOf(path);
    return place ? openSnapshot(*place, before, {}, silent) : SnapshotOpening();
}

QString snapshotOf(const TestTree &tree, const QString &folder, FolderSnapshotDigests digests)
{
    Progress silent;
    const QString path = tree.path(word("of.kvsnapshot"));
    const FolderSnapshotScan scan = scanFolderSnapshot(localFolder(folder), digests, {}, silent);
    return saveFolderSnapshot(path, scan.snapshot, {}).ok() ? path : QString();
}

QString written(const TestTree &tree, const QByteArray &entries)
{
    const QString path = tree.path(word("written.kvsnapshot"));
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write("{\"entries\":[" + entries + "]}") > 0 ? path : QString();
}

/// Names, statuses and what was not read: what does not tell of the place of the trees.
QStringList verdicts(const QList<FolderDiffItem> &items)
{
    QStringList lines;
    for (const FolderDiffItem &item : items)
        lines.append(QStringLiteral("%1 %2 %3 %4").arg(item.status).arg(item.isDir).arg(item.isUnread).arg(item.name));
    return lines;
}

QStringList compared(FolderInput input, const TreeFolder &left, bool reads)
{
    input.roots.left = left;
    QList<FolderDiffItem> items = compareFolderTree(input);
    if (reads)
        readUnread(input, items);
    return verdicts(items);
}

/// Few names, sizes, contents and times, so that everything meets. No folder is empty.
void fill(TestTree &tree, const char *side, QRandomGenerator &random)
{
    for (int i = 0; i < 30; ++i) {
        const QString folder = words("/|/d/|/d.e/|/d/e/|/d-/").value(random.bounded(5));
        const QByteArray bytes(1 + random.bounded(2), char('a' + random.bounded(2)));
        tree.file(word(side) + folder + QStringLiteral("f%1").arg(random.bounded(8)), bytes, random.bounded(2));
    }
}

} // namespace

class SnapshotTreeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aSnapshotWithDigestsComparesLikeTheFolderThatItIsOf()
    {
        QRandomGenerator random(11);
        for (int round = 0; round < 20; ++round) {
            TestTree tree;
            fill(tree, "left", random);
            fill(tree, "right", random);
            const SnapshotOpening with = opened(snapshotOf(tree, tree.left(), FolderSnapshotDigests::Sha256));
            QVERIFY(with.source && with.problems.isEmpty());
            for (const CompareMethod method : {CompareMethod::Rules, CompareMethod::Crc, CompareMethod::Binary}) {
                const FolderInput input = between(tree.left(), tree.right(), method);
                for (const bool reads : {false, true})
                    QCOMPARE(compared(input, with.folder(), reads), compared(input, input.roots.left, reads));
                QCOMPARE(verdicts(compareFolderLevel({.roots = {with.folder(), input.roots.right}, .method = method})),
                         verdicts(compareFolderLevel(input)));
            }
            // Two that have them leave nothing to be read.
            const SnapshotOpening other = opened(snapshotOf(tree, tree.right(), FolderSnapshotDigests::Sha256));
            FolderInput both = between(tree.left(), tree.right());
            const QStringList read = compared(both, both.roots.left, true);
            both.roots.right = other.folder();
            QCOMPARE(compared(both, with.folder(), false), read);
            const FolderInput own = between(tree.left(), tree.left());
            QCOMPARE(compared(own, with.folder(), true), compared(own, own.roots.left, true));
        }
    }

    void withoutDigestsSizeAndTimeDecide()
    {
        TestTree tree;
        const QStringList sides = words("left|right");
        for (const QString &side : sides) {
            const bool isLeft = side == u"left";
            tree.file(side + word("/other bytes"), isLeft ? "a" : "b", 1);
            tree.file(side + word("/other size"), isLeft ? "a" : "bb", 1);
            tree.file(side + word("/other time"), "a", isLeft ? 1 : 2);
        }
        const SnapshotOpening without = opened(snapshotOf(tree, tree.left(), FolderSnapshotDigests::None));
        const QStringList expected = words("0 0 1 other bytes|3 0 0 other size|3 0 0 other time");
        for (const CompareMethod method : {CompareMethod::Rules, CompareMethod::Crc, CompareMethod::Binary}) {
            for (const bool reads : {false, true})
                QCOMPARE(compared(between(tree.left(), tree.right(), method), without.folder(), reads), expected);
        }
        // Of a time in whole seconds nobody knows the rest.
        FolderSnapshot finer;
        finer.entries.push_back({word("other bytes"), 1, TestTree::moment(1).toMSecsSinceEpoch() + 400});
        FolderInput input = between(tree.left(), tree.right());
        const TreeFolder snapshot{std::make_shared<const SnapshotSource>(Location(), finer), word("/")};
        QCOMPARE(compared(input, snapshot, false).first(), expected.first());
    }

    void holdsNoContentsAndIsNotWritten()
    {
        TestTree tree;
        tree.file(word("left/d/f"), "a");
        const QString path = snapshotOf(tree, tree.left(), FolderSnapshotDigests::Sha256);
        const SnapshotOpening opening = opened(path);
        const SnapshotSource &source = *opening.source;
        QVERIFY(!source.makeOpener()->open(word("/d/f"), OpenHint::Unknown));
        QVERIFY(!source.layOut(word("/d/f"), tree.right(), {}).ok());
        QVERIFY(QDir(tree.right()).isEmpty());
        QVERIFY(source.writeBar() == WriteBar::FixedState && !source.isLocal());
        QVERIFY(opened(path, opening).source == opening.source); // the file is the same
        QCOMPARE(opened(path + word("/d"), opening).folder().shownPath(), path + word("/d"));
        for (const char *nowhere : {"/d/f", "/e", "/d/f/g"}) {
            const SnapshotOpening none = opened(path + word(nowhere), opening);
            QVERIFY2(!none.source && none.reading.ok() && none.stamp, nowhere);
        }
        QVERIFY(!snapshotPlaceOf(tree.left()) && !snapshotPlaceOf(path + word("x")));
    }

    void hostileEntriesAreRefusedOrLeftOut()
    {
        TestTree tree;
        const auto entry = [](const QByteArray &name) { return "{\"path\":\"" + name + "\",\"size\":1}"; };
        for (const char *name : {"../f", "/etc/f", "d/../../f", "d//f", "", "d/.", "f\\u0000"}) {
            const SnapshotOpening opening = opened(written(tree, entry("ok") + ',' + entry(name)));
            QVERIFY2(!opening.source && opening.reading.fault == FolderSnapshotFault::BadEntry, name);
            QCOMPARE(opening.reading.at, 2);
        }
        // A file that others are in, one that comes twice, and folders without end.
        const QByteArray deep = QByteArray("d/").repeated(100'000) + 'f';
        const SnapshotOpening opening =
            opened(written(tree, entry("a/b/c") + ',' + entry("a") + ',' + entry("a/b") + ',' + entry("a-") + ',' +
                                     entry("a-") + ',' + entry(deep)));
        QStringList told;
        for (const ArchiveProblem &problem : opening.problems)
            told.append(QStringLiteral("%1 %2").arg(int(problem.kind)).arg(problem.count));
        std::sort(told.begin(), told.end());
        QCOMPARE(told, (QStringList{QStringLiteral("%1 1").arg(int(ArchiveProblem::Kind::TooDeep)),
                                    QStringLiteral("%1 3").arg(int(ArchiveProblem::Kind::SameName))}));
        QStringList names;
        for (const FolderSnapshotEntry &kept : opening.source->snapshot().entries)
            names.append(kept.path);
        QCOMPARE(names, words("a-|a/b/c"));
        // Cut off anywhere, it is a file that is told, and no tree.
        const QString path = snapshotOf(tree, tree.path(QString()), FolderSnapshotDigests::Sha256);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.resize(file.size() / 2));
        file.close();
        const SnapshotOpening cut = opened(path);
        QVERIFY(!cut.source && cut.reading.fault == FolderSnapshotFault::NotJson);
    }
};

VELMORA_TEST(SnapshotTreeTest)
#include "snapshot_tree_test.moc"
