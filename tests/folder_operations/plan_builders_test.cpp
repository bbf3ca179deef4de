#include "folder/engine/short_path.h"
#include "folder/operations/sync_run.h"
#include "folder_engine/memory_tree.h"
#include "folder_operations/operation_fixture.h"
#include "support/diff_items.h"
#include "support/test_main.h"

using namespace velmora;
using namespace velmora::test;

namespace {

/// The path as a local folder has it: on Windows with the current drive before it.
QString at(const QString &path)
{
    return path.isEmpty() ? path : localFolder(path).path;
}

PlanInput inputOf(const char *listing)
{
    PlanInput input;
    input.items = madeItems(listing);
    for (FolderDiffItem &item : input.items) {
        item.leftPath = at(item.leftPath);
        item.rightPath = at(item.rightPath);
    }
    input.roots = localFolders(word("/l"), word("/r"));
    return input;
}

/// Something of everything: new, old, newer, equal and nested on both sides.
PlanInput variety()
{
    return inputOf("!both/ 1 1|!both/newer 9 1|!both/older 1 9|=both/same 1 1|<new/|<new/deep/|<new/deep/file|>old/|"
                   ">old/file|!timeless 5 5");
}

} // namespace

class PlanBuildersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Where steps are made, where nothing may be written, and where a side could not be read.
    void plansTheSameFromShortPaths()
    {
        PlanInput readOnly = variety();
        readOnly.readOnly.right = true;
        PlanInput unread = variety();
        unread.problems.append({FolderProblem::Kind::UnreadableFolder, at(word("/l/old")), Side::Left});
        for (const PlanInput &full : {variety(), readOnly, unread}) {
            PlanInput inShort = full;
            for (FolderDiffItem &item : inShort.items) {
                shortenPath(item.leftPath, item.name, full.roots.left.path);
                shortenPath(item.rightPath, item.name, full.roots.right.path);
            }
            QVERIFY(inShort.items != full.items);
            const SyncActions actions = actionsOf(planSync(inShort.items, {}));
            const OperationPlan expected = planSyncRun(full, actions, DeleteManner::ForGood);
            const OperationPlan plan = planSyncRun(inShort, actions, DeleteManner::ForGood);
            QCOMPARE(plan.steps, expected.steps);
            QCOMPARE(plan.leftOut, expected.leftOut);
            QVERIFY(!plan.steps.isEmpty() || !plan.leftOut.isEmpty());
        }
    }

    void mirrorMakesIdentical()
    {
        const OperationPlan plan = planMirror(variety(), Side::Left, DeleteManner::ForGood);
        QCOMPARE(drawn(plan), lines("replace(0:both/newer,1:both/newer) replace(0:both/older,1:both/older) "
                                    "make(0:new,1:new) make(0:new/deep,1:new/deep) "
                                    "copy(0:new/deep/file,1:new/deep/file) replace(0:timeless,1:timeless) "
                                    "delete(1:old/file) delete(1:old)"));
        QCOMPARE(plan.steps.last().counterpart.get(), (Place{0, word("old")}));
        const OperationTotals totals = plan.totals();
        QCOMPARE(totals.writtenFiles, 1);
        QCOMPARE(totals.replacedFiles, 3);
        QCOMPARE(totals.replacedBytes, 3);
        QCOMPARE(totals.deletedFiles, 1);
        QCOMPARE(totals.deletedBytes, 2);
        QCOMPARE(totals.deletedFolders, 1);
        QCOMPARE(totals.madeFolders, 2);
        QVERIFY(!plan.sourceIsEmpty);

        QCOMPARE(drawn(planMirror(variety(), Side::Right, DeleteManner::ToRecycleBin)).mid(3),
                 lines("copy(1:old/file,0:old/file) replace(1:timeless,0:timeless) "
                       "recycle(0:new/deep/file) recycle(0:new/deep) recycle(0:new)"));
    }

    void mirrorFromNothingIsMarked()
    {
        const OperationPlan plan = planMirror(inputOf(">a|>b"), Side::Left, DeleteManner::ForGood);
        QVERIFY(plan.sourceIsEmpty);
        QCOMPARE(plan.steps.size(), 2);
    }

    void mirrorSparesWhatIsHidden()
    {
        PlanInput input = inputOf(">dir/|>dir/keep.log|>dir/other|>hidden/|>hidden/file|<left.log|!x.log 1 2");
        input.shows = [](const FolderDiffItem &entry) {
            return !entry.name.endsWith(QLatin1String(".log")) && entry.name != QLatin1String("hidden");
        };
        const OperationPlan plan = planMirror(input, Side::Left, DeleteManner::ForGood);
        QCOMPARE(drawn(plan), lines("delete(1:dir/other)"));
        QCOMPARE(plan.leftOut, (QList<LeftOutEntry>{{LeftOutReason::HoldsHiddenEntries, at(word("/r/dir")), {}}}));
    }

    void nothingIsTakenForMissingThatCouldNotBeRead()
    {
        PlanInput input = inputOf(">dir/ 1 1|>dir/file|>gone");
        input.problems = {{FolderProblem::Kind::UnreadableFolder, at(word("/l/dir"))}};
        const OperationPlan plan = planMirror(input, Side::Left, DeleteManner::ForGood);
        QCOMPARE(drawn(plan), lines("delete(1:gone)"));
        QCOMPARE(plan.leftOut.size(), 1);
        QCOMPARE(plan.leftOut[0].reason, LeftOutReason::NotReadable);
    }

    void updatesCopyNewAndNewer()
    {
        QCOMPARE(drawn(planUpdate(variety(), Side::Left)),
                 lines("replace(0:both/newer,1:both/newer) make(0:new,1:new) make(0:new/deep,1:new/deep) "
                       "copy(0:new/deep/file,1:new/deep/file)"));
        QCOMPARE(drawn(planUpdate(variety(), Side::Right)),
                 lines("replace(1:both/older,0:both/older) make(1:old,0:old) copy(1:old/file,0:old/file)"));

        const OperationPlan both = planUpdateBoth(variety());
        QCOMPARE(drawn(both), lines("replace(0:both/newer,1:both/newer) replace(1:both/older,0:both/older) "
                                    "make(0:new,1:new) make(0:new/deep,1:new/deep) "
                                    "copy(0:new/deep/file,1:new/deep/file) make(1:old,0:old) "
                                    "copy(1:old/file,0:old/file)"));
        QCOMPARE(both.leftOut.size(), 1);
        QCOMPARE(both.leftOut[0].reason, LeftOutReason::TimesAreEqual);

        PlanInput tolerant = variety();
        tolerant.toleranceSec = 8;
        QCOMPARE(planUpdate(tolerant, Side::Left).steps.size(), 3);
    }

    void aFileNeverReplacesAFolder()
    {
        const PlanInput input = inputOf("!x/ 1 2|<y");
        for (const OperationPlan &plan :
             {planMirror(input, Side::Left, DeleteManner::ForGood), planUpdate(input, Side::Left),
              planUpdateBoth(input), planCopyToOtherSide(input, {0, 1}, Side::Left)}) {
            QCOMPARE(drawn(plan), lines("copy(0:y,1:y)"));
            QCOMPARE(plan.leftOut.size(), 1);
            QCOMPARE(plan.leftOut[0].reason, LeftOutReason::FileAgainstFolder);
        }
    }

    void alignedNamesKeepTheTargetsOwn()
    {
        PlanInput input = inputOf("!docs/ 1 1|!docs/a.txt 2 1|<docs/new/|<docs/new/b");
        input.items[0].rightPath = at(word("/r/Documents"));
        input.items[1].rightPath = at(word("/r/Documents/A.TXT"));
        QCOMPARE(drawn(planMirror(input, Side::Left, DeleteManner::ForGood)),
                 lines("replace(0:docs/a.txt,1:Documents/A.TXT) make(0:docs/new,1:Documents/new) "
                       "copy(0:docs/new/b,1:Documents/new/b)"));
    }

    void selectionsAreFoldersWithTheirContents()
    {
        const PlanInput input = variety();
        QCOMPARE(drawn(planCopyToOtherSide(input, {0}, Side::Left)),
                 lines("replace(0:both/newer,1:both/newer) replace(0:both/older,1:both/older)"));
        // A selected file is copied though it is equal; folders that it needs are made.
        QCOMPARE(drawn(planCopyToOtherSide(input, {3, 6}, Side::Left)),
                 lines("replace(0:both/same,1:both/same) make(0:new,1:new) make(0:new/deep,1:new/deep) "
                       "copy(0:new/deep/file,1:new/deep/file)"));
        QCOMPARE(drawn(planMoveToOtherSide(input, {4}, Side::Left)),
                 lines("make(0:new,1:new) make(0:new/deep,1:new/deep) "
                       "move(0:new/deep/file,1:new/deep/file) delete(0:new/deep) delete(0:new)"));
        QCOMPARE(planCopyToOtherSide(input, {7}, Side::Left).leftOut[0].reason, LeftOutReason::NoPlaceOnThisSide);
    }

    void copiesToAnyPlace()
    {
        const PlanInput input = inputOf("<a/|<a/x|<b/|<b/x");
        QCOMPARE(drawn(planCopyTo(input, {0, 1}, Side::Left, word("/d"), IfPresent::LeaveOut)),
                 lines("make(0:a,1:a) copy(0:a/x,1:a/x)"));
        const OperationPlan clash = planCopyTo(input, {1, 3}, Side::Left, word("/d"), IfPresent::LeaveOut);
        QCOMPARE(drawn(clash), lines("copy(0:a/x,1:x)"));
        QCOMPARE(clash.leftOut[0].reason, LeftOutReason::NameTaken);
        const OperationPlan inside = planCopyTo(input, {0, 3}, Side::Left, word("/l/a/deep"), IfPresent::LeaveOut);
        QCOMPARE(drawn(inside), lines("copy(0:b/x,1:x)"));
        QCOMPARE(inside.leftOut[0].reason, LeftOutReason::IntoItself);
        QCOMPARE(drawn(planMoveTo(input, {2}, Side::Left, word("/d"), IfPresent::LeaveOut)),
                 lines("make(0:b,1:b) move(0:b/x,1:b/x) delete(0:b)"));
    }

    void refusesWhatCannotBeRight()
    {
        PlanInput input = variety();
        input.readOnly.right = true;
        QCOMPARE(planMirror(input, Side::Left, DeleteManner::ForGood).refusal, PlanRefusal::ReadOnlySide);
        QCOMPARE(planDelete(input, {0}, Side::Right, DeleteManner::ForGood, DeleteScope::ListedEntries).refusal,
                 PlanRefusal::ReadOnlySide);
        QCOMPARE(planMoveToOtherSide(input, {7}, Side::Right).refusal, PlanRefusal::ReadOnlySide);
        QCOMPARE(planMoveTo(input, {7}, Side::Right, word("/d"), IfPresent::LeaveOut).refusal,
                 PlanRefusal::ReadOnlySide);
        QVERIFY(drawn(planUpdateBoth(input)).filter(word("-> 1:")).isEmpty());

        for (const char *root : {"/l", "/l/inner", "/"}) {
            PlanInput overlapping = variety();
            overlapping.roots.right = localFolder(word(root));
            const OperationPlan plan = planMirror(overlapping, Side::Left, DeleteManner::ForGood);
            QCOMPARE(plan.refusal, PlanRefusal::OverlappingRoots);
            QVERIFY(plan.steps.isEmpty());
        }
        for (const char *name : {"", ".", "..", "a/b"})
            QCOMPARE(planRename(variety(), 1, Side::Left, word(name)).refusal, PlanRefusal::NameNotAllowed);
        QCOMPARE(planNewFolder(variety(), Side::Left, word("a/../../b")).refusal, PlanRefusal::NameNotAllowed);
    }

    void treesThatAreNoFoldersAreNeitherWrittenNorTakenForPaths()
    {
        const MemoryTree tree;
        PlanInput input = inputOf("<new|>old");
        input.roots.right = tree.at();
        const auto refusal = [](const OperationPlan &plan) {
            return plan.steps.isEmpty() ? plan.refusal : PlanRefusal::None;
        };
        QCOMPARE(refusal(planMirror(input, Side::Left, DeleteManner::ForGood)), PlanRefusal::ReadOnlySide);
        QCOMPARE(refusal(planMirror(input, Side::Right, DeleteManner::ForGood)), PlanRefusal::NoLocalFolder);
        QCOMPARE(refusal(planCopyToOtherSide(input, {1}, Side::Right)), PlanRefusal::NoLocalFolder);
        QCOMPARE(refusal(planCopyTo(input, {1}, Side::Right, word("/d"), IfPresent::LeaveOut)),
                 PlanRefusal::NoLocalFolder);
        const OperationPlan own = planDelete(input, {0}, Side::Left, DeleteManner::ForGood, DeleteScope::ListedEntries);
        QCOMPARE(drawn(own), lines("delete(0:new)"));
    }

    void deletionsAndNames()
    {
        const PlanInput input = variety();
        QCOMPARE(drawn(planDelete(input, {0, 7}, Side::Right, DeleteManner::ToRecycleBin, DeleteScope::ListedEntries)),
                 lines("recycle(1:old/file) recycle(1:old) recycle(1:both/same) recycle(1:both/older) "
                       "recycle(1:both/newer) recycle(1:both)"));
        const OperationPlan whole =
            planDelete(input, {7, 8}, Side::Right, DeleteManner::ForGood, DeleteScope::WholeFolder);
        QCOMPARE(drawn(whole), lines("delete(1:old)"));
        QVERIFY(whole.steps[0].wholeTree);
        QCOMPARE(drawn(planRename(input, 6, Side::Left, word("name"))), lines("move(0:new/deep/file,0:new/deep/name)"));
        QCOMPARE(drawn(planNewFolder(input, Side::Right, word("old/inner"))), lines("make(1:old/inner)"));
        const OperationPlan files =
            planDeleteFiles(word("/d"), {word("/d/a/b"), word("/e/c"), word("/d/../e/c")}, DeleteManner::ForGood);
        QCOMPARE(drawn(files), lines("delete(0:a/b)"));
        QCOMPARE(files.leftOut.size(), 2);
    }

    void actionsNeverDeleteAFolderOfBothSides()
    {
        const PlanInput input = inputOf(">both/ 1 1|>both/file");
        const OperationPlan plan = planActions(
            input, [](const FolderDiffItem &) { return EntryAction::DeleteRight; }, DeleteManner::ForGood);
        QCOMPARE(drawn(plan), lines("delete(1:both/file)"));
    }
};

VELMORA_TEST(PlanBuildersTest)
#include "plan_builders_test.moc"
