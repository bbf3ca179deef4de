#include "core/crc32.h"
#include "core/path_names.h"
#include "folder/engine/folder_jobs.h"
#include "folder_engine/memory_tree.h"
#include "folder_engine/test_tree.h"
#include "support/diff_items.h"
#include "support/test_main.h"

#include <QFile>
#include <QRandomGenerator>

using namespace velmora;
using namespace velmora::test;

namespace {

#ifdef Q_OS_WIN // where names do not hide
constexpr QChar hidingSign = u'_';
#else
constexpr QChar hidingSign = u'.';
#endif

/// The same files and folders on disk and in memory.
struct TwinTrees {
    TestTree disk;
    Sides<MemoryTree> memory;

    void file(Side side, const QString &name, const QByteArray &bytes, qint64 seconds)
    {
        disk.file((side == Side::Left ? word("left") : word("right")) + name, bytes, seconds);
        memory[side].addFile(name, bytes, TestTree::moment(seconds).toMSecsSinceEpoch());
    }

    /// Few names, contents and times, so that everything meets.
    void fill(QRandomGenerator &random)
    {
        for (const Side side : bothSides) {
            for (int i = 0; i < 40; ++i) {
                const QString folder = words("/d1|/d2|/*d|/d1/e|/*d/e").value(random.bounded(6));
                const QString name = folder + word(random.bounded(4) == 0 ? "/*f" : "/f");
                file(side, QString(name).replace(u'*', hidingSign) + QString::number(random.bounded(6)),
                     QByteArray::number(random.bounded(2)), random.bounded(3));
            }
        }
    }
};

/// What does not tell of the place of the trees. Times and sizes of folders are those of the file system, unless they
/// are rolled up.
QStringList withoutPlaces(const QList<FolderDiffItem> &items)
{
    QStringList lines;
    for (const FolderDiffItem &item : items) {
        QString line = QStringLiteral("%1 %2 %3%4").arg(item.status).arg(item.name).arg(item.isDir).arg(item.isUnread);
        for (const Side side : bothSides) {
            line += pathOn(item, side).isEmpty() ? u'-' : u'+';
            if (!item.isDir)
                line += QString::number(sizeOn(item, side)) + timeOn(item, side).toString(Qt::ISODateWithMs);
        }
        lines.append(line);
    }
    return lines;
}

} // namespace

class TreeSourceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aTreeInMemoryComparesLikeTheSameOnDisk()
    {
        QRandomGenerator random(7);
        for (int round = 0; round < 12; ++round) {
            TwinTrees twins;
            twins.fill(random);
            const FolderInput onDisk = between(twins.disk.left(), twins.disk.right(), CompareMethod(round % 3));
            FolderInput mixed = onDisk;
            mixed.roots.right = twins.memory.right.at();
            FolderInput inMemory = mixed;
            inMemory.roots.left = twins.memory.left.at();
            for (FolderInput input : {mixed, inMemory}) {
                for (const HiddenEntries hidden : {HiddenEntries::LeftOut, HiddenEntries::Listed}) {
                    FolderInput local = onDisk;
                    local.hidden = input.hidden = hidden;
                    QList<FolderDiffItem> items = compareFolderTree(input);
                    QList<FolderDiffItem> expected = compareFolderTree(local);
                    QCOMPARE(withoutPlaces(items), withoutPlaces(expected));
                    readUnread(input, items);
                    readUnread(local, expected);
                    QCOMPARE(withoutPlaces(items), withoutPlaces(expected));
                    QCOMPARE(withoutPlaces(compareFolderLevel(input)), withoutPlaces(compareFolderLevel(local)));
                    QCOMPARE(withoutPlaces(listFolderStructure(input, true)),
                             withoutPlaces(listFolderStructure(local, true)));
                    QCOMPARE(countFolderContents(input.roots.right, {}, {}, hidden),
                             countFolderContents(local.roots.right, {}, {}, hidden));
                }
            }
            // The jobs of a session, level by level.
            Progress progress([](const ProgressState &) {});
            const auto filled = [&progress](const FolderSpec &spec) {
                FolderTree tree = compareTopLevel(spec, {}, {}, progress).tree;
                QList<BranchTask> tasks;
                for (const FolderDiffItem &item : tree.items())
                    tasks.append(
                        {item.name,
                         {joinedPath(spec.roots.left.path, item.name), joinedPath(spec.roots.right.path, item.name)}});
                tree.apply(compareBranches(spec, tasks, std::chrono::minutes(1), {}, progress).patches);
                return withoutPlaces(tree.items());
            };
            QCOMPARE(filled({inMemory.roots, {}, {}, {}}), filled({onDisk.roots, {}, {}, {}}));
        }
    }

    void whatSourcesKnowOfContentsDecidesWithoutReading()
    {
        using enum ContentIdentity::Algorithm;
        using enum CompareMethod;
        struct Case {
            CompareMethod method;
            ContentIdentity::Algorithm left;
            ContentIdentity::Algorithm right;
            bool areEqual;
            bool isRead;
        };
        for (const Case &known :
             {Case{Rules, GitBlobSha1, GitBlobSha1, true, false}, Case{Rules, GitBlobSha1, GitBlobSha1, false, false},
              Case{Rules, GitBlobSha1, GitBlobSha256, true, true}, Case{Rules, Crc32, Crc32, true, true},
              Case{Rules, Crc32, Crc32, false, false}, Case{Crc, Crc32, Crc32, true, false},
              Case{Crc, Crc32, Crc32, false, false}, Case{Crc, GitBlobSha1, GitBlobSha1, true, false},
              Case{Crc, GitBlobSha1, GitBlobSha1, false, true}, Case{Binary, GitBlobSha1, GitBlobSha1, true, false},
              Case{Binary, GitBlobSha1, GitBlobSha1, false, true}, Case{Binary, Crc32, Crc32, true, true},
              Case{Binary, Crc32, Crc32, false, true}}) {
            Sides<MemoryTree> trees;
            // Contents that differ where the sources say they are the same, so that an answer shows whose it is.
            trees.left.addFile(word("/f"), "one", 1).identity = ContentIdentity{known.left, "1"};
            trees.right.addFile(word("/f"), known.areEqual ? "two" : "one", 2).identity =
                ContentIdentity{known.right, known.areEqual ? "1" : "2"};
            const auto items =
                compareFolderTree({.roots = {trees.left.at(), trees.right.at()}, .method = known.method});
            QCOMPARE(trees.left.bytesRead() > 0, known.isRead);
            QCOMPARE(items.first().diffStatus() == FolderDiffStatus::Same, known.areEqual != known.isRead);
        }
    }

    void aFileThatEndsInAFailureIsToldOnItsSide()
    {
        TwinTrees twins;
        for (const Side side : bothSides)
            twins.file(side, word("/d/f"), QByteArray(400'000, 'x'), side == Side::Left ? 1 : 2);
        twins.memory.right.addFile(word("/d/f"), QByteArray(400'000, 'x'), 9000).failsAt = 300'000;
        FolderSpec spec{{localFolder(twins.disk.left()), twins.memory.right.at()}, {}, {}, {}};
        QList<FolderProblem> problems;
        QCOMPARE(drawn(compareFolderTree(spec.input(), {}, {nullptr, &problems})).last(), word("!d/f 400000 400000"));
        const QList<FolderProblem> told{{FolderProblem::Kind::UnreadableFile, word("/d/f"), Side::Right}};
        QCOMPARE(problems, told);
        Progress progress([](const ProgressState &) {});
        const BranchTask task{word("d/f"), {twins.disk.left() + word("/d/f"), word("/d/f")}};
        QCOMPARE(compareBranches(spec, {task}, std::chrono::minutes(1), {}, progress).problems, told);
        // One that cannot even be opened is told, too, when it alone is compared anew.
        twins.memory.right.addFile(word("/d/f"), QByteArray(400'000, 'x'), 9000).opens = false;
        QCOMPARE(compareBranches(spec, {task}, std::chrono::minutes(1), {}, progress).problems, told);
    }

    void laysFilesOut()
    {
        TestTree disk;
        disk.file(word("left/f"), "here");
        const TreeFolder local = localFolder(disk.left());
        QCOMPARE(local.source->layOut(disk.left() + word("/f"), disk.right(), {}).path, disk.left() + word("/f"));

        MemoryTree tree;
        const QByteArray bytes(600'000, 'x');
        tree.addFile(word("/d/f.txt"), bytes);
        tree.addFile(word("/d/broken"), bytes).failsAt = 500'000;
        const LaidOutFile one = tree.layOut(word("/d/f.txt"), disk.right(), {});
        const LaidOutFile other = tree.layOut(word("/d/f.txt"), disk.right(), {});
        QVERIFY(one.path.startsWith(disk.right() + u'/') && one.path.endsWith(QLatin1String("/f.txt")));
        QVERIFY(one.path != other.path);
        QFile copy(one.path);
        QVERIFY(copy.open(QIODevice::ReadOnly));
        QCOMPARE(copy.readAll(), bytes);

        const QStringList before = QDir(disk.right()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        const CancelFlag cancelled;
        cancelled.cancel();
        QVERIFY(!tree.layOut(word("/d/f.txt"), disk.right(), cancelled).ok());
        // Names that lead elsewhere on some system are no names of files here.
        for (const char *name : {"broken", "..", "a\\b", "c:d", "dot.", "nul\n", ""}) {
            if (!tree.describe(word("/d/") + word(name), HiddenEntries::Listed))
                tree.addFile(word("/d/") + word(name), bytes);
            QVERIFY2(!tree.layOut(word("/d/") + word(name), disk.right(), {}).ok(), name);
        }
        QCOMPARE(QDir(disk.right()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), before);
    }
};

VELMORA_TEST(TreeSourceTest)
#include "tree_source_test.moc"
