#include "folder_operations/operation_fixture.h"
#include "folder_operations/scripted_layer.h"
#include "support/test_main.h"

#include <QRegularExpression>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace velmora;
using namespace velmora::test;
using Reason = LeftOutReason;

class PlanSurveyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void seesExactly()
    {
        OperationFixture tree;
        tree.make("left/a=1 left/dir/b=22 right/c=333");
        const OperationPlan plan = tree.mirror();
        QCOMPARE(drawn(plan), lines("copy(0:a,1:a) make(0:dir,1:dir) copy(0:dir/b,1:dir/b) delete(1:c)"));
        QVERIFY(plan.isSurveyed);
        QCOMPARE(plan.steps[2].fromSeen.state, SeenEntry::State::Exact);
        QCOMPARE(plan.steps[2].fromSeen.size, 2);
        QVERIFY(plan.steps[2].fromSeen.identity.has_value());
        QCOMPARE(plan.totals().writtenBytes, 3);
        QCOMPARE(plan.totals().deletedBytes, 3);
    }

    void leavesOutWhatHasChanged()
    {
        OperationFixture tree;
        tree.make(
            "left/changed=1 left/gone=1 right/lost=0 left/lost=1 left/taken=1 left/dir/x=1 right/old=1 right/back=1");
        const PlanInput input = tree.input();
        tree.make("left/changed=2 right/taken=2 right/dir=file left/back=2");
        tree.remove("left/gone");
        tree.remove("right/lost");
        const OperationPlan plan = tree.surveyed(planMirror(input, Side::Left, DeleteManner::ForGood));
        QCOMPARE(drawn(plan), lines("delete(1:old)"));
        QCOMPARE(tree.leftOut(plan),
                 (QStringList{
                     said(Reason::ChangedSinceCompared, "left/changed"), said(Reason::TargetExists, "right/dir"),
                     said(Reason::ChangedSinceCompared, "left/gone"), said(Reason::ChangedSinceCompared, "right/lost"),
                     said(Reason::TargetExists, "right/taken"), said(Reason::ChangedSinceCompared, "left/back")}));
    }

    void foldersThatHoldMoreStay()
    {
        OperationFixture tree;
        tree.make("right/dir/inner/listed=1 right/dir/inner/.hidden=1 right/dir/x=1 right/full/y=1");
        OperationPlan plan = tree.mirror();
        QCOMPARE(drawn(plan), lines("delete(1:full/y) delete(1:full) delete(1:dir/x) delete(1:dir/inner/listed)"));
        QCOMPARE(tree.leftOut(plan), (QStringList{said(Reason::HoldsUnlistedEntries, "right/dir/inner"),
                                                  said(Reason::HoldsUnlistedEntries, "right/dir")}));
        // To the bin a folder goes as one, but not with what the plan does not name.
        plan = tree.mirror(DeleteManner::ToRecycleBin);
        QCOMPARE(drawn(plan), lines("recycle(1:full) recycle(1:dir/x) recycle(1:dir/inner/listed)"));
        QCOMPARE(plan.totals().deletedFiles, 3);
    }

    void wholeFoldersTakeHiddenEntriesAlong()
    {
        OperationFixture tree;
        tree.make("right/dir/inner/.hidden=12 right/dir/x=1");
        const PlanInput input = tree.input();
        const OperationPlan recycled =
            tree.surveyed(planDelete(input, {0}, Side::Right, DeleteManner::ToRecycleBin, DeleteScope::WholeFolder));
        QCOMPARE(drawn(recycled), lines("recycle(1:dir)"));
        QCOMPARE(recycled.totals().deletedFiles, 2);
        QCOMPARE(recycled.totals().deletedUnlisted, 1);
        QCOMPARE(recycled.totals().deletedBytes, 3);
        const OperationPlan deleted =
            tree.surveyed(planDelete(input, {0}, Side::Right, DeleteManner::ForGood, DeleteScope::WholeFolder));
        QCOMPARE(deleted.steps.size(), 4);
        QCOMPARE(drawn(deleted).last(), QStringLiteral("delete(1:dir)"));
        QCOMPARE(deleted.totals().deletedFolders, 2);
        QCOMPARE(deleted.totals().deletedUnlisted, 1);
    }

    void anUnknownPlaceIsLookedAt()
    {
        OperationFixture tree;
        tree.make("left/dir/a=1 left/dir/b=1 left/c=1 other/dir/a=old other/c/= other/c/d=1");
        const PlanInput input = tree.input();
        const PlanSelection all{tree.indexOf(input, "dir"), tree.indexOf(input, "c")};
        const QString other = tree.path("other");
        const OperationPlan spared = tree.surveyed(planCopyTo(input, all, Side::Left, other, IfPresent::LeaveOut));
        QCOMPARE(drawn(spared), lines("copy(0:dir/b,1:dir/b)"));
        QCOMPARE(tree.leftOut(spared),
                 (QStringList{said(Reason::TargetExists, "other/c"), said(Reason::TargetExists, "other/dir/a")}));
        const OperationPlan replaced = tree.surveyed(planCopyTo(input, all, Side::Left, other, IfPresent::Replace));
        QCOMPARE(drawn(replaced), lines("replace(0:dir/a,1:dir/a) copy(0:dir/b,1:dir/b)"));
        // Where it already is, an entry cannot be copied to.
        const OperationPlan same = tree.surveyed(planCopyTo(input, all, Side::Left, tree.left(), IfPresent::Replace));
        QVERIFY(same.steps.isEmpty());
    }

    /// What a failed call leaves unknown is named, and not taken for missing, empty or unchanged.
    void whatCannotBeLookedAtIsLeftAlone()
    {
        OperationFixture tree;
        tree.make("right/a=old left/a=new left/dir/b=2 left/dir/deep/.c=3 right/gone/d=4 right/gone/deep/.e=5 "
                  "left/late=1");
        const PlanInput input = tree.input();
        tree.make("right/late=2");
        const qsizetype dir = tree.indexOf(input, "dir");
        const qsizetype gone = tree.indexOf(input, "gone");
        for (const OperationPlan &made :
             {planMirror(input, Side::Left, DeleteManner::ForGood), planMoveToOtherSide(input, {dir}, Side::Left),
              planDelete(input, {gone}, Side::Right, DeleteManner::ForGood, DeleteScope::WholeFolder),
              planDelete(input, {gone}, Side::Right, DeleteManner::ToRecycleBin, DeleteScope::WholeFolder),
              planCopyTo(input, {dir}, Side::Left, tree.path("other"), IfPresent::LeaveOut)}) {
            const OperationPlan whole = tree.surveyed(made);
            for (int failing = 1;; ++failing) {
                ScriptedLayer layer([failing](int number, QLatin1String) {
                    return number == failing ? FileError{FileErrorKind::Denied, {}} : FileError();
                });
                Progress progress;
                const OperationPlan plan = surveyPlan(made, layer, {}, progress);
                if (layer.calls() < failing)
                    break;
                QStringList steps = drawn(plan);
                const bool isWhole = steps == drawn(whole) && plan.totals() == whole.totals();
                steps.removeIf([all = drawn(whole)](const QString &step) { return all.contains(step); });
                QCOMPARE(steps, QStringList());
                QVERIFY(isWhole || plan.refusal != PlanRefusal::None || plan.leftOut.size() > whole.leftOut.size());
            }
        }
    }

    void missingRootsRefuse()
    {
        OperationFixture tree;
        tree.make("right/a=1");
        PlanInput input = tree.input();
        tree.remove("left");
        const OperationPlan plan = tree.surveyed(planMirror(input, Side::Left, DeleteManner::ForGood));
        QCOMPARE(plan.refusal, PlanRefusal::RootMissing);
        QVERIFY(plan.steps.isEmpty());
        // What needs one side only does not mind.
        const OperationPlan one =
            tree.surveyed(planDelete(input, {0}, Side::Right, DeleteManner::ForGood, DeleteScope::ListedEntries));
        QCOMPARE(one.steps.size(), 1);
    }

#ifdef Q_OS_UNIX
    void overlapByALinkRefuses()
    {
        OperationFixture tree;
        tree.make("left/a=1 left/inner/b=1");
        tree.remove("right");
        tree.makeLink(QStringLiteral("right"), tree.path("left/inner"));
        const OperationPlan plan = tree.mirror();
        QCOMPARE(plan.refusal, PlanRefusal::OverlappingRoots);
    }

    /// Hidden entries and broken links stayed behind without a word, and went with the source.
    void aFolderThatGoesOverWholeLeavesNothingBehind()
    {
        OperationFixture tree;
        tree.make("left/dir/a=1 left/dir/.git/config=2 left/dir/.git/empty/ left/dir/broken->nowhere left/dir/skip.o=3 "
                  "left/dir/.skip.o=4 left/only/.x=5 left/both/.stays=6 left/both/b=7 right/both/b=8");
        QCOMPARE(::mkfifo(QFile::encodeName(tree.path("left/dir/pipe")).constData(), 0600), 0);
        PlanInput input = tree.input();
        input.shows = [](const FolderDiffItem &item) { return !item.name.endsWith(QLatin1String(".o")); };
        const PlanSelection dir{tree.indexOf(input, "dir")};
        const QString other = tree.path("other");
        const QStringList named{said(Reason::HiddenByFilter, "left/dir/.skip.o"),
                                said(Reason::UnsupportedKind, "left/dir/pipe"),
                                said(Reason::HiddenByFilter, "left/dir/skip.o")};
        const QStringList moved =
            lines("make(0:dir,1:dir) move(0:dir/.git/config,1:dir/.git/config) move(0:dir/a,1:dir/a) "
                  "move(0:dir/broken,1:dir/broken) make(0:dir/.git,1:dir/.git) "
                  "make(0:dir/.git/empty,1:dir/.git/empty) delete(0:dir/.git/empty) delete(0:dir/.git)");
        const QStringList copied = QStringList(moved.first(6)).replaceInStrings(lines("move")[0], lines("copy")[0]);
        const QStringList mirrored = copied + lines("make(0:only,1:only) copy(0:only/.x,1:only/.x)");
        const auto judge = [&](const OperationPlan &plan, QStringList steps, std::optional<Reason> stays = {}) {
            const OperationPlan surveyed = tree.surveyed(plan);
            QStringList drawing = drawn(surveyed).filter(QRegularExpression(QStringLiteral("dir|only")));
            drawing.sort();
            steps.sort();
            QCOMPARE(drawing, steps);
            QStringList out = tree.leftOut(surveyed);
            out.sort();
            QStringList all = named;
            if (stays) // what stays keeps its folder
                all.append(said(*stays, "left/dir"));
            all.sort();
            QCOMPARE(out.filter(QStringLiteral("dir")), all);
        };
        judge(planCopyToOtherSide(input, dir, Side::Left), copied);
        judge(planMirror(input, Side::Left, DeleteManner::ForGood), mirrored);
        judge(planUpdate(input, Side::Left), mirrored);
        judge(planUpdateBoth(input), mirrored);
        judge(planCopyTo(input, dir, Side::Left, other, IfPresent::LeaveOut), copied);
        judge(planMoveToOtherSide(input, dir, Side::Left), moved, Reason::HoldsHiddenEntries);
        judge(planMoveTo(input, dir, Side::Left, other, IfPresent::LeaveOut), moved, Reason::HoldsUnlistedEntries);
        // One entry of it is not the folder, even where nothing else is listed, and a rule that spares one spares it.
        QCOMPARE(drawn(tree.surveyed(planCopyToOtherSide(input, {tree.indexOf(input, "dir/a")}, Side::Left))),
                 lines("make(0:dir,1:dir) copy(0:dir/a,1:dir/a)"));
        input.shows = {};
        const auto sparing = [](const FolderDiffItem &item) {
            return item.name == QLatin1String("dir/a") || !item.name.startsWith(QLatin1String("dir"))
                       ? EntryAction::Nothing
                       : EntryAction::CopyToRight;
        };
        QCOMPARE(drawn(tree.surveyed(planActions(input, sparing, DeleteManner::ForGood))),
                 lines("make(0:dir,1:dir) copy(0:dir/skip.o,1:dir/skip.o)"));
    }

    void linksStandForThemselves()
    {
        OperationFixture tree;
        tree.make("other/target/file=precious left/new->../other/target right/old->../other/target "
                  "left/mixed->../other/target right/mixed/file=different");
        const OperationPlan plan = tree.mirror();
        QCOMPARE(drawn(plan), lines("copy(0:new,1:new) delete(1:old)"));
        QCOMPARE(plan.steps[0].fromSeen.kind, NodeKind::Link);
        QCOMPARE(plan.steps[1].fromSeen.kind, NodeKind::Link);
        // What is behind the link cannot be copied as if it were in the folder.
        QCOMPARE(tree.leftOut(plan), QStringList(said(Reason::BelowLink, "left/mixed")));
        QCOMPARE(tree.problems(tree.execute(plan)), QStringList());
        QCOMPARE(tree.picture("right"), lines("mixed/ mixed/file=different new->../other/target"));
        QCOMPARE(tree.picture("other"), lines("target/ target/file=precious"));
    }
#endif
};

VELMORA_TEST(PlanSurveyTest)
#include "plan_survey_test.moc"
