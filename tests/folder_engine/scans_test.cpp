#include "core/progress.h"
#include "folder/engine/disk_usage_scan.h"
#include "folder/engine/duplicate_scan.h"
#include "folder/engine/folder_snapshot.h"
#include "folder/engine/usage_record.h"
#include "folder_engine/test_tree.h"
#include "platform/file_access.h"
#include "support/test_main.h"
#include "vfs/local_folder.h"

#include <QDir>

#include <string>

#ifdef Q_OS_LINUX
#include "support/ordinary_user.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace velmora;
using namespace velmora::test;

#ifdef Q_OS_LINUX
namespace {

/// What each of the three scans says of a folder: what it counted, and below it what could not be read.
QStringList toldOf(const QString &folder, Progress &progress)
{
    QStringList told;
    const auto add = [&](const char *scan, qint64 count, QStringList unread) {
        for (QString &path : unread)
            path.remove(folder);
        told.append(QStringLiteral("%1 %2 %3").arg(QLatin1String(scan)).arg(count).arg(unread.join(u' ')).trimmed());
    };
    const auto paths = [](const QList<FolderProblem> &problems) {
        QStringList list;
        for (const FolderProblem &problem : problems)
            list.append(problem.path);
        return list;
    };
    const DuplicateScan copies =
        scanDuplicates({{{localFolder(folder), false}}, HiddenEntries::LeftOut, 0}, {}, progress);
    qint64 involved = 0;
    for (const DuplicateGroup &group : copies.groups)
        involved += group.copies.size();
    add("copies", involved, paths(copies.problems));
    const FolderSnapshotScan snapshot =
        scanFolderSnapshot(localFolder(folder), FolderSnapshotDigests::Sha256, {}, progress);
    qint64 digests = 0;
    for (const FolderSnapshotEntry &entry : snapshot.snapshot.entries)
        digests += entry.digest.isEmpty() ? 0 : 1;
    add("digests", digests, paths(snapshot.problems));
    const DiskUsage usage = scanDiskUsage({folder, 0, true, false}, {}, progress);
    add("files", usage.tree.root().files, usage.unreadable);
    return told;
}

QStringList toldOf(const QString &folder)
{
    Progress silent;
    return toldOf(folder, silent);
}

} // namespace
#endif

/// What duplicates, snapshots and usage have to survive in common.
class ScansTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
#ifdef Q_OS_LINUX
    void tellWhatMayNotBeRead()
    {
        TestTree disk;
        for (const char *name : {"left/a", "left/b", "left/closed/c", "left/secret"})
            disk.file(word(name), "same");
        QVERIFY(QFile::setPermissions(disk.path({}), QFile::Permissions(0x5755)));
        QCOMPARE(::chmod(nativeName(disk.path(word("left/closed"))).c_str(), 0), 0);
        QCOMPARE(::chmod(nativeName(disk.path(word("left/secret"))).c_str(), 0), 0);
        QStringList told;
        {
            const OrdinaryUser user;
            told = toldOf(disk.left());
        }
        QCOMPARE(told, words("copies 2 /closed /secret|digests 2 /closed /secret|files 3 /closed"));
        QCOMPARE(::chmod(nativeName(disk.path(word("left/closed"))).c_str(), 0700), 0);
        QCOMPARE(::chmod(nativeName(disk.path(word("left/secret"))).c_str(), 0600), 0);
        QCOMPARE(toldOf(disk.left()), words("copies 4|digests 4|files 4"));
    }

    void goOnceThroughWhatLinksLeadTo()
    {
        TestTree disk;
        disk.file(word("left/in/a"), "same");
        disk.file(word("left/b"), "same");
        disk.link(word("left/in/up"), word(".."));
        disk.link(word("left/self"), word("self"));
        QCOMPARE(::mkfifo(nativeName(disk.path(word("left/pipe"))).c_str(), 0600), 0);
        QCOMPARE(toldOf(disk.left()), words("copies 2|digests 2|files 2"));
    }

    void keepNamesThatAreNoText()
    {
        TestTree disk;
        for (const char *name : {"caf\xE9", "caf\xC3\xA9", "\xFF\xFE"}) {
            const std::string path = nativeName(disk.left()) + '/' + name;
            QCOMPARE(::mkdir(path.c_str(), 0700), 0);
            const int file = ::open((path + "/\x80").c_str(), O_WRONLY | O_CREAT, 0600);
            QCOMPARE(::write(file, "same", 4), 4);
            ::close(file);
        }
        QCOMPARE(toldOf(disk.left()), words("copies 3|digests 3|files 3"));

        Progress silent;
        const UsageTree usage = scanDiskUsage({disk.left(), 0, true, false}, {}, silent).tree;
        const FolderSnapshot taken =
            scanFolderSnapshot(localFolder(disk.left()), FolderSnapshotDigests::None, {}, silent).snapshot;
        const QString file = disk.path(word("taken.kvsnapshot"));
        QVERIFY(saveFolderSnapshot(file, taken, {}).ok());
        QCOMPARE(loadFolderSnapshot(file, {}, silent).snapshot.entries, taken.entries);
        const UsageRecord record = loadUsageRecord(file, {}, silent);
        QVERIFY(record.ok());
        for (const qint64 growth : usageGrowth(usage, record.tree))
            QCOMPARE(growth, 0);
        disk.removeHostile();
    }
#endif

    void goOnWhereFoldersVanish()
    {
        TestTree disk;
        for (int number = 0; number < 60; ++number)
            disk.file(QStringLiteral("left/gone%1/f").arg(number), "same");
        // What the walk is about to read is taken away from under it.
        int gone = 0;
        const QString going = disk.left() + QStringLiteral("/gone");
        Progress progress(
            [&](const ProgressState &state) {
                if (state.item.startsWith(going) && QDir(state.item).removeRecursively())
                    ++gone;
            },
            std::chrono::milliseconds(0));
        const DiskUsage usage = scanDiskUsage({disk.left(), 0, true, false}, {}, progress);
        QVERIFY(gone > 0);
        QCOMPARE(usage.unreadable.size(), gone);
        QCOMPARE(usage.tree.root().files, 60 - gone);

        disk.file(word("left/gone/f"), "same");
        gone = 0;
        const FolderSnapshotScan snapshot =
            scanFolderSnapshot(localFolder(disk.left()), FolderSnapshotDigests::None, {}, progress);
        QCOMPARE(snapshot.problems.size(), gone);
        QVERIFY(gone > 0);
    }

    void readEarlierScans()
    {
        const auto isRead = [](const char *json) { return usageFromJson(json).ok(); };
        const UsageRecord record = usageFromJson(
            R"({"folder":"/d","depth":2,"files":true,"hidden":true,"nodes":[{"name":"d","depth":0,"folder":true,"size":5},)"
            R"({"name":"in","depth":1,"folder":true,"size":3},{"name":"a","depth":2,"size":3},{"name":"b","depth":1,"size":2}]})");
        QVERIFY(record.ok() && record.listsFiles && record.withHidden);
        QCOMPARE(record.maxDepth, 2);
        QCOMPARE(record.tree.path(2), word("/d/in/a"));
        QCOMPARE(record.tree.node(1).end, 3);
        QVERIFY(isRead(R"({"depth":0,"nodes":[{"name":"d","depth":0,"folder":true,"size":5}]})"));
        QVERIFY(!isRead(R"({"depth":0,"nodes":[]})"));
        QVERIFY(!isRead(R"({"depth":0,"nodes":[{"name":"d","depth":0,"size":-1}]})"));
        QVERIFY(!isRead(R"({"depth":0,"nodes":[{"name":"d","depth":1,"size":1}]})"));
        QVERIFY(!isRead(R"({"depth":0,"nodes":[{"name":"d","depth":0,"size":1},{"name":"e","depth":1,"size":1}]})"));
        QVERIFY(!isRead(R"({"depth":0,"nodes":[{"name":"d","depth":0,"size":1e300}]})"));
        QVERIFY(!isRead("[") && !isRead(""));
    }
};

VELMORA_TEST(ScansTest)
#include "scans_test.moc"
