#include "folder/engine/duplicate_choice.h"
#include "folder/engine/duplicate_scan.h"
#include "folder/operations/duplicate_plan.h"
#include "folder_engine/memory_tree.h"
#include "folder_operations/operation_fixture.h"
#include "support/files.h"
#include "support/test_main.h"
#include "vfs/local_folder.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QSet>

#include <filesystem>
#include <random>

using namespace velmora;
using namespace velmora::test;

namespace {

DuplicateScan scanOf(const QList<DuplicateRoot> &roots, const CancelFlag &cancel = {})
{
    Progress silent;
    return scanDuplicates({roots, HiddenEntries::LeftOut, 0}, cancel, silent);
}

QSet<QStringList> groupsOf(const DuplicateScan &scan)
{
    QSet<QStringList> groups;
    for (const DuplicateGroup &group : scan.groups) {
        QStringList paths;
        for (const DuplicateCopy &copy : group.copies)
            paths.append(copy.path);
        paths.sort();
        groups.insert(paths);
    }
    return groups;
}

/// Equal size and equal MD5, found by reading everything.
QSet<QStringList> plainGroups(const QString &folder)
{
    QMap<QPair<qint64, QByteArray>, QStringList> found;
    for (QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        const QByteArray bytes = contentsOf(files.next());
        if (!bytes.isEmpty())
            found[{bytes.size(), QCryptographicHash::hash(bytes, QCryptographicHash::Md5)}].append(files.filePath());
    }
    QSet<QStringList> groups;
    for (QStringList &paths : found) {
        paths.sort();
        if (paths.size() > 1)
            groups.insert(paths);
    }
    return groups;
}

/// Bytes that differ from others of this size, if at all, in one byte somewhere.
QByteArray randomBytes(qint64 size, std::mt19937 &random)
{
    QByteArray bytes(size, 'x');
    if (random() % 3 != 0)
        bytes[qsizetype(std::array<qint64, 4>{0, size / 2, size - 1, 5000}[random() % 4] % size)] = char(random() % 3);
    return bytes;
}

/// The paths below `tree`, as words; of each group those that lead to the same file behind a "=".
QStringList toldOf(const OperationFixture &tree, const DuplicateScan &scan)
{
    QStringList told;
    for (const DuplicateGroup &group : scan.groups) {
        QStringList words;
        for (const DuplicateCopy &copy : group.copies) {
            QString text =
                copy.path + (copy.isReference ? word("!") : QString()) + (copy.isLink ? word("@") : QString());
            for (const QString &name : copy.otherNames)
                text += u'=' + name;
            words.append(text);
        }
        words.sort();
        told.append(words.join(u' ').remove(tree.path("")));
    }
    told.sort();
    return told;
}

} // namespace

class DuplicatesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsWhatSizesAndDigestsWould_data()
    {
        QTest::addColumn<QList<qint64>>("sizes");
        QTest::addColumn<int>("files");
        QTest::newRow("small") << QList<qint64>{0, 1, 2, 4096} << 200;
        QTest::newRow("several blocks, side by side") << QList<qint64>{1'500'000, 2'500'000} << 12;
        QTest::newRow("more than side by side") << QList<qint64>{150'000} << 60;
    }

    void findsWhatSizesAndDigestsWould()
    {
        QFETCH(QList<qint64>, sizes);
        QFETCH(int, files);
        for (unsigned seed = 0; seed < 3; ++seed) {
            std::mt19937 random(seed);
            OperationFixture tree;
            tree.make("left/a/ left/b/c/ left/.hidden/");
            for (int i = 0; i < files; ++i) {
                const char *const folder = std::array{"left/", "left/a/", "left/b/c/", "left/.hidden/"}[random() % 4];
                const qint64 size = sizes.at(qsizetype(random() % std::size_t(sizes.size())));
                QVERIFY(makeFile(tree.path(folder) + QString::number(i),
                                 size > 0 ? randomBytes(size, random) : QByteArray()));
            }
            const DuplicateScan scan = scanOf({{localFolder(tree.left()), false}});
            QCOMPARE(groupsOf(scan), plainGroups(tree.left()));
            QList<DuplicateGroup> groups = scan.groups;
            addDigests(groups, {});
            for (const DuplicateGroup &group : groups)
                QCOMPARE(group.digest,
                         QCryptographicHash::hash(contentsOf(group.copies.last().path), QCryptographicHash::Md5));
        }
    }

    /// Hard links, links, one folder in another, links in a circle, recycle bins, references.
    void tellsFilesOfSeveralNamesOnce()
    {
#ifndef Q_OS_UNIX
        QSKIP("links need a privilege here");
#endif
        OperationFixture tree;
        tree.make("left/a=11 left/b=11 left/c=22 left/in/d=22 left/in/.Trash-7/e=22 left/in/$Recycle.Bin/f=22 "
                  "left/alone=333 other/g=4444 left/h=4444");
        std::error_code failed;
        std::filesystem::create_hard_link(tree.path("left/a").toStdString(), tree.path("left/in/a2").toStdString(),
                                          failed);
        std::filesystem::create_hard_link(tree.path("left/alone").toStdString(), tree.path("left/alone2").toStdString(),
                                          failed);
        if (failed)
            QSKIP("no hard links here");
        tree.makeLink(word("left/to b"), word("b"));
        tree.makeLink(word("left/to g"), word("../other/g"));
        tree.makeLink(word("left/in/up"), word(".."));
        const DuplicateScan scan = scanOf({{localFolder(tree.path("left/in")), true},
                                           {localFolder(tree.left()), false},
                                           {localFolder(tree.left()), false}});
        QCOMPARE(toldOf(tree, scan), words("left/a!=left/in/a2 left/b=left/to b|left/c left/in/d!|left/h left/to g@"));
    }

    void tellsWholeFolders()
    {
        OperationFixture tree;
        tree.make("left/x/one/f=11 left/x/one/g/h=222 left/x/one/empty= left/y/one/f=11 left/y/one/g/h=222 "
                  "left/y/one/empty= left/y/more=5 left/z/g/h=222 left/w/f=11 left/w/g/h=222 left/w/other=7");
        const DuplicateScan scan = scanOf({{localFolder(tree.left()), false}});
        QCOMPARE(scan.folders.size(), 2);
        QCOMPARE(scan.folders.at(0), (DuplicateFolders{{tree.path("left/x/one"), tree.path("left/y/one")}, 3, 5}));
        QCOMPARE(scan.folders.at(1).paths.size(), 4); // two of them lie elsewhere than in those
    }

    void whatFailsIsLeftOutAndCancellingLeavesWhatIsTrue()
    {
        MemoryTree tree;
        for (int i = 0; i < 40; ++i)
            tree.addFile(QStringLiteral("/%1/%2").arg(i % 3).arg(i), QByteArray(200'000 + i % 5, char('a' + i % 2)));
        tree.addFile(word("/0/gone"), "same").opens = false;
        tree.addFile(word("/1/broken"), "same").failsAt = 2;
        tree.addFile(word("/2/x"), "same");
        tree.addFile(word("/2/y"), "same");
        tree.addFolder(word("/locked"));
        tree.setUnreadable(word("/locked"));
        const DuplicateScan whole = scanOf({{tree.at(), false}});
        QVERIFY(groupsOf(whole).contains(words("/2/x|/2/y")));
        QCOMPARE(whole.groups.size(), 11);
        QCOMPARE(whole.problems.size(), 3);
        const int operations = tree.operations();
        for (int stop = 1; stop < operations; stop += 13) {
            const CancelFlag cancel;
            int count = 0;
            const int before = tree.operations();
            tree.setWatcher([&](int number) {
                if (number - before == stop)
                    cancel.cancel();
                ++count;
            });
            const DuplicateScan part = scanOf({{tree.at(), false}}, cancel);
            QVERIFY(part.cancelled);
            for (const QStringList &group : groupsOf(part)) {
                const QSet<QString> members(group.begin(), group.end());
                const QSet<QStringList> all = groupsOf(whole);
                QVERIFY(std::any_of(all.begin(), all.end(), [&](const QStringList &full) {
                    return QSet<QString>(full.begin(), full.end()).contains(members);
                }));
            }
        }
    }

    void rulesNeverTickAll()
    {
        DuplicateGroup group;
        group.copies = {{word("/long/a"), 5}, {word("/b"), 1}, {word("/in/c"), 9}};
        QCOMPARE(extraCopies(group, KeepRule::Newest), (QList<qsizetype>{0, 1}));
        QCOMPARE(extraCopies(group, KeepRule::Oldest), (QList<qsizetype>{0, 2}));
        QCOMPARE(extraCopies(group, KeepRule::ShortestPath), (QList<qsizetype>{0, 2}));
        QCOMPARE(extraCopies(group, KeepRule::InFolders, words("/in|/long")), (QList<qsizetype>{1}));
        QCOMPARE(extraCopies(group, KeepRule::InFolders, words("/elsewhere|/i")), QList<qsizetype>());
        group.copies[0].isLink = true;
        group.copies[2].isReference = true;
        QCOMPARE(extraCopies(group, KeepRule::Oldest), (QList<qsizetype>{1}));
        group.copies[2].isReference = false;
        group.copies[2].isLink = true;
        QCOMPARE(extraCopies(group, KeepRule::Newest), QList<qsizetype>());
    }

    /// What happens between the scan and the deletion of b and c, of which a is the copy that stays.
    void deletesOnlyWhileTheOtherStays_data()
    {
        QTest::addColumn<std::function<void(OperationFixture &)>>("change");
        QTest::addColumn<QStringList>("left");
        using Change = std::function<void(OperationFixture &)>;
        const auto rewrite = [](const char *name, const char *bytes) -> Change {
            return [=](OperationFixture &tree) {
                const QDateTime time = tree.time(name);
                QVERIFY(makeFile(tree.path(name), bytes));
                QFile file(tree.path(name));
                QVERIFY(file.open(QIODevice::ReadWrite) && file.setFileTime(time, QFileDevice::FileModificationTime));
            };
        };
        QTest::newRow("nothing") << Change([](OperationFixture &) {}) << words("a=11|in/");
        QTest::newRow("the copy that stays has other bytes, its time is the same")
            << rewrite("left/a", "12") << words("a=12|b=11|in/|in/c=11");
        QTest::newRow("a copy that goes has") << rewrite("left/b", "12") << words("a=11|b=12|in/");
        QTest::newRow("the copy that stays is gone")
            << Change([](OperationFixture &tree) { tree.remove("left/a"); }) << words("b=11|in/|in/c=11");
        QTest::newRow("it is the same file by now") << Change([](OperationFixture &tree) {
            tree.remove("left/a");
            std::filesystem::create_hard_link(tree.path("left/b").toStdString(), tree.path("left/a").toStdString());
            tree.remove("left/in/c");
        }) << words("a=11|b=11|in/");
#ifdef Q_OS_UNIX
        QTest::newRow("it is a link by now") << Change([](OperationFixture &tree) {
            tree.remove("left/a");
            tree.makeLink(word("left/a"), word("b"));
        }) << words("a->b|b=11|in/|in/c=11");
#endif
        QTest::newRow("another time") << Change([](OperationFixture &tree) { tree.setTime("left/b", 99'999); })
                                      << words("a=11|b=11|in/");
    }

    void deletesOnlyWhileTheOtherStays()
    {
        QFETCH(std::function<void(OperationFixture &)>, change);
        QFETCH(QStringList, left);
        OperationFixture tree;
        tree.make("left/a=11 left/b=11 left/in/c=11");
        const DuplicateScan scan = scanOf({{localFolder(tree.left()), false}});
        QCOMPARE(scan.groups.size(), 1);
        QVERIFY(!keepsOne({scan.groups.first(), {0, 1, 2}}));
        const OperationPlan all =
            planDeleteCopies(scan.roots, {{scan.groups.first(), {0, 1, 2}}}, DeleteManner::ForGood);
        QCOMPARE(all.steps.size(), 0);
        const OperationPlan plan = planDeleteCopies(scan.roots, {{scan.groups.first(), {1, 2}}}, DeleteManner::ForGood);
        change(tree);
        const QStringList before = tree.picture("left");
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        (void)tree.execute(plan, journal);
        QCOMPARE(tree.picture("left"), left);
        if (left.size() < before.size()) {
            QVERIFY(tree.execute(journal.planUndo().plan, journal).isComplete());
            QCOMPARE(tree.picture("left"), before);
        }
    }
};

VELMORA_TEST(DuplicatesTest)

#include "duplicates_test.moc"
