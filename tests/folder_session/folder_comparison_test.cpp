#include "folder/compare/folder_comparison.h"
#include "folder_engine/test_tree.h"
#include "support/test_main.h"
#include "vfs/local_folder.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;

namespace {

/// The entries of a tree with signs for their states, folders with a "/".
QStringList drawn(const FolderTree &tree)
{
    QStringList lines;
    for (qint32 i = 0; i < tree.size(); ++i) {
        lines.append(QStringLiteral("?.=<>!-").at(int(tree.state(i))) + tree.item(i).name +
                     (tree.item(i).isDir ? QStringLiteral("/") : QString()));
    }
    return lines;
}

struct Fixture {
    TestTree disk;
    FolderComparison comparison;

    [[nodiscard]] FolderSpec spec() const { return {localFolders(disk.left(), disk.right()), {}, {}, {}}; }

    void load(bool whole = false)
    {
        comparison.load(spec(), whole);
        wait();
    }

    void wait() { QTRY_VERIFY_WITH_TIMEOUT(!comparison.isRunning(), 60000); }

    [[nodiscard]] QStringList tree() const { return drawn(comparison.tree()); }

    void fill()
    {
        disk.file(QStringLiteral("left/a/x"), "one", 1);
        disk.file(QStringLiteral("right/a/x"), "two", 2);
        disk.file(QStringLiteral("left/b/deep/y"), "same");
        disk.file(QStringLiteral("right/b/deep/y"), "same");
        disk.file(QStringLiteral("left/only/z"), "z");
        disk.file(QStringLiteral("left/10"), "ten");
        disk.file(QStringLiteral("right/9"), "nine");
    }
    const QStringList filled = words("!a/|!a/x|=b/|=b/deep/|=b/deep/y|<only/|<only/z|>9|<10");
};

} // namespace

class FolderComparisonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fillsTheLevelsIn()
    {
        Fixture f;
        f.fill();
        QList<QStringList> seen;
        connect(&f.comparison, &FolderComparison::treeReplaced, this, [&] { seen.append(f.tree()); });
        QSignalSpy finished(&f.comparison, &FolderComparison::loadFinished);
        f.load();
        QCOMPARE(f.tree(), f.filled);
        QVERIFY(f.comparison.isWhole());
        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished.first().at(1).toBool(), false);
        // The names of the level were there before anything was compared.
        QCOMPARE(seen.first(), words(".a/|.b/|<only/|>9|<10"));
    }

    void aNewLoadReplacesTheOneBefore()
    {
        Fixture f;
        f.fill();
        QSignalSpy finished(&f.comparison, &FolderComparison::loadFinished);
        for (int i = 0; i <= 20; ++i)
            f.comparison.load(f.spec(), i % 2 == 0); // the last one of the whole tree
        f.wait();
        QCOMPARE(finished.size(), 1);
        QCOMPARE(f.tree(), f.filled);
    }

    void cancellingKeepsWhatIsThere()
    {
        Fixture f;
        f.fill();
        QSignalSpy finished(&f.comparison, &FolderComparison::loadFinished);
        connect(&f.comparison, &FolderComparison::treeReplaced, this, [&] { f.comparison.cancel(); });
        f.comparison.load(f.spec(), false);
        QTRY_COMPARE(finished.size(), 1);
        QCOMPARE(finished.first().at(1).toBool(), true);
        // All names of the level, nothing half done, nothing said to be scanning.
        QStringList names;
        for (qint32 i = 0; i < f.comparison.tree().size(); ++i) {
            names.append(f.comparison.tree().item(i).name);
            QVERIFY(f.comparison.tree().state(i) != RowState::Scanning);
        }
        QCOMPARE(names, words("a|b|only|9|10"));
        QCOMPARE(f.comparison.tree().state(0), RowState::Unknown);
        QVERIFY(!f.comparison.isWhole());

        // What is opened then is read, that folder alone.
        QSignalSpy read(&f.comparison, &FolderComparison::folderRead);
        f.comparison.setExpanded(0, true);
        QTRY_COMPARE(read.size(), 1);
        QCOMPARE(f.tree().first(2), words("!a/|!a/x"));
        QVERIFY(f.comparison.tree().node(0).expanded);
    }

    void touchedEntriesAreComparedAnew()
    {
        Fixture f;
        f.fill();
        f.load();
        f.disk.file(QStringLiteral("right/a/x"), "one");
        f.disk.file(QStringLiteral("right/10"), "ten");
        f.disk.file(QStringLiteral("left/b/deep/new"), "new");
        QVERIFY(QFile::remove(f.disk.path(QStringLiteral("right/9"))));
        QSignalSpy recompared(&f.comparison, &FolderComparison::recompared);
        f.comparison.recompare(words("a/x|10|9|b/deep/new|nothing/here"));
        QTRY_COMPARE(recompared.size(), 1);
        QCOMPARE(f.tree(), words("=a/|=a/x|!b/|!b/deep/|<b/deep/new|=b/deep/y|<only/|<only/z|=10"));
        // A folder that is now on both sides.
        f.disk.file(QStringLiteral("right/only/z"), "z");
        f.comparison.recompare(words("only/z|only"));
        QTRY_COMPARE(recompared.size(), 2);
        QVERIFY(f.tree().contains(QStringLiteral("=only/")));
        QVERIFY(f.tree().contains(QStringLiteral("=only/z")));
    }

    void filtersOfAMomentAgoAreTakenUpByTheRunThatIsUnderWay()
    {
        Fixture f;
        f.fill();
        FolderSpec spec = f.spec();
        spec.filters.excludedNames = {QStringLiteral("a")};
        f.comparison.load(f.spec(), false);
        f.comparison.refilter(spec);
        f.wait();
        QTRY_VERIFY(f.comparison.tree().node(f.comparison.tree().find(QStringLiteral("a"))).hidden);
    }

    void timesThatAreShiftedAreCounted()
    {
        Fixture f;
        for (const char *side : {"left", "right"}) {
            const QString folder = QLatin1String(side) + u'/';
            const bool right = side[0] == 'r';
            f.disk.file(folder + QStringLiteral("hour1"), "a", right ? 3600 : 0);
            f.disk.file(folder + QStringLiteral("sub/hour2"), "b", right ? 0 : 3600);
            f.disk.file(folder + QStringLiteral("fat"), "c", right ? 2 : 0);
            f.disk.file(folder + QStringLiteral("other"), "d", right ? 3601 : 0);
            f.disk.file(folder + QStringLiteral("changed"), right ? "e" : "f", right ? 3600 : 0);
        }
        f.load();
        QCOMPARE(f.comparison.shifts(), (TimeShifts{2, 1}));
        f.load(true);
        QCOMPARE(f.comparison.shifts(), (TimeShifts{2, 1}));
    }

    void unreadableFoldersAreNotSaidToBeEmpty()
    {
#ifdef Q_OS_UNIX
        Fixture f;
        f.fill();
        const QString locked = f.disk.path(QStringLiteral("right/b/deep"));
        QFile::setPermissions(locked, {});
        if (QDir(locked).isReadable())
            QSKIP("this user reads everything");
        f.load();
        const FolderTree &tree = f.comparison.tree();
        const qint32 deep = tree.find(QStringLiteral("b/deep"));
        QVERIFY(tree.node(deep).unreadable);
        QCOMPARE(tree.state(deep), RowState::Unknown);
        QCOMPARE(tree.state(deep + 1), RowState::Unknown);
        QCOMPARE(f.comparison.problems().size(), 1);
        QFile::setPermissions(locked, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
#endif
    }
};

VELMORA_TEST(FolderComparisonTest)
#include "folder_comparison_test.moc"
