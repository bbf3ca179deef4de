#include "folder/compare/folder_comparison.h"
#include "folder/compare/folder_rows_model.h"
#include "made_trees.h"
#include "support/test_main.h"

#include <QElapsedTimer>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr int entries = 200'000;

/// The shortest of some runs: what the work costs, whatever else the machine does.
template <typename Prepare, typename Work>
qint64 shortestMs(Prepare prepare, Work work)
{
    qint64 shortest = std::numeric_limits<qint64>::max();
    for (int round = 0; round < 5; ++round) {
        prepare();
        QElapsedTimer timer;
        timer.start();
        work();
        shortest = std::min(shortest, timer.elapsed());
    }
    return shortest;
}

} // namespace

/// What the interface thread does with a very large result, each in one go. The bound is that of a stall a person does
/// not notice, several times over: machines that run tests are slow and busy. benchmarks/folder_view measures.
class FolderViewSpeedTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void stepsOnTheInterfaceThreadAreShort()
    {
        constexpr qint64 bound = 250;
        FolderTree tree(largeResult(entries));
        QCOMPARE(tree.size(), entries);
        FolderViewLimits limits;
        limits.masks = QStringLiteral("*1*");
        const FolderFilter filter({}, {}, limits);
        const FolderTree::Verdicts verdicts = FolderTree::judge(tree.items(), filter, {});
        const auto nothing = [] {};

        QVERIFY(shortestMs(nothing, [&] { tree.setAllExpanded(true); }) < bound);
        QVERIFY(shortestMs(nothing, [&] { QCOMPARE(int(visibleRows(tree, RowsView::All).size()), entries); }) < bound);
        QVERIFY(shortestMs(nothing, [&] { QVERIFY(!visibleRows(tree, RowsView::Differences).empty()); }) < bound);
        QVERIFY(shortestMs(nothing, [&] {
                    tree.setVerdicts(verdicts);
                    tree.rollUp();
                }) < bound);
        const auto branch = std::make_shared<const FolderTree>(QList<FolderDiffItem>{tree.item(2)});
        const std::vector<FolderTree::Patch> patches{{tree.item(2).name, branch}};
        QVERIFY(shortestMs(nothing, [&] { QCOMPARE(int(tree.apply(patches).size()), entries); }) < bound);
    }
};

VELMORA_TEST(FolderViewSpeedTest)
#include "folder_view_speed_test.moc"
