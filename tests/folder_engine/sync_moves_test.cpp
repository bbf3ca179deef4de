#include "core/path_names.h"
#include "folder/engine/folder_engine.h"
#include "folder/engine/name_conflicts.h"
#include "folder/engine/pair_decisions.h"
#include "folder/engine/sync_moves.h"
#include "folder_engine/test_tree.h"
#include "support/test_main.h"
#include "vfs/local_folder.h"

#include <QMap>
#include <QRandomGenerator>

using namespace velmora;
using namespace velmora::test;

namespace {

/// What both sides have of one content, where the other has nothing of that name.
QMap<QByteArray, Sides<int>> loneContents(const QList<FolderDiffItem> &items)
{
    QMap<QByteArray, Sides<int>> counts;
    for (const FolderDiffItem &item : items) {
        if (!item.isDir && item.leftPath.isEmpty() != item.rightPath.isEmpty())
            ++counts[contentsOf(item.leftPath + item.rightPath)][item.leftPath.isEmpty() ? Side::Right : Side::Left];
    }
    counts.remove({});
    return counts;
}

FolderDiffItem leftOnly(const char *name)
{
    FolderDiffItem item;
    item.name = word(name);
    item.leftPath = QLatin1String("/l/") + item.name;
    item.setDiffStatus(FolderDiffStatus::LeftOnly);
    return item;
}

} // namespace

class SyncMovesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// Each pair is of one content, no file is in two, and none is left that would find a partner.
    void pairsAllThatIsTheSame()
    {
        QRandomGenerator random(18);
        qsizetype pairs = 0;
        for (int round = 0; round < 20; ++round) {
            TestTree tree;
            for (int i = 0; i < 24; ++i) {
                // Some of one size that differ at the end only, some that are empty.
                QByteArray bytes(int(random.bounded(3)) * 70'000, 'x');
                if (!bytes.isEmpty())
                    bytes.back() = char('a' + random.bounded(3));
                tree.file(word(i % 2 == 0 ? "left/" : "right/") + QString::number(random.bounded(40)), bytes,
                          random.bounded(3));
            }
            const Sides<TreeFolder> roots = localFolders(tree.left(), tree.right());
            const QList<FolderDiffItem> items = compareFolderTree({.roots = roots});
            QMap<QByteArray, Sides<int>> lone = loneContents(items);
            Progress silent;
            const QList<MovedFile> moved =
                findMovedFiles(roots, compareFolderTreeInShort({.roots = roots}), {}, silent);
            pairs += moved.size();
            for (const MovedFile &file : moved) {
                const QByteArray bytes = contentsOf(joinedPath(tree.left(), file.left));
                QCOMPARE(contentsOf(joinedPath(tree.right(), file.right)), bytes);
                --lone[bytes].left;
                --lone[bytes].right;
            }
            for (const Sides<int> &left : std::as_const(lone)) {
                QVERIFY(left.left >= 0 && left.right >= 0);
                QVERIFY(left.left == 0 || left.right == 0);
            }
        }
        QVERIFY(pairs > 20);
    }

    /// The name counts more than the time, and nothing moves where nothing is deleted.
    void replacesCopyAndDeletionOnly()
    {
        TestTree tree;
        tree.file(word("left/a/one"), "same", 1);
        tree.file(word("right/b/two"), "same", 1);
        tree.file(word("right/c/one"), "same", 2);
        const Sides<TreeFolder> roots = localFolders(tree.left(), tree.right());
        const QList<FolderDiffItem> items = compareFolderTree({.roots = roots});
        Progress silent;
        const QList<MovedFile> moved = findMovedFiles(roots, items, {}, silent);
        QCOMPARE(moved, (QList<MovedFile>{{word("a/one"), word("c/one")}}));
        QCOMPARE(countLikelyMoves(items), 1);
        const auto drawn = [&](SyncMode mode) {
            QStringList lines;
            for (const SyncPlanItem &item : withMoves(planSync(items, {mode}), moved))
                lines.append(QString::number(item.action) + item.name + u'<' + item.movedFrom);
            return lines.join(u' ');
        };
        QCOMPARE(drawn(SyncMode::LeftToRight), word("1a< 5a/one<c/one 3b< 3b/two< 3c<"));
        QCOMPARE(drawn(SyncMode::RightToLeft), word("4a< 2b< 2b/two< 2c< 6c/one<a/one"));
        QCOMPARE(drawn(SyncMode::Mirror), word("1a< 1a/one< 2b< 2b/two< 2c< 2c/one<"));
    }

    void findsNamesThatMeet()
    {
        QList<FolderDiffItem> items;
        for (const char *name :
             {"Dir/a", "Dir/A", "dir/a", "con.txt", "con1.txt", "end.", "\303\251", "e\314\201", "b"})
            items.append(leftOnly(name));
        items.append(items.last());
        std::swap(items.last().leftPath, items.last().rightPath);
        items.last().name = word("B");
        QStringList lines;
        for (const NameConflict &conflict : findNameConflicts(items, planSync(items, {SyncMode::LeftToRight})))
            lines.append(QString::number(int(conflict.kind)) + conflict.name);
        QCOMPARE(lines.join(u' '), QString::fromUtf8("0Dir/a 0Dir/A 2con.txt 2end. 1\303\251 1e\314\201 0b"));
    }

    void tellsWholeHours()
    {
        constexpr qint64 hour = 3'600'000;
        for (const qint64 apart : {hour, -hour, 2 * hour + 2'000, 26 * hour})
            QVERIFY2(areWholeHoursApart(5, 5 + apart), qPrintable(QString::number(apart)));
        for (const qint64 apart : {0LL, 2'000LL, hour / 2, hour - 2'001, 27 * hour})
            QVERIFY2(!areWholeHoursApart(5, 5 + apart), qPrintable(QString::number(apart)));
        TestTree tree;
        tree.file(word("left/f"), "12", 0);
        tree.file(word("right/f"), "21", 7200);
        FolderInput input{.roots = localFolders(tree.left(), tree.right())};
        QCOMPARE(countWholeHours(compareFolderTree(input)), 1);
        QCOMPARE(planSync(compareFolderTree(input), {SyncMode::UpdateNewer, true}).first().syncAction(),
                 SyncAction::Skip);
        input.ignoresHours = true;
        QCOMPARE(compareFolderTree(input).first().diffStatus(), FolderDiffStatus::Same);
    }
};

VELMORA_TEST(SyncMovesTest)
#include "sync_moves_test.moc"
