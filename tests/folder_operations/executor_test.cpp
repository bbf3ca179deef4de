#include "folder_operations/operation_fixture.h"
#include "folder_operations/scripted_layer.h"
#include "support/test_main.h"

#include <cstdlib>

using namespace velmora;
using namespace velmora::test;

namespace {

QStringList lines(std::initializer_list<const char *> list)
{
    QStringList result;
    for (const char *line : list)
        result.append(QString::fromLatin1(line));
    return result;
}

QString said(OperationErrorCode code, const char *path)
{
    return QStringLiteral("%1 %2").arg(int(code)).arg(QLatin1String(path));
}

/// Lets everything pass, and calls `action` before the `number`th call of `name`.
ScriptedLayer::Script before(const char *name, int number, std::function<void()> action)
{
    return [name = QByteArray(name), number, action = std::move(action), seen = 0](int, QLatin1String call) mutable {
        if (call == QLatin1String(name.constData()) && ++seen == number)
            action();
        return FileError();
    };
}

} // namespace

class ExecutorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void mirrors_data()
    {
        QTest::addColumn<DeleteManner>("manner");
        QTest::newRow("for good") << DeleteManner::ForGood;
        QTest::newRow("to the bin") << DeleteManner::ToRecycleBin;
    }
    void mirrors()
    {
        QFETCH(DeleteManner, manner);
        OperationFixture tree;
        if (manner == DeleteManner::ToRecycleBin && !tree.hasRecycleBin())
            QSKIP("no recycle bin here");
        tree.make(lines({"left/a=new", "left/same=1", "left/dir/deep/b=b", "left/empty/", "right/a=old", "right/same=1",
                         "right/gone/x=x", "right/gone/deep/y=y"}));
        const ExecutionReport report = tree.execute(planMirror(tree.input(), PlanSide::Left, manner));
        QCOMPARE(problems(report, tree.path({})), QStringList());
        QCOMPARE(tree.picture(QStringLiteral("right")), tree.picture(QStringLiteral("left")));
        QCOMPARE(report.done, report.plan.totals());
        QCOMPARE(report.done.writtenFiles, 1);
        QCOMPARE(report.done.deletedFiles, 2);
        QVERIFY(std::all_of(report.ends.begin(), report.ends.end(), [](StepEnd end) { return end == StepEnd::Done; }));
        QVERIFY(planMirror(tree.input(), PlanSide::Left, manner).steps.isEmpty());
#ifdef Q_OS_UNIX
        const QStringList bin = tree.picture(QStringLiteral("data/Trash"));
        QCOMPARE(bin.contains(QStringLiteral("files/gone/deep/y=y")), manner == DeleteManner::ToRecycleBin);
#endif
    }

    void copiesKeepTimesAndPermissions()
    {
        OperationFixture tree;
        tree.make(lines({"left/dir/script=#!", "left/dir/private=1"}));
        tree.setTime(QStringLiteral("left/dir/script"), -1'000'000);
        const auto executable = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup;
        QVERIFY(QFile::setPermissions(tree.path(QStringLiteral("left/dir/script")), executable));
        QVERIFY(QFile::setPermissions(tree.path(QStringLiteral("left/dir/private")), QFile::ReadOwner));
        QVERIFY(QFile::setPermissions(tree.path(QStringLiteral("left/dir")),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        const QDateTime folderTime = tree.time(QStringLiteral("left/dir"));
        const ExecutionReport report =
            tree.execute(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood), {true, nullptr});
        QCOMPARE(problems(report, tree.path({})), QStringList());
        for (const char *name : {"/dir", "/dir/script", "/dir/private"}) {
            const QFileInfo left(tree.left() + QLatin1String(name));
            const QFileInfo right(tree.right() + QLatin1String(name));
            QCOMPARE(right.permissions(), left.permissions());
            QCOMPARE(right.lastModified(), left.lastModified());
        }
        QCOMPARE(tree.time(QStringLiteral("right/dir")), folderTime);
    }

    void changesSincePlanningAreSpared()
    {
        OperationFixture tree;
        tree.make(lines({"left/source=1", "left/target=1", "right/target=2", "left/appears=1", "right/deleted=1",
                         "right/returns=1", "left/fine=1", "right/bin/x=1"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ToRecycleBin));
        QCOMPARE(plan.steps.size(), 7);
        tree.make(lines({"left/source=changed", "right/target=changed", "right/appears=appeared",
                         "right/deleted=changed", "left/returns=back", "right/bin/y=late"}));
        const QStringList wanted = tree.picture() + lines({"right/fine=1"});
        const ExecutionReport report = tree.execute(plan);
        QStringList found = tree.picture();
        QStringList sorted = wanted;
        found.sort();
        sorted.sort();
        QCOMPARE(found, sorted);
        QCOMPARE(report.done.writtenFiles, 1);
        QVERIFY(problems(report, tree.path({}).chopped(1))
                    .contains(said(OperationErrorCode::SourceChanged, "left/source")));
        QVERIFY(problems(report, tree.path({}).chopped(1))
                    .contains(said(OperationErrorCode::TargetAppeared, "right/appears")));
        QVERIFY(problems(report, tree.path({}).chopped(1))
                    .contains(said(OperationErrorCode::TargetChanged, "right/target")));
        QCOMPARE(report.ends.count(StepEnd::Skipped), 6);
    }

    void aSourceThatChangesWhileItIsReadIsNotTaken()
    {
        OperationFixture tree;
        tree.make(lines({"left/a=first", "right/a=old"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        ScriptedLayer changing(before("source.state", 2, [&] { tree.make(lines({"left/a=second"})); }));
        const ExecutionReport report = tree.execute(plan, {}, changing);
        QCOMPARE(problems(report, tree.left()), QStringList(said(OperationErrorCode::SourceChanged, "a")));
        QCOMPARE(tree.picture(QStringLiteral("right")), lines({"a=old"}));
    }

    void aTargetThatChangesMeanwhileIsNotReplaced()
    {
        OperationFixture tree;
        tree.make(lines({"left/a=new", "left/b=new", "right/a=old"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        ScriptedLayer changing(before("sink.keepAttributes", 1, [&] {
            tree.make(lines({"right/a=mine", "right/b=mine"}));
        }));
        const ExecutionReport report = tree.execute(plan, {}, changing);
        QCOMPARE(problems(report, tree.right()), (QStringList{said(OperationErrorCode::TargetChanged, "a"),
                                                              said(OperationErrorCode::TargetAppeared, "b")}));
        QCOMPARE(tree.picture(QStringLiteral("right")), lines({"a=mine", "b=mine"}));
    }

    void aTargetThatChangesWhileItIsKeptIsNotReplaced()
    {
        OperationFixture tree;
        tree.make(lines({"right/a=old", "left/a=new"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        ScriptedLayer changing(before("makeHardLink", 1, [&] { tree.make(lines({"right/a=mine"})); }));
        OperationJournal journal(changing, tree.journalFolder());
        const ExecutionReport report = tree.execute(plan, {false, &journal}, changing);
        QCOMPARE(problems(report, tree.right()), QStringList(said(OperationErrorCode::TargetChanged, "a")));
        QCOMPARE(tree.picture(QStringLiteral("right")), lines({"a=mine"}));
    }

    /// Neither size alone nor size and time make a file the one that was seen.
    void anotherFileIsNotTakenForTheSame()
    {
        OperationFixture tree;
        tree.make(lines({"left/edited=1", "left/swapped=1", "right/edited=22", "right/gone=1"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        tree.make(lines({"left/edited=2", "left/other=2", "right/other=2"}));
        for (const char *name : {"left/swapped", "right/gone"}) {
            const QString file = QString::fromLatin1(name);
            const qint64 seconds = QDateTime(QDate(2024, 2, 29), QTime(12, 0), Qt::UTC).secsTo(tree.time(file));
            const QString other = file.section(u'/', 0, 0) + QStringLiteral("/other");
            tree.setTime(other, seconds);
            tree.remove(file);
            QVERIFY(QFile::rename(tree.path(other), tree.path(file)));
        }
        const ExecutionReport report = tree.execute(plan);
        QCOMPARE(report.ends.count(StepEnd::Skipped), 3);
        QCOMPARE(tree.picture(QStringLiteral("right")), lines({"edited=22", "gone=2"}));
    }

    void whatIsBackOnTheOtherSideIsNotDeleted()
    {
        OperationFixture tree;
        tree.make(lines({"right/dir/a=1", "left/dir/", "right/b=1"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        tree.make(lines({"left/dir/a=back"}));
        const ExecutionReport report = tree.execute(plan);
        QCOMPARE(problems(report, tree.left()), QStringList(said(OperationErrorCode::CounterpartAppeared, "dir/a")));
        QCOMPARE(tree.picture(QStringLiteral("right")), lines({"dir/", "dir/a=1"}));
    }

    void aFolderInWhichAFileChangedIsNotRecycled()
    {
        OperationFixture tree;
        tree.make(lines({"right/dir/deep/a=1"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ToRecycleBin));
        QCOMPARE(plan.steps.size(), 1);
        tree.make(lines({"right/dir/deep/a=2"}));
        const ExecutionReport report = tree.execute(plan);
        QCOMPARE(problems(report, tree.right()), QStringList(said(OperationErrorCode::SourceChanged, "dir")));
    }

    void copiesReachTheDiskBeforeAnythingGoes()
    {
        OperationFixture tree;
        tree.make(lines({"left/a=1", "left/b=new", "right/b=old", "right/c=1"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        QStringList calls;
        ScriptedLayer watched([&](int, QLatin1String call) {
            if (call == QLatin1String("move") || call == QLatin1String("sink.flush") ||
                call == QLatin1String("settle") || call == QLatin1String("removeFile"))
                calls.append(call);
            return FileError();
        });
        QVERIFY(tree.execute(plan, {}, watched).isComplete());
        QCOMPARE(calls, FileLayer::native().canSettle()
                            ? lines({"move", "sink.flush", "move", "settle", "removeFile"})
                            : lines({"sink.flush", "move", "sink.flush", "move", "removeFile"}));
    }

    void nothingGoesWhenTheDiskCannotConfirm()
    {
        if (!FileLayer::native().canSettle())
            QSKIP("every file is confirmed by itself here");
        OperationFixture tree;
        tree.make(lines({"left/a=1", "left/b=1", "right/c=1"}));
        const PlanInput input = tree.input();
        const auto otherVolumeWithoutEnd = [isCopied = false](int, QLatin1String call) mutable {
            if (call == QLatin1String("settle"))
                return FileError{FileErrorKind::Other, {}};
            isCopied = isCopied || call == QLatin1String("sink.copyFrom");
            const bool crosses = call == QLatin1String("move") && !std::exchange(isCopied, false);
            return crosses ? FileError{FileErrorKind::OtherVolume, {}} : FileError();
        };
        ScriptedLayer moving(otherVolumeWithoutEnd);
        const ExecutionReport moved = tree.execute(planMoveToOtherSide(input, {0}, PlanSide::Left), {}, moving);
        QCOMPARE(moved.problems.last().code, OperationErrorCode::SourceStays);
        QVERIFY(tree.picture().contains(QStringLiteral("left/a=1")));
        ScriptedLayer mirroring(otherVolumeWithoutEnd);
        const ExecutionReport mirrored =
            tree.execute(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood), {}, mirroring);
        QCOMPARE(mirrored.problems.last().code, OperationErrorCode::TroubleInBranch);
        QVERIFY(tree.picture().contains(QStringLiteral("right/c=1")));
    }

    void nothingIsDeletedInATroubledBranch()
    {
        OperationFixture tree;
        tree.make(lines({"left/dir/a=1", "right/dir/old=1", "right/dir/deep/older=1", "right/other/free=1",
                         "left/other/", "left/dir/deep/"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        tree.make(lines({"right/dir/a=in the way"}));
        const ExecutionReport report = tree.execute(plan);
        QCOMPARE(problems(report, tree.right()),
                 (QStringList{said(OperationErrorCode::TargetAppeared, "dir/a"),
                              said(OperationErrorCode::TroubleInBranch, "dir/old"),
                              said(OperationErrorCode::TroubleInBranch, "dir/deep/older")}));
        QCOMPARE(tree.picture(QStringLiteral("right")),
                 lines({"dir/", "dir/a=in the way", "dir/deep/", "dir/deep/older=1", "dir/old=1", "other/"}));
    }

    void movesLeaveNothingBehindButWhatFailed()
    {
        OperationFixture tree;
        tree.make(lines({"left/dir/a=a", "left/dir/sub/b=b", "left/ok/c=c", "right/ok/c=old", "left/dir/.hidden=h"}));
        const PlanInput input = tree.input();
        const OperationPlan plan = tree.surveyed(planMoveToOtherSide(
            input, {tree.indexOf(input, QStringLiteral("dir")), tree.indexOf(input, QStringLiteral("ok"))},
            PlanSide::Left));
        tree.make(lines({"right/dir/a=in the way"}));
        const ExecutionReport report = tree.execute(plan);
        QCOMPARE(tree.picture(),
                 lines({"left/dir/", "left/dir/.hidden=h", "left/dir/a=a", "right/dir/", "right/dir/a=in the way",
                        "right/dir/sub/", "right/dir/sub/b=b", "right/ok/", "right/ok/c=c"}));
        QVERIFY(!report.isComplete());
    }

    void movesBetweenVolumesCopyFirst()
    {
        OperationFixture tree;
        tree.make(lines({"left/dir/a=a", "left/dir/b=b", "right/dir/b=old"}));
        const PlanInput input = tree.input();
        const OperationPlan plan = tree.surveyed(planMoveToOtherSide(input, {0}, PlanSide::Left));
        // Only the renaming of a finished copy stays within a volume.
        const auto otherVolume = [isCopied = false](int, QLatin1String call) mutable {
            if (call == QLatin1String("sink.copyFrom"))
                isCopied = true;
            if (call != QLatin1String("move") || std::exchange(isCopied, false))
                return FileError();
            return FileError{FileErrorKind::OtherVolume, {}};
        };
        ScriptedLayer layer(otherVolume);
        const ExecutionReport report = tree.execute(plan, {}, layer);
        QCOMPARE(problems(report, tree.path({})), QStringList());
        QCOMPARE(tree.picture(), lines({"right/dir/", "right/dir/a=a", "right/dir/b=b"}));
        QCOMPARE(report.done.writtenFiles, 1);
        QCOMPARE(report.done.replacedFiles, 1);
    }

    void renamesAndNewFolders()
    {
        OperationFixture tree;
        tree.make(lines({"left/dir/a=a", "left/dir/.hidden=h", "left/taken=1"}));
        const PlanInput input = tree.input();
        const ExecutionReport renamed = tree.execute(planRename(input, 0, PlanSide::Left, QStringLiteral("named")));
        QCOMPARE(leftOut(renamed.plan, tree.left()), QStringList());
        QCOMPARE(problems(renamed, tree.left()), QStringList());
        const ExecutionReport taken = tree.execute(
            planRename(input, tree.indexOf(input, QStringLiteral("taken")), PlanSide::Left, QStringLiteral("named")));
        QCOMPARE(taken.plan.leftOut.size(), 1);
        QVERIFY(tree.execute(planNewFolder(input, PlanSide::Left, QStringLiteral("named/new"))).isComplete());
        QCOMPARE(tree.execute(planNewFolder(input, PlanSide::Left, QStringLiteral("named/new"))).plan.leftOut.size(),
                 1);
        QCOMPARE(tree.picture(),
                 lines({"left/named/", "left/named/.hidden=h", "left/named/a=a", "left/named/new/", "left/taken=1"}));
    }

    void verifyingFindsABadCopy()
    {
        OperationFixture tree;
        tree.make(lines({"left/a=1234"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        // The second opening of a file is that of the copy: by then somebody has written into it.
        const auto spoil = [&] {
            const QStringList names = QDir(tree.right()).entryList(QDir::Files | QDir::Hidden);
            QCOMPARE(names.size(), 1);
            QFile copy(tree.right() + u'/' + names[0]);
            QVERIFY(copy.open(QIODevice::ReadWrite));
            QVERIFY(copy.write("X", 1) == 1);
        };
        ScriptedLayer layer(before("openFile", 3, spoil));
        const ExecutionReport report = tree.execute(plan, {true, nullptr}, layer);
        QCOMPARE(problems(report, tree.right()), QStringList(said(OperationErrorCode::NotTheSame, "a")));
        QCOMPARE(tree.picture(QStringLiteral("right")), QStringList());
    }

    void cancelsBetweenFilesAndInThem()
    {
        OperationFixture tree;
        tree.make(lines({"left/1=1", "left/3=3"}));
        QFile big(tree.left() + QStringLiteral("/2"));
        QVERIFY(big.open(QIODevice::WriteOnly));
        const QByteArray block(1 << 20, 'x');
        for (int i = 0; i < 64; ++i)
            QCOMPARE(big.write(block), block.size());
        big.close();
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        const CancelFlag cancel;
        Progress progress(
            [&](const ProgressState &state) {
                if (state.done > 3 * bytesForEachStep) // the second file is under way
                    cancel.cancel();
            },
            std::chrono::milliseconds(0));
        const ExecutionReport report = executePlan(plan, FileLayer::native(), {}, cancel, progress);
#ifdef Q_OS_WIN
        if (!report.cancelled)
            QSKIP("this system's copying does not tell how far it has come");
#endif
        QVERIFY(report.cancelled);
        QCOMPARE(report.ends, (QList<StepEnd>{StepEnd::Done, StepEnd::Failed, StepEnd::NotReached}));
        QCOMPARE(tree.picture(QStringLiteral("right")), lines({"1=1"}));
    }

    void progressCountsToItsTotal()
    {
        OperationFixture tree;
        tree.make(lines({"left/a=1", "left/b=22", "right/c=1"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        QList<ProgressState> states;
        Progress progress([&](const ProgressState &state) { states.append(state); }, std::chrono::milliseconds(0));
        QVERIFY(executePlan(plan, FileLayer::native(), {}, {}, progress).isComplete());
        QVERIFY(std::is_sorted(states.begin(), states.end(),
                               [](const auto &one, const auto &two) { return one.done < two.done; }));
        QCOMPARE(states.last().total, 3 * bytesForEachStep + 3);
        QCOMPARE(states.last().done, 2 * bytesForEachStep + 3);
        QCOMPARE(states.last().item, tree.right() + QStringLiteral("/c"));
    }

    void aRootThatIsAnotherOneNowIsLeftAlone()
    {
        OperationFixture tree;
        tree.make(lines({"left/a=1", "right/old=1"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        QVERIFY(QDir().rename(tree.right(), tree.path(QStringLiteral("away"))));
        tree.make(lines({"right/old=1"}));
        const ExecutionReport report = tree.execute(plan);
        QCOMPARE(report.problems.size(), 2);
        QCOMPARE(report.problems[0].code, OperationErrorCode::RootMissing);
        QCOMPARE(tree.picture(QStringLiteral("right")), lines({"old=1"}));
    }

    void aSourceThatIsGoneDeletesNothing()
    {
        OperationFixture tree;
        tree.make(lines({"left/a=1", "right/a=1", "right/old=1"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        QCOMPARE(plan.steps.size(), 1);
        QVERIFY(QDir().rename(tree.left(), tree.path(QStringLiteral("away")))); // a volume that was unplugged
        const ExecutionReport report = tree.execute(plan);
        QCOMPARE(report.ends, QList<StepEnd>{StepEnd::Skipped});
        QCOMPARE(tree.picture(QStringLiteral("right")), lines({"a=1", "old=1"}));
    }

#ifdef Q_OS_UNIX
    void aCopyThatIsTooShortIsNotKept()
    {
        OperationFixture tree;
        tree.make(lines({"left/a=1234"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        const auto cut = [&] {
            const QStringList names = QDir(tree.right()).entryList(QDir::Files | QDir::Hidden);
            QVERIFY(names.size() == 1 && QFile::resize(tree.right() + u'/' + names[0], 3));
        };
        ScriptedLayer layer(before("sink.state", 1, cut));
        const ExecutionReport report = tree.execute(plan, {}, layer);
        QCOMPARE(problems(report, tree.right()), QStringList(said(OperationErrorCode::NotTheSame, "a")));
        QCOMPARE(tree.picture(QStringLiteral("right")), QStringList());
    }

    void linksAreCopiedAndDeletedAsLinks()
    {
        OperationFixture tree;
        tree.make(lines({"other/target/file=precious", "left/folder->../other/target", "left/broken->nowhere",
                         "left/file->../other/target/file", "right/old->../other/target", "right/file=plain"}));
        const ExecutionReport report = tree.execute(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        QCOMPARE(problems(report, tree.path({})), QStringList());
        QCOMPARE(tree.picture(QStringLiteral("other")), lines({"target/", "target/file=precious"}));
        QVERIFY(QFileInfo(tree.right() + QStringLiteral("/folder")).isSymbolicLink());
        QVERIFY(QFileInfo(tree.right() + QStringLiteral("/file")).isSymbolicLink());
        QVERIFY(!QFileInfo(tree.right() + QStringLiteral("/old")).isSymbolicLink());
    }

    void aFolderThatBecomesALinkLeadsNowhere_data()
    {
        QTest::addColumn<QString>("call");
        for (const char *call : {"", "openFile", "createFile", "sink.copyFrom", "move"})
            QTest::newRow(call) << QString::fromLatin1(call);
    }
    void aFolderThatBecomesALinkLeadsNowhere()
    {
        QFETCH(QString, call);
        OperationFixture tree;
        tree.make(lines({"left/dir/a=new", "left/dir/b=new", "right/dir/a=old", "right/dir/gone=old", "other/a=outside",
                         "other/gone=outside"}));
        const OperationPlan plan = tree.surveyed(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        const QStringList outside = tree.picture(QStringLiteral("other"));
        const auto swap = [&] {
            QVERIFY(QDir().rename(tree.path(QStringLiteral("right/dir")), tree.path(QStringLiteral("right/dir2"))));
            tree.make(lines({"right/dir->../other"}));
        };
        if (call.isEmpty())
            swap();
        ScriptedLayer layer(before(call.toLatin1().constData(), 1, swap)); // no call has the empty name
        const ExecutionReport report = tree.execute(plan, {}, layer);
        QCOMPARE(tree.picture(QStringLiteral("other")), outside);
        QVERIFY(!report.isComplete());
        QVERIFY(problems(report, tree.right()).contains(said(OperationErrorCode::LeadsOutside, "dir/b")));
        QVERIFY(tree.picture(QStringLiteral("right")).contains(QStringLiteral("dir2/gone=old")));
    }

    void namesThatAreNoText()
    {
        OperationFixture tree;
        const auto shell = [&](const QByteArray &command) {
            const QByteArray line = "cd '" + tree.path({}).toUtf8() + "' && " + command;
            QCOMPARE(std::system(line.constData()), 0);
        };
        shell("mkdir left/$(printf 'd\\377') && printf 1 > left/$(printf 'd\\377/f\\200') && "
              "printf 2 > right/$(printf 'o\\300') && printf 3 > right/d && printf 4 > left/d");
        const PlanInput input = tree.input();
        QCOMPARE(input.items.size(), 4);
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        const ExecutionReport report =
            tree.execute(planMirror(input, PlanSide::Left, DeleteManner::ToRecycleBin), {false, &journal});
        QCOMPARE(problems(report, tree.path({})), QStringList());
        shell("test -f right/$(printf 'd\\377/f\\200') && test ! -e right/$(printf 'o\\300') && cmp left/d right/d");
        const UndoPlan undo = journal.planUndo();
        QVERIFY(undo.plan.leftOut.isEmpty());
        journal.setNext({}, undo.id);
        QVERIFY(tree.execute(undo.plan, {false, &journal}).isComplete());
        shell("test ! -e right/$(printf 'd\\377') && test $(cat right/$(printf 'o\\300')) = 2 && test $(cat right/d) = "
              "3");
        shell("rm -rf left right data journal");
    }

    void pathsLongerThanTheSystemTakes()
    {
        OperationFixture tree;
        const QString part(200, u'p');
        FileError error;
        std::unique_ptr<FolderHandle> folder = FileLayer::native().openRoot(tree.left(), error);
        for (int i = 0; i < 30; ++i) {
            QVERIFY(!folder->makeFolder(part, nullptr).isError());
            folder = folder->openFolder(part, error);
            QVERIFY(folder);
        }
        QVERIFY(!folder->createFile(QStringLiteral("file"), error)->write("deep", 4).isError());
        const ExecutionReport report = tree.execute(planMirror(tree.input(), PlanSide::Left, DeleteManner::ForGood));
        QCOMPARE(report.problems.size(), 0);
        QCOMPARE(report.done.madeFolders, 30);
        const PlanInput after = tree.input();
        QVERIFY(std::all_of(after.items.begin(), after.items.end(),
                            [](const FolderDiffItem &item) { return item.diffStatus() == FolderDiffStatus::Same; }));
        QCOMPARE(std::system(("rm -rf '" + tree.path({}).toUtf8() + "'").constData()), 0);
    }
#endif
};

VELMORA_TEST(ExecutorTest)
#include "executor_test.moc"
