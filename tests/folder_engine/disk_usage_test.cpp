#include "core/progress.h"
#include "folder/engine/disk_usage_scan.h"
#include "folder_engine/test_tree.h"
#include "support/test_main.h"

#include <QDir>
#include <QDirIterator>
#include <QRandomGenerator>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

using namespace velmora;
using namespace velmora::test;

namespace {

DiskUsage scanned(const TestTree &disk, int depth = 0, bool files = true)
{
    Progress progress;
    return scanDiskUsage({disk.left(), depth, files, false}, {}, progress);
}

/// The tree as lines: blanks for its depth, name, size, files and folders.
QString drawn(const UsageTree &tree)
{
    QStringList lines;
    for (qint32 i = 0; i < tree.size(); ++i) {
        const UsageTree::Node &node = tree.node(i);
        lines.append(QString(node.depth, u' ') + tree.name(i).toString() +
                     QStringLiteral(" %1 %2 %3").arg(node.size).arg(node.files).arg(node.folders));
    }
    return lines.join(u'|');
}

} // namespace

class DiskUsageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void depthLimitsWhatCounts()
    {
        TestTree disk;
        disk.file(word("left/a"), "12345");
        disk.file(word("left/.hidden"), "12345");
        disk.file(word("left/one/b,c"), "1234567");
        disk.file(word("left/one/two/d"), "123");
        disk.folder(word("left/empty"));
        QCOMPARE(drawn(scanned(disk).tree),
                 word("left 15 3 3| one 10 2 1|  b,c 7 0 0|  two 3 1 0|   d 3 0 0| a 5 0 0| empty 0 0 0"));
        QCOMPARE(drawn(scanned(disk, 1).tree), word("left 12 2 2| one 7 1 0|  b,c 7 0 0| a 5 0 0| empty 0 0 0"));
        QCOMPARE(drawn(scanned(disk, 0, false).tree), word("left 15 3 3| one 10 2 1|  two 3 1 0| empty 0 0 0"));
        const UsageTree tree = scanned(disk).tree;
        for (qint32 node = 0; node < tree.size(); ++node)
            QCOMPARE(tree.find(tree.path(node)), node);
        QCOMPARE(tree.find(disk.path(word("left/one/none"))), -1);
        QCOMPARE(scanned(disk).largest.first().path, disk.path(word("left/one/b,c")));
    }

    void sharesAreShownAsPeopleReadThem()
    {
        QCOMPARE(shareText(5.25), word("5.25"));
        QCOMPARE(shareText(37.5), word("37.5"));
        QCOMPARE(shareText(10), word("10.0"));
        QCOMPARE(shareText(0), word("0.00"));
    }

    void totalsAgreeWithThePlainForm()
    {
        QRandomGenerator random(5);
        TestTree disk;
        QStringList folders{word("left")};
        for (int i = 0; i < 60; ++i)
            folders.append(folders.at(random.bounded(folders.size())) + QStringLiteral("/f%1").arg(i));
        for (const QString &folder : folders)
            disk.folder(folder);
        for (int i = 0; i < 300; ++i)
            disk.file(folders.at(random.bounded(folders.size())) + QStringLiteral("/%1").arg(i),
                      QByteArray(random.bounded(99), 'x'));
        const UsageTree tree = scanned(disk).tree;
        QCOMPARE(tree.size(), 361);
        for (qint32 i = 0; i < tree.size(); ++i) {
            qint64 size = 0;
            QDirIterator files(tree.path(i), QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext())
                size += QFileInfo(files.next()).size();
            if (tree.node(i).isFolder)
                QCOMPARE(tree.node(i).size, size);
            const qint32 next = tree.node(i).end;
            if (next < tree.size() && tree.node(next).parent == tree.node(i).parent)
                QVERIFY(tree.node(next).size <= tree.node(i).size);
        }
    }

    void growthIsToldByPath()
    {
        TestTree disk;
        disk.file(word("left/a/x"), "1");
        disk.file(word("left/b/x"), "12");
        const UsageTree before = scanned(disk).tree;
        disk.file(word("left/a/x"), "123456");
        disk.file(word("left/b/y"), "123");
        const UsageTree now = scanned(disk).tree;
        const std::vector<qint64> growth = usageGrowth(now, before);
        const auto grown = [&](const char *path) { return growth[std::size_t(now.find(disk.path(word(path))))]; };
        QCOMPARE(grown("left"), 8);
        QCOMPARE(grown("left/a/x"), 5);
        QCOMPARE(grown("left/b/x"), 0);
        QCOMPARE(grown("left/b/y"), 3);
    }

    void cancelledAndMissingOnesSaySo()
    {
        TestTree disk;
        CancelFlag cancel;
        cancel.cancel();
        Progress progress;
        QVERIFY(scanDiskUsage({disk.left(), 0, true, false}, cancel, progress).cancelled);
        const DiskUsage none = scanDiskUsage({disk.path(word("none")), 0, true, false}, {}, progress);
        QCOMPARE(none.unreadable, QStringList(disk.path(word("none"))));
        QCOMPARE(none.tree.size(), 1);
    }

#ifdef Q_OS_UNIX
    void linksAreToldAndSharedRoomCountsOnce()
    {
        TestTree disk;
        disk.file(word("left/a/file"), QByteArray(100'000, 'x'));
        disk.folder(word("left/b"));
        const QByteArray from = disk.path(word("left/a/file")).toLocal8Bit();
        QCOMPARE(::link(from.constData(), disk.path(word("left/b/file")).toLocal8Bit().constData()), 0);
        disk.link(word("left/a/up"), word(".."));
        for (const bool files : {true, false}) {
            const DiskUsage usage = scanned(disk, 0, files);
            QCOMPARE(usage.links, 1);
            QCOMPARE(usage.sharedFiles, 1);
            QCOMPARE(usage.tree.root().size, 200'000);
            QVERIFY(usage.tree.root().allocated >= 100'000 && usage.tree.root().allocated < 200'000);
        }
    }
#endif
};

VELMORA_TEST(DiskUsageTest)
#include "disk_usage_test.moc"
