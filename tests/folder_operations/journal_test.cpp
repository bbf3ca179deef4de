#include "folder/operations/journal_lines.h"
#include "folder_operations/operation_fixture.h"
#include "folder_operations/scripted_layer.h"
#include "support/bytes_source.h"
#include "support/test_main.h"

#include <QDir>
#include <QLockFile>

using namespace velmora;
using namespace velmora::test;

namespace {

const QString journalOf = QStringLiteral("journal/runs/%1/journal.jsonl");

/// The last run's identifier.
QString lastId(const OperationJournal &journal)
{
    return journal.entries().entries.last().id;
}

} // namespace

class JournalTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void undoesAndRedoesAMirror_data()
    {
        QTest::addColumn<DeleteManner>("manner");
        QTest::newRow("for good") << DeleteManner::ForGood;
        QTest::newRow("to the bin") << DeleteManner::ToRecycleBin;
    }
    void undoesAndRedoesAMirror()
    {
        QFETCH(const DeleteManner, manner);
        OperationFixture tree;
        if (manner == DeleteManner::ToRecycleBin && !tree.hasRecycleBin())
            QSKIP("no recycle bin here");
        tree.make("left/a=new left/dir/b=b left/empty/ left/same=1 right/same=1 right/a=old right/gone/x=x "
                  "right/gone/deep/y=y");
        tree.setTime("right/a", -5000);
        const QStringList before = tree.picture();
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        journal.setNext(QStringLiteral("mirror"));
        const OperationPlan plan = planMirror(tree.input(), Side::Left, manner);
        const ExecutionReport report = OperationFixture::execute(plan, {true, &journal});
        QCOMPARE(tree.problems(report), QStringList());
        QCOMPARE(report.done, report.plan.totals());
        QCOMPARE(report.ends.count(StepEnd::Done), report.plan.steps.size());
        QCOMPARE(tree.picture("right"), tree.picture("left"));
        QVERIFY(tree.mirror(manner).steps.isEmpty());
#ifdef Q_OS_UNIX
        const bool isInBin = tree.picture("data/Trash").contains(QStringLiteral("files/gone/deep/y=y"));
        QCOMPARE(isInBin, manner == DeleteManner::ToRecycleBin);
#endif
        const QStringList after = tree.picture();
        QCOMPARE(journal.entries().entries.size(), 1);
        QCOMPARE(journal.entries().entries[0].title, QStringLiteral("mirror"));

        const UndoPlan undo = journal.planUndo();
        QCOMPARE(undo.refusal, UndoRefusal::None);
        QVERIFY(undo.plan.leftOut.isEmpty());
        journal.setNext(QStringLiteral("undo"), undo.id);
        QCOMPARE(tree.problems(OperationFixture::execute(undo.plan, journal)), QStringList());
        QCOMPARE(tree.picture(), before);
#ifdef Q_OS_UNIX
        QVERIFY(tree.picture("data").filter(QStringLiteral("info/")).size() <= 1); // the empty folder
#endif
        QCOMPARE(tree.time("right/a"), QDateTime(QDate(2024, 2, 29), QTime(12, 0), Qt::UTC).addSecs(-5000));
        QVERIFY(journal.entries().entries[0].undone);
        QCOMPARE(journal.planUndo().refusal, UndoRefusal::NothingToUndo);

        const UndoPlan redo = journal.planUndo(lastId(journal));
        journal.setNext(QStringLiteral("redo"), redo.id);
        QCOMPARE(tree.problems(OperationFixture::execute(redo.plan, journal)), QStringList());
        QCOMPARE(tree.picture(), after);
    }

    void undoSparesWhatHasChangedSince()
    {
        OperationFixture tree;
        tree.make("left/new=1 left/replaced=new right/replaced=old right/deleted=1 left/dir/x=1 "
                  "left/fine=1");
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        QVERIFY(OperationFixture::execute(tree.mirror(), journal).isComplete());
        tree.make("right/new=edited right/replaced=edited right/deleted=again right/dir/y=added");
        const UndoPlan undo = journal.planUndo();
        QCOMPARE(undo.plan.leftOut.size(), 4);
        journal.setNext({}, undo.id);
        (void)OperationFixture::execute(undo.plan, journal);
        QCOMPARE(tree.picture("right"), lines("deleted=again dir/ dir/y=added new=edited replaced=edited"));
    }

    void contentsBeyondTheLimitAreNotKept()
    {
        OperationFixture tree;
        tree.make("left/big=12345678 right/big=87654321x left/small=1 right/small=2");
        JournalLimits limits;
        limits.keptBytes = 8;
        OperationJournal journal(FileLayer::native(), tree.journalFolder(), limits);
        tree.make("right/before=1");
        QVERIFY(
            OperationFixture::execute(
                planDelete(tree.input(), {0}, Side::Right, DeleteManner::ForGood, DeleteScope::ListedEntries), journal)
                .isComplete());
        const ExecutionReport report = OperationFixture::execute(tree.mirror(), journal);
        QVERIFY(report.isComplete());
        QCOMPARE(report.notUndoable, 1);
        QCOMPARE(journal.entries().entries.size(), 2); // what never fits drives nothing out
        const UndoPlan undo = journal.planUndo();
        QCOMPARE(tree.leftOut(undo.plan), QStringList(said(LeftOutReason::OldContentsGone, "right/big")));
        QVERIFY(OperationFixture::execute(undo.plan).isComplete());
        QCOMPARE(tree.picture("right"), lines("big=12345678 small=2"));
    }

    void aBinThatDoesNotTellItsPlacesKeepsWhatItHas()
    {
        OperationFixture tree;
        tree.make("left/a=new right/a=old right/gone=x right/dir/y=y");
        ScriptedLayer files([](int, QLatin1String) { return FileError(); });
        files.hideBin();
        OperationJournal journal(files, tree.journalFolder());
        const ExecutionReport report =
            OperationFixture::execute(tree.mirror(DeleteManner::ToRecycleBin), journal, files);
        if (!report.problems.isEmpty() && report.problems.first().code == OperationErrorCode::NoRecycleBin)
            QSKIP("no recycle bin here");
        QVERIFY(report.isComplete());
        QCOMPARE(report.inBinOnly, 2);
        const UndoPlan undo = journal.planUndo();
        QCOMPARE(tree.leftOut(undo.plan), QStringList({said(LeftOutReason::InRecycleBin, "right/dir"),
                                                       said(LeftOutReason::InRecycleBin, "right/gone")}));
        QVERIFY(OperationFixture::execute(undo.plan, {}, files).isComplete());
        QCOMPARE(tree.picture("right"), lines("a=old"));
    }

    void theOldestRunsMakeRoom()
    {
        OperationFixture tree;
        JournalLimits limits;
        limits.keptBytes = 10;
        limits.runs = 3;
        OperationJournal journal(FileLayer::native(), tree.journalFolder(), limits);
        const auto replace = [&](const char *contents) {
            tree.make(contents);
            QVERIFY(OperationFixture::execute(tree.mirror(), journal).isComplete());
        };
        tree.make("right/a=1234");
        for (const char *contents : {"left/a=2345", "left/a=3456", "left/a=4567"})
            replace(contents);
        // The third needs the room of the first: each keeps four bytes.
        QStringList ids;
        for (const JournalEntry &entry : journal.entries().entries)
            ids.append(entry.id);
        QCOMPARE(ids, lines("00000002 00000003"));
        limits.keptBytes = 100;
        OperationJournal roomy(FileLayer::native(), tree.journalFolder(), limits);
        limits.runs = 1;
        OperationJournal narrow(FileLayer::native(), tree.journalFolder(), limits);
        narrow.prune();
        QCOMPARE(lastId(roomy), QStringLiteral("00000003"));
        QCOMPARE(roomy.entries().entries.size(), 1);
        limits.days = -1;
        OperationJournal(FileLayer::native(), tree.journalFolder(), limits).prune();
        QVERIFY(roomy.entries().entries.isEmpty());
    }

    void linesSurviveTheWayBack()
    {
        JournalHeader header{QStringLiteral("50% \"done\"\n\t\x01\\\x7F é"),
                             123,
                             QStringLiteral("00000001"),
                             {QStringLiteral("/a b"), QStringLiteral("/") + QChar(char16_t(0xDC80))},
                             {QStringLiteral("18446744073709551615"), {}},
                             8};
        QCOMPARE(readHeaderLine(headerLine(header)), header);
        JournalStep step;
        step.number = 7;
        step.step.kind = OperationKind::Replace;
        step.step.from = {0, QStringLiteral("x/%0041") + QChar(char16_t(0xDCFF))};
        step.step.to = {1, QStringLiteral("\U0001F600")};
        step.step.fromSeen = SeenEntry::exactly({NodeKind::File, 1LL << 60, -1, FileIdentity{~0ULL, 1}, 0, false});
        step.step.toSeen = SeenEntry::absent();
        step.step.fromSeen.files = 3;
        step.step.keptCopy = Place{1, QStringLiteral("stays")};
        step.step.keptCopySeen = step.step.fromSeen;
        step.kept = QStringLiteral("12");
        step.now = step.step.fromSeen;
        step.end = JournalStep::End::Done;
        step.binPath = step.step.from.relative;
        const QByteArray copying = copyingLine(step.step.from);
        OperationStep planned = step.step;
        planned.kind = OperationKind::Move;
        // More than is read at once.
        const QByteArray head = headerLine(header) + '\n';
        QByteArray plan;
        for (int i = 0; i <= 7; ++i)
            plan += planLine(i, planned) + '\n';
        BytesSource journal(head + plan + (copying + '\n').repeated(50'000) + beginLine(step, planned.kind) + '\n' +
                            recyclingLine(7, header.title) + '\n' + endLine(step) + '\n' + movedLine(7, false) + '\n');
        FileError error;
        const auto record = readJournal(journal, {}, error);
        QVERIFY(record);
        const JournalStep &read = record->steps.at(0);
        QCOMPARE(read.step, step.step);
        QCOMPARE(read.now, step.now);
        QCOMPARE(read.binPath, step.binPath);
        QVERIFY(read.isMoved);
        QCOMPARE(record->planned.size(), std::size_t(8));
        QCOMPARE(record->planned[3], planned);
        QCOMPARE(record->lastCopy, step.step.from);
        QCOMPARE(record->lastCopyStep, std::ptrdiff_t(0));
        // As the first version wrote it: all of the step in the line before it.
        const QByteArray old = planLine(7, step.step).replace("\"plan\":", "\"step\":");
        BytesSource earlier(QByteArray(head).replace("\"version\":2", "\"version\":1") + old + '\n');
        QCOMPARE(readJournal(earlier, {}, error)->steps.at(0).step, step.step);
    }

    void hostileJournalsAreRefused()
    {
        OperationFixture tree;
        tree.make("left/a=1 right/b=2");
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        QVERIFY(OperationFixture::execute(tree.mirror(), journal).isComplete());
        QFile file(tree.path(journalOf.arg(lastId(journal))));
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QByteArray good = file.readAll();
        const auto refusalOf = [&](const QByteArray &bytes) {
            file.resize(0);
            file.seek(0);
            file.write(bytes);
            file.flush();
            return journal.planUndo().refusal;
        };
        // Cut anywhere in a line: what was begun before counts. Cut in the first: no journal.
        const qsizetype headerEnd = good.indexOf('\n') + 1;
        const qsizetype stepBegin = good.lastIndexOf('\n', good.indexOf("\"step\":0")) + 1;
        const QByteArray step = good.mid(stepBegin, good.indexOf('\n', stepBegin) + 1 - stepBegin);
        for (qsizetype length = 0; length < good.size(); length += 7)
            QCOMPARE(refusalOf(good.left(length)), length < headerEnd                 ? UndoRefusal::Damaged
                                                   : length < stepBegin + step.size() ? UndoRefusal::NothingToUndo
                                                                                      : UndoRefusal::None);
        const auto changed = [&](const char *from, const char *to) {
            QByteArray bytes = good;
            bytes.replace(from, to);
            return bytes == good ? UndoRefusal::None : refusalOf(bytes);
        };
        QCOMPARE(changed("[1,\"a\"]", "[1,\"../a\"]"), UndoRefusal::Damaged);
        QCOMPARE(changed("[1,\"a\"]", "[9,\"a\"]"), UndoRefusal::Damaged);
        QCOMPARE(changed("[1,\"a\"]", "[1,\"/etc\"]"), UndoRefusal::Damaged);
        QCOMPARE(changed("\"kept\":\"1\"", "\"kept\":\"../1\""), UndoRefusal::Damaged);
        QCOMPARE(changed("\"version\":2", "\"version\":3"), UndoRefusal::Damaged);
        QCOMPARE(changed("\"ended\":0", "\"ended\":5"), UndoRefusal::Damaged);
        QCOMPARE(changed("\"step\":1", "\"step\":-1"), UndoRefusal::Damaged);
        QCOMPARE(changed("\"plan\":1", "\"plan\":0"), UndoRefusal::Damaged);
        // A step twice, unless the first try has changed nothing.
        QCOMPARE(refusalOf(good + step), UndoRefusal::Damaged);
        QCOMPARE(refusalOf(good + "{\"done\":false,\"ended\":0}\n" + step), UndoRefusal::None);
        QCOMPARE(changed("\"time\":\"", "\"time\":\"x"), UndoRefusal::Damaged);
        QCOMPARE(refusalOf(QByteArray(1 << 20, '[') + '\n'), UndoRefusal::Damaged);
        QCOMPARE(refusalOf(good + QByteArray(2 << 20, ' ') + '\n'), UndoRefusal::Damaged);
        QCOMPARE(refusalOf(good.left(headerEnd) + "\n\n"), UndoRefusal::Damaged);
        // Nothing older is undone in the place of a damaged run.
        QCOMPARE(refusalOf(good), UndoRefusal::None);
    }

    void aRunThatACrashEndedIsUndone()
    {
        OperationFixture tree;
        tree.make("left/a=new right/a=old left/b=b right/c=c");
        const QStringList before = tree.picture();
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        QVERIFY(OperationFixture::execute(tree.mirror(), journal).isComplete());
        // The lines after the steps have not been written.
        QFile file(tree.path(journalOf.arg(lastId(journal))));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QByteArray kept;
        for (const QByteArray &line : file.readAll().split('\n')) {
            if (!line.isEmpty() && !line.contains("\"ended\""))
                kept += line + '\n';
        }
        file.resize(0);
        file.seek(0);
        file.write(kept);
        file.close();
        // Another crash came before its run had written a line: there is nothing of it to undo, or to stand in the way.
        tree.make("journal/runs/00000009/kept/ journal/runs/00000009/journal.jsonl={\"format\":");
        const UndoPlan undo = journal.planUndo();
        QCOMPARE(undo.plan.leftOut.size(), 0);
        QVERIFY(OperationFixture::execute(undo.plan).isComplete());
        QCOMPARE(tree.picture(), before);
        QCOMPARE(journal.planUndo().refusal, UndoRefusal::NothingToUndo); // all is as it was
    }

    void undoingLeavesAnothersFileInTheBin()
    {
        OperationFixture tree;
        if (!tree.hasRecycleBin())
            QSKIP("no recycle bin here");
        for (const bool isPlanned : {false, true}) { // it gets there before or after the undoing is planned
            tree.make("right/a.txt=mine right/dir/b=mine");
            OperationJournal journal(FileLayer::native(), tree.journalFolder());
            const ExecutionReport report = OperationFixture::execute(tree.mirror(DeleteManner::ToRecycleBin), journal);
            QVERIFY(report.isComplete());
            UndoPlan undo = journal.planUndo();
            QCOMPARE(undo.plan.steps.size(), 2);
            for (const OperationStep &step : undo.plan.steps) {
                QVERIFY(QFile::remove(step.binPath) || QDir(step.binPath.get()).removeRecursively());
                if (step.fromSeen.kind == NodeKind::Folder)
                    QVERIFY(QDir().mkpath(step.binPath));
                QFile strangers(step.fromSeen.kind == NodeKind::Folder ? step.binPath.get() + QStringLiteral("/b")
                                                                       : step.binPath.get());
                QVERIFY(strangers.open(QIODevice::WriteOnly));
                QCOMPARE(strangers.write("their"), 5);
            }
            if (isPlanned) {
                QCOMPARE(tree.problems(OperationFixture::execute(undo.plan, journal)),
                         QStringList({said(OperationErrorCode::OtherInBin, "right/a.txt"),
                                      said(OperationErrorCode::OtherInBin, "right/dir")}));
            } else {
                undo = journal.planUndo();
                QVERIFY(undo.plan.steps.isEmpty());
                QCOMPARE(tree.leftOut(undo.plan), QStringList({said(LeftOutReason::OtherInRecycleBin, "right/a.txt"),
                                                               said(LeftOutReason::OtherInRecycleBin, "right/dir")}));
            }
            QCOMPARE(tree.picture("right"), QStringList());
        }
    }

    void aRunUndoneInPartIsTriedAgainForTheRest()
    {
        for (const DeleteManner manner : {DeleteManner::ForGood, DeleteManner::ToRecycleBin}) {
            OperationFixture tree;
            if (manner == DeleteManner::ToRecycleBin && !tree.hasRecycleBin())
                QSKIP("no recycle bin here");
            tree.make("left/a=1 left/b=new right/b=old right/c=1 right/d=1");
            const QStringList before = tree.picture();
            OperationJournal journal(FileLayer::native(), tree.journalFolder());
            QVERIFY(OperationFixture::execute(tree.mirror(manner), journal).isComplete());
            tree.make("right/c=in-the-way");
            const auto undo = [&] {
                const UndoPlan plan = journal.planUndo();
                journal.setNext({}, plan.id);
                (void)OperationFixture::execute(plan.plan, journal);
                return plan.plan.leftOut.size();
            };
            QCOMPARE(undo(), 1);
            QVERIFY(journal.mayUndo() && !journal.entries().entries[0].undone);
            QVERIFY(journal.entries().entries[0].undoneInPart);
            tree.remove("right/c");
            QCOMPARE(undo(), 0);
            QCOMPARE(tree.picture(), before);
            QVERIFY(!journal.mayUndo() && journal.entries().entries[0].undone);
        }
    }

    void undoingNeedsNoSpace()
    {
        OperationFixture tree;
        tree.make("left/a=new right/a=old right/gone=1");
        const QStringList before = tree.picture();
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        QVERIFY(OperationFixture::execute(tree.mirror(), journal).isComplete());
        ScriptedLayer full([](int, QLatin1String call) {
            return call == QLatin1String("sink.copyFrom") ? FileError{FileErrorKind::NoSpace, {}} : FileError();
        });
        OperationJournal onFull(full, tree.journalFolder());
        QCOMPARE(tree.problems(OperationFixture::execute(onFull.planUndo().plan, onFull, full)), QStringList());
        QCOMPARE(tree.picture(), before);
        QCOMPARE(tree.picture("journal").filter(QStringLiteral("00000001/kept/")).size(), 1); // the empty folder
    }

#ifdef Q_OS_UNIX
    void theCopyOfAProtectedFolderIsUndone()
    {
        OperationFixture tree;
        tree.make("left/dir/a=1 left/dir/deep/b=1");
        const auto protect = [&](bool is) {
            for (const char *folder : {"left/dir/deep", "left/dir"}) {
                const QFile::Permissions may = is ? QFile::Permissions() : QFile::WriteOwner;
                QVERIFY(QFile::setPermissions(tree.path(folder), QFile::ReadOwner | QFile::ExeOwner | may));
            }
        };
        protect(true);
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        QVERIFY(OperationFixture::execute(tree.mirror(), journal).isComplete());
        int lifted = 0;
        ScriptedLayer watched([&lifted](int, QLatin1String call) {
            lifted += call == QLatin1String("letOwnerWrite") ? 1 : 0;
            return FileError();
        });
        OperationJournal later(watched, tree.journalFolder());
        QCOMPARE(tree.problems(OperationFixture::execute(later.planUndo().plan, later, watched)), QStringList());
        QCOMPARE(tree.picture("right"), QStringList());
        QCOMPARE(lifted, 6); // root could do without: a file, a file and a folder, each opened and closed
        protect(false);
    }
#endif

    void aCopyThatACrashHasLeftGoesWithTheNextRun()
    {
        OperationFixture tree;
        tree.make("left/dir/a=new right/dir/b=1 right/precious=1");
        ScriptedLayer dying([isDead = false](int, QLatin1String call) mutable {
            isDead = isDead || call == QLatin1String("sink.copyFrom");
            return isDead ? FileError{FileErrorKind::Other, {}} : FileError();
        });
        OperationJournal crashed(dying, tree.journalFolder());
        (void)OperationFixture::execute(planUpdate(tree.input(), Side::Left), {false, &crashed}, dying);
        const auto copies = [&tree] { return tree.picture("right").filter(QStringLiteral(".tmp")); };
        QCOMPARE(copies().size(), 1);

        // What looks like a copy but is not the one in the journal, and what no journal may ask for.
        tree.make("right/dir/.velmora-0123456789abcdef.tmp=mine");
        const QString forged = tree.journalFolder() + QStringLiteral("/00000000");
        QVERIFY(QDir().mkpath(forged));
        QFile file(forged + QStringLiteral("/journal.jsonl"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(headerLine({{}, 1, {}, {tree.left(), tree.right()}, {}, 0}) + '\n' +
                   copyingLine({1, QStringLiteral("precious")}) + '\n');
        file.close();

        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        const auto copiesAfterARun = [&](const char *newFile) {
            tree.make(newFile);
            (void)OperationFixture::execute(planUpdate(tree.input(), Side::Left), journal);
            return copies();
        };
        {
            QLockFile atWork(tree.journalFolder() + QStringLiteral("/00000001/lock"));
            QVERIFY(atWork.tryLock());
            QCOMPARE(copiesAfterARun("left/one=1").size(), 2);
        }
        tree.make("journal/runs/00000001/lock="); // a crash came between the lock and the name of its holder
        QCOMPARE(copiesAfterARun("left/two=1"), lines("dir/.velmora-0123456789abcdef.tmp=mine"));
        QVERIFY(tree.picture("right").contains(QStringLiteral("precious=1")));
    }

    void aRunAtWorkIsNotForgotten()
    {
        OperationFixture tree;
        tree.make("left/a=1 left/b=1");
        JournalLimits none;
        none.days = -1;
        ScriptedLayer layer([&, calls = 0](int, QLatin1String call) mutable {
            if (call == QLatin1String("sink.copyFrom") && ++calls == 1)
                OperationJournal(FileLayer::native(), tree.journalFolder(), none).prune();
            return FileError();
        });
        OperationJournal journal(layer, tree.journalFolder());
        QVERIFY(OperationFixture::execute(planUpdate(tree.input(), Side::Left), journal, layer).isComplete());
        QCOMPARE(journal.planUndo().plan.steps.size(), 2);
        OperationJournal(FileLayer::native(), tree.journalFolder(), none).prune();
        QCOMPARE(journal.planUndo().refusal, UndoRefusal::NothingToUndo);
    }
};

VELMORA_TEST(JournalTest)
#include "journal_test.moc"
