#include "folder_operations/operation_fixture.h"
#include "folder_operations/scripted_layer.h"
#include "support/test_main.h"

#include <cstdlib>

using namespace velmora;
using namespace velmora::test;

namespace {

using Code = OperationErrorCode;

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
    void copiesKeepTimesAndPermissions()
    {
        OperationFixture tree;
        tree.make("left/dir/script=#! left/dir/private=1");
        tree.setTime("left/dir/script", -1'000'000);
        const auto executable = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup;
        QVERIFY(QFile::setPermissions(tree.path("left/dir/script"), executable));
        QVERIFY(QFile::setPermissions(tree.path("left/dir/private"), QFile::ReadOwner));
        QVERIFY(QFile::setPermissions(tree.path("left/dir"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        const QDateTime folderTime = tree.time("left/dir");
        QCOMPARE(tree.problems(OperationFixture::execute(tree.mirror(), {true, nullptr})), QStringList());
        for (const char *name : {"/dir", "/dir/script", "/dir/private"}) {
            const QFileInfo left(tree.left() + QLatin1String(name));
            const QFileInfo right(tree.right() + QLatin1String(name));
            QCOMPARE(right.permissions(), left.permissions());
            QCOMPARE(right.lastModified(), left.lastModified());
        }
        QCOMPARE(tree.time("right/dir"), folderTime);

        // What is moved, too: its folder is made anew, and the old one goes.
        const auto open = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;
        QVERIFY(QFile::setPermissions(tree.path("left/dir"), open));
        const QFile::Permissions before = QFileInfo(tree.path("left/dir")).permissions();
        tree.remove("right/dir");
        QVERIFY(OperationFixture::execute(planMoveToOtherSide(tree.input(), {0}, Side::Left)).isComplete());
        QCOMPARE(tree.picture("left"), QStringList());
        QCOMPARE(QFileInfo(tree.path("right/dir")).permissions(), before);
        QCOMPARE(tree.time("right/dir"), folderTime);
    }

    void whatChangesMeanwhileIsSpared_data()
    {
        QTest::addColumn<QByteArray>("files");
        QTest::addColumn<QByteArray>("call"); ///< before which number of which call it changes; none: before the run
        QTest::addColumn<int>("number");
        QTest::addColumn<QByteArray>("changes");
        QTest::addColumn<QStringList>("problems");
        QTest::addColumn<QString>("right"); ///< the right side in the end
        QTest::addColumn<DeleteManner>("manner");
        const auto row = [](const char *name, const char *files, const char *call, int number, const char *changes,
                            const QStringList &problems, const char *right,
                            DeleteManner manner = DeleteManner::ForGood) {
            QTest::newRow(name) << QByteArray(files) << QByteArray(call) << number << QByteArray(changes) << problems
                                << QString::fromUtf8(right) << manner;
        };
        row("all sorts of things since the plan",
            "left/source=1 left/target=1 right/target=2 left/appears=1 right/deleted=1 right/returns=1 left/fine=1", "",
            0,
            "left/source=changed right/target=changed right/appears=appeared right/deleted=changed left/returns=back",
            {said(Code::TargetAppeared, "right/appears"), said(Code::SourceChanged, "left/source"),
             said(Code::TargetChanged, "right/target"), said(Code::TroubleInBranch, "right x2")},
            "appears=appeared deleted=changed fine=1 returns=1 target=changed");
        row("a source while it is read", "left/a=first right/a=old", "source.state", 2, "left/a=second",
            {said(Code::SourceChanged, "left/a")}, "a=old");
        row("targets while sources are read", "left/a=new left/b=new right/a=old", "sink.keepAttributes", 1,
            "right/a=mine right/b=mine", {said(Code::TargetChanged, "right/a"), said(Code::TargetAppeared, "right/b")},
            "a=mine b=mine");
        row("a target while it is kept", "right/a=old left/a=new", "makeHardLink", 1, "right/a=mine",
            {said(Code::TargetChanged, "right/a")}, "a=mine");
        row("what was missing is back", "right/dir/a=1 left/dir/ right/b=1", "", 0, "left/dir/a=back",
            {said(Code::CounterpartAppeared, "left/dir/a")}, "dir/ dir/a=1");
        row("a file in a folder for the bin", "right/dir/deep/a=1", "", 0, "right/dir/deep/a=2",
            {said(Code::SourceChanged, "right/dir")}, "dir/ dir/deep/ dir/deep/a=2", DeleteManner::ToRecycleBin);
        row("an entry in a folder for the bin", "right/dir/deep/a=1", "", 0, "right/dir/deep/b=late",
            {said(Code::SourceChanged, "right/dir")}, "dir/ dir/deep/ dir/deep/a=1 dir/deep/b=late",
            DeleteManner::ToRecycleBin);
        row("trouble spares the branch",
            "left/dir/a=1 right/dir/old=1 right/dir/deep/older=1 right/other/free=1 left/other/ left/dir/deep/", "", 0,
            "right/dir/a=mine",
            {said(Code::TargetAppeared, "right/dir/a"), said(Code::TroubleInBranch, "right/dir x2")},
            "dir/ dir/a=mine dir/deep/ dir/deep/older=1 dir/old=1 other/");
        row("trouble in a folder spares the folder", "right/gone/x=1 right/gone/deep/y=1 right/free=1", "", 0,
            "right/gone/deep/y=mine",
            {said(Code::SourceChanged, "right/gone/deep/y"), said(Code::TroubleInBranch, "right/gone/deep"),
             said(Code::TroubleInBranch, "right/gone")},
            "gone/ gone/deep/ gone/deep/y=mine");
        row("an entry while it is set aside", "right/gone=1", "move", 1, "right/gone=mine",
            {said(Code::SourceChanged, "right/gone")}, "gone=mine");
#ifdef Q_OS_LINUX // where entries can be swapped and the bin tells its places
        row("a target at the last moment", "right/a=old left/a=new", "exchange", 1, "right/a=mine",
            {said(Code::TargetChanged, "right/a")}, "a=mine");
        row("an entry on its way to the bin", "right/gone=1", "recycle", 1, "right/gone=mine",
            {said(Code::SourceChanged, "right/gone")}, "gone=mine", DeleteManner::ToRecycleBin);
#endif
    }
    void whatChangesMeanwhileIsSpared()
    {
        QFETCH(const QByteArray, files);
        QFETCH(const QByteArray, call);
        QFETCH(const int, number);
        QFETCH(const QByteArray, changes);
        QFETCH(const DeleteManner, manner);
        for (const bool isJournalled : {false, true}) {
            if (!isJournalled && (call == "makeHardLink" || call == "move"))
                continue; // nothing is set aside
            OperationFixture tree;
            tree.make(files.constData());
            const OperationPlan plan = tree.mirror(manner);
            if (call.isEmpty())
                tree.make(changes.constData());
            ScriptedLayer changing(before(call.constData(), number, [&] { tree.make(changes.constData()); }));
            OperationJournal journal(changing, tree.journalFolder());
            const ExecutionReport report =
                OperationFixture::execute(plan, {false, isJournalled ? &journal : nullptr}, changing);
            QTEST(tree.problems(report), "problems");
            QTEST(tree.picture("right").join(u' '), "right");
        }
    }

    /// Neither size alone nor size and time make a file the one that was seen.
    void anotherFileIsNotTakenForTheSame()
    {
        OperationFixture tree;
        tree.make("left/edited=1 left/swapped=1 right/edited=22 right/gone=1");
        const OperationPlan plan = tree.mirror();
        tree.make("left/edited=2 left/other=2 right/other=2");
        for (const char *name : {"left/swapped", "right/gone"}) {
            const QString file = QString::fromLatin1(name);
            const qint64 seconds = QDateTime(QDate(2024, 2, 29), QTime(12, 0), Qt::UTC).secsTo(tree.time(file));
            const QString other = file.section(u'/', 0, 0) + QStringLiteral("/other");
            tree.setTime(other, seconds);
            tree.remove(file);
            QVERIFY(QFile::rename(tree.path(other), tree.path(file)));
        }
        QCOMPARE(OperationFixture::execute(plan).ends.count(StepEnd::Skipped), 3);
        QCOMPARE(tree.picture("right"), lines("edited=22 gone=2"));
    }

    /// A file has taken the place of the folder that the counterpart would be in: it is missing all the same.
    void aCounterpartWhoseWayIsNoFolderIsMissing()
    {
        for (const bool isSurveyed : {false, true}) {
            OperationFixture tree;
            tree.make("left/dir/ right/dir/a=1");
            const OperationPlan made = planMirror(tree.input(), Side::Left, DeleteManner::ForGood);
            const OperationPlan plan = isSurveyed ? OperationFixture::surveyed(made) : made;
            tree.remove("left/dir");
            tree.make("left/dir=1");
            const ExecutionReport report = OperationFixture::execute(plan);
            QCOMPARE(tree.problems(report) + tree.leftOut(report.plan), QStringList());
            QCOMPARE(tree.picture("right"), lines("dir/"));
        }
    }

    /// What a folder is given at the end must not be changed by what is done in it later.
    void foldersGetTheirTimesFromTheInnermostOn()
    {
        OperationFixture tree;
        tree.make("left/dir/deep/deepest/a=1 left/next/b=1");
        ScriptedLayer watched([](int, QLatin1String) { return FileError(); });
        QVERIFY(OperationFixture::execute(tree.mirror(), {}, watched).isComplete());
        QCOMPARE(watched.finished, lines("next deepest deep dir"));
    }

    void copiesReachTheDiskBeforeAnythingGoes()
    {
        OperationFixture tree;
        tree.make("left/a=1 left/b=new right/b=old right/c=1");
        const OperationPlan plan = tree.mirror();
        QStringList calls;
        ScriptedLayer watched([&](int, QLatin1String call) {
            if (lines("move exchange sink.flush settle removeFile").contains(call))
                calls.append(call);
            return FileError();
        });
        QVERIFY(OperationFixture::execute(plan, {}, watched).isComplete());
#ifdef Q_OS_LINUX
        QCOMPARE(calls, lines("move sink.flush exchange removeFile settle removeFile"));
#else
        QCOMPARE(calls, lines("sink.flush move sink.flush exchange move removeFile"));
#endif
    }

    void nothingGoesWhenTheDiskCannotConfirm()
    {
        if (!FileLayer::native().canSettle())
            QSKIP("every file is confirmed by itself here");
        OperationFixture tree;
        tree.make("left/a=1 left/b=1 right/c=1");
        const auto withoutEnd = [otherVolumes = betweenVolumes()](int number, QLatin1String call) {
            return call == QLatin1String("settle") ? FileError{FileErrorKind::Other, {}} : otherVolumes(number, call);
        };
        ScriptedLayer moving(withoutEnd);
        const ExecutionReport moved =
            OperationFixture::execute(planMoveToOtherSide(tree.input(), {0}, Side::Left), {}, moving);
        QCOMPARE(moved.problems.last().code, Code::SourceStays);
        ScriptedLayer mirroring(withoutEnd);
        QCOMPARE(OperationFixture::execute(tree.mirror(), {}, mirroring).problems.last().code, Code::TroubleInBranch);
        QCOMPARE(tree.picture(), lines("left/a=1 left/b=1 right/a=1 right/b=1 right/c=1"));
    }

    void movesLeaveNothingBehindButWhatFailed()
    {
        OperationFixture tree;
        tree.make("left/dir/a=a left/dir/sub/b=b left/ok/c=c right/ok/c=old left/dir/.hidden=h");
        const PlanInput input = tree.input();
        const OperationPlan plan = OperationFixture::surveyed(planMoveToOtherSide(
            input, {OperationFixture::indexOf(input, "dir"), OperationFixture::indexOf(input, "ok")}, Side::Left));
        tree.make("right/dir/a=mine");
        QVERIFY(!OperationFixture::execute(plan).isComplete());
        QCOMPARE(tree.picture(), lines("left/dir/ left/dir/a=a right/dir/ right/dir/.hidden=h right/dir/a=mine "
                                       "right/dir/sub/ right/dir/sub/b=b right/ok/ right/ok/c=c"));
    }

    void movesBetweenVolumesCopyFirst()
    {
        OperationFixture tree;
        tree.make("left/dir/a=a left/dir/b=b right/dir/b=old");
        ScriptedLayer layer(betweenVolumes());
        const ExecutionReport report =
            OperationFixture::execute(planMoveToOtherSide(tree.input(), {0}, Side::Left), {}, layer);
        QCOMPARE(tree.problems(report), QStringList());
        QCOMPARE(tree.picture(), lines("right/dir/ right/dir/a=a right/dir/b=b"));
        QCOMPARE(report.done.writtenFiles, 1);
        QCOMPARE(report.done.replacedFiles, 1);
    }

    /// Somebody writes into the copy: before it is read again, and before its size is asked for.
    void aBadCopyIsNotKept()
    {
        for (const bool isShort : {false, true}) {
#ifdef Q_OS_WIN
            if (isShort)
                continue; // an open file is nobody else's to change
#endif
            OperationFixture tree;
            tree.make("left/a=1234");
            const auto spoil = [&] {
                const QStringList names = QDir(tree.right()).entryList(QDir::Files | QDir::Hidden);
                QCOMPARE(names.size(), 1);
                QFile copy(tree.right() + u'/' + names[0]);
                QVERIFY(copy.open(QIODevice::ReadWrite));
                QVERIFY(isShort ? copy.resize(3) : copy.write("X", 1) == 1);
            };
            // The opening before the last is that of the source.
            ScriptedLayer layer(isShort ? before("sink.state", 1, spoil) : before("openFile", 3, spoil));
            const ExecutionReport report = OperationFixture::execute(tree.mirror(), {!isShort, nullptr}, layer);
            QCOMPARE(tree.problems(report), QStringList(said(Code::NotTheSame, "right/a")));
            QCOMPARE(tree.picture("right"), QStringList());
        }
    }

    void cancelsBetweenFilesAndInThem()
    {
        OperationFixture tree;
        tree.make("left/1=1 left/3=3");
        QFile big(tree.path("left/2"));
        QVERIFY(big.open(QIODevice::WriteOnly));
        const QByteArray block(1 << 20, 'x');
        for (int i = 0; i < 64; ++i)
            QCOMPARE(big.write(block), block.size());
        big.close();
        const CancelFlag cancel;
        Progress progress(
            [&](const ProgressState &state) {
                if (state.done > 3 * bytesForEachStep) // the second file is under way
                    cancel.cancel();
            },
            std::chrono::milliseconds(0));
        const ExecutionReport report = executePlan(tree.mirror(), FileLayer::native(), {}, cancel, progress);
#ifdef Q_OS_WIN
        if (!report.cancelled)
            QSKIP("this system's copying does not tell how far it has come");
#endif
        QVERIFY(report.cancelled);
        QCOMPARE(report.ends, (QList<StepEnd>{StepEnd::Done, StepEnd::Failed, StepEnd::NotReached}));
        QCOMPARE(tree.picture("right"), lines("1=1"));
    }

    void progressCountsToItsTotal()
    {
        OperationFixture tree;
        tree.make("left/a=1 left/b=22 right/c=1");
        QList<ProgressState> states;
        Progress progress([&](const ProgressState &state) { states.append(state); }, std::chrono::milliseconds(0));
        QVERIFY(executePlan(tree.mirror(), FileLayer::native(), {}, {}, progress).isComplete());
        QVERIFY(std::is_sorted(states.begin(), states.end(),
                               [](const auto &one, const auto &two) { return one.done < two.done; }));
        QCOMPARE(states.last().total, 3 * bytesForEachStep + 3);
        QCOMPARE(states.last().done, 2 * bytesForEachStep + 3);
        QCOMPARE(states.last().item, tree.path("right/c"));
    }

    void rootsThatAreGoneOrOthersAreLeftAlone()
    {
        OperationFixture tree;
        tree.make("left/a=1 right/old=1");
        const OperationPlan plan = tree.mirror();
        QVERIFY(QDir().rename(tree.right(), tree.path("away")));
        tree.make("right/old=1");
        const ExecutionReport report = OperationFixture::execute(plan);
        QCOMPARE(tree.problems(report), QStringList(said(Code::RootMissing, "right") + QLatin1String(" x2")));
        QCOMPARE(tree.picture("right"), lines("old=1"));

        const OperationPlan deletion = tree.mirror();
        QVERIFY(QDir().rename(tree.left(), tree.path("unplugged")));
        QCOMPARE(OperationFixture::execute(deletion).ends.count(StepEnd::Done), 0);
        QCOMPARE(tree.picture("right"), lines("old=1"));
    }

#ifdef Q_OS_UNIX
    void aFolderThatBecomesALinkLeadsNowhere()
    {
        for (const char *call : {"", "openFile", "createFile", "sink.copyFrom", "exchange"}) {
            OperationFixture tree;
            tree.make("left/dir/a=new left/dir/b=new right/dir/a=old right/dir/gone=old other/a=outside "
                      "other/gone=outside");
            const OperationPlan plan = tree.mirror();
            const QStringList outside = tree.picture("other");
            const auto swap = [&] {
                QVERIFY(QDir().rename(tree.path("right/dir"), tree.path("right/dir2")));
                tree.make("right/dir->../other");
            };
            if (!*call)
                swap();
            ScriptedLayer layer(before(call, 1, swap)); // no call has the empty name
            const ExecutionReport report = OperationFixture::execute(plan, {}, layer);
            QCOMPARE(tree.picture("other"), outside);
            QVERIFY2(tree.problems(report).contains(said(Code::LeadsOutside, "right/dir/b")), call);
            QVERIFY2(tree.picture("right").contains(QStringLiteral("dir2/gone=old")), call);
        }
    }

    void namesThatAreNoText()
    {
        OperationFixture tree;
        const auto shell = [&](const QByteArray &command) {
            const QByteArray line = "cd '" + tree.path("").toUtf8() + "' && " + command;
            QCOMPARE(std::system(line.constData()), 0);
        };
        shell("mkdir left/$(printf 'd\\377') && printf 1 > left/$(printf 'd\\377/f\\200') && "
              "printf 2 > right/$(printf 'o\\300') && printf 3 > right/d && printf 4 > left/d");
        QCOMPARE(tree.input().items.size(), 4);
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        QCOMPARE(tree.problems(OperationFixture::execute(tree.mirror(DeleteManner::ToRecycleBin), journal)),
                 QStringList());
        shell("test -f right/$(printf 'd\\377/f\\200') && test ! -e right/$(printf 'o\\300') && cmp left/d right/d");
        const UndoPlan undo = journal.planUndo();
        QVERIFY(undo.plan.leftOut.isEmpty());
        journal.setNext({}, undo.id);
        QVERIFY(OperationFixture::execute(undo.plan, journal).isComplete());
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
        const ExecutionReport report = OperationFixture::execute(tree.mirror());
        QCOMPARE(report.problems.size(), 0);
        QCOMPARE(report.done.madeFolders, 30);
        const PlanInput after = tree.input();
        QVERIFY(std::all_of(after.items.begin(), after.items.end(),
                            [](const FolderDiffItem &item) { return item.diffStatus() == FolderDiffStatus::Same; }));
        QCOMPARE(std::system(("rm -rf '" + tree.path("").toUtf8() + "'").constData()), 0);
    }
#endif
};

VELMORA_TEST(ExecutorTest)
#include "executor_test.moc"
