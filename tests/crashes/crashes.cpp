// Lets the file system die at each call of random operations on random trees, and looks whether anything is lost and
// all of it can be taken back or gone on with. Usage: test_crashes [points [seed]]. The exit status is 0 when all went
// well.

#include "folder/engine/folder_engine.h"
#include "folder/engine/sync_moves.h"
#include "folder/operations/merge_run.h"
#include "folder/operations/sync_run.h"
#include "folder_operations/operation_fixture.h"
#include "folder_operations/scripted_layer.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSet>

#include <cstdio>

using namespace velmora;
using namespace velmora::test;

namespace {

using MakePlan = std::function<OperationPlan(const OperationFixture &)>;

struct Operation {
    const char *name;
    MakePlan plan;
    std::vector<const char *> folders = {"left", "right"}; ///< that it reads or writes; the first ones begin with files
    std::size_t filled = 2;                                ///< so many of them
};

PlanSelection everything(const PlanInput &input)
{
    PlanSelection all;
    for (qsizetype i = 0; i < input.items.size(); ++i)
        all.append(i);
    return all;
}

/// With moves in the place of copies and deletions, where files have moved.
MakePlan synchroniseMoved(SyncMode mode)
{
    return [mode](const OperationFixture &tree) {
        const PlanInput input = tree.input();
        Progress silent;
        const QList<MovedFile> moved = findMovedFiles(input.roots, input.items, {}, silent);
        return planSyncRun(input, actionsOf(withMoves(planSync(input.items, {mode}), moved)), DeleteManner::ForGood);
    };
}

MakePlan synchronise(SyncMode mode)
{
    return [mode](const OperationFixture &tree) {
        PlanInput input = tree.input();
        input.items = compareFolderTreeInShort({.roots = input.roots, .method = CompareMethod::Crc});
        return planSyncRun(input, actionsOf(planSync(input.items, {mode})), DeleteManner::ForGood);
    };
}

OperationPlan mergeFolders(const OperationFixture &tree)
{
    const MergeVersions<QString> folders{tree.path("other"), tree.left(), tree.right()};
    Progress silent;
    const FolderMergeResult merge = mergeFolderTrees(folders, {}, silent);
    return planFolderMerge(folders, merge.files, mergeSourcesOf(merge.files), tree.path("merged"));
}

const std::vector<Operation> operations{
    {"copy",
     [](const OperationFixture &tree) {
         const PlanInput input = tree.input();
         return planCopyToOtherSide(input, everything(input), Side::Left);
     }},
    {"move",
     [](const OperationFixture &tree) {
         const PlanInput input = tree.input();
         return planMoveToOtherSide(input, everything(input), Side::Left);
     }},
    {"delete",
     [](const OperationFixture &tree) {
         const PlanInput input = tree.input();
         return planDelete(input, everything(input), Side::Right, DeleteManner::ForGood, DeleteScope::WholeFolder);
     }},
    {"sync left to right", synchronise(SyncMode::LeftToRight)},
    {"sync right to left", synchronise(SyncMode::RightToLeft)},
    {"sync left to right with moves", synchroniseMoved(SyncMode::LeftToRight)},
    {"sync right to left with moves", synchroniseMoved(SyncMode::RightToLeft)},
    {"sync mirror", synchronise(SyncMode::Mirror)},
    {"sync update", synchronise(SyncMode::UpdateNewer)},
    {"merge", mergeFolders, {"left", "right", "other", "merged"}, 3},
};

/// Names that meet in the folders, with contents that nothing else has or, some of them, that another folder may have,
/// too.
QByteArray randomFiles(const Operation &operation, QRandomGenerator &random)
{
    QByteArray words;
    for (const char *folder : operation.folders)
        words += QByteArray(folder) + "/ ";
    int content = 0;
    for (std::size_t i = 0; i < operation.filled; ++i) {
        const QByteArray side = operation.folders[i];
        for (quint32 files = 2 + random.bounded(4U); files > 0; --files) {
            QByteArray path = side;
            for (quint32 depth = random.bounded(3U); depth > 0; --depth)
                path += "/d" + QByteArray::number(random.bounded(2));
            const bool isShared = random.bounded(3) == 0;
            words +=
                path + "/f" + QByteArray::number(random.bounded(3)) + '=' +
                (isShared ? "both" + QByteArray::number(random.bounded(2))
                          : side + QByteArray::number(++content).rightJustified(int(random.bounded(1U, 4U)), '0')) +
                ' ';
        }
    }
    // A file that is in the way already.
    const bool hasMore = operation.folders.size() > operation.filled && random.bounded(2) == 0;
    return hasMore ? words + operation.folders.back() + "/f0=more" : words;
}

QStringList world(const Operation &operation, const OperationFixture &tree)
{
    QStringList lines;
    for (const char *folder : operation.folders) {
        for (const QString &line : tree.picture(folder))
            lines.append(QLatin1String(folder) + u'/' + line);
    }
    lines.removeIf([](const QString &line) { return line.contains(QLatin1String(".velmora-")); });
    return lines;
}

QSet<QString> contentsIn(const QStringList &lines)
{
    QSet<QString> contents;
    for (const QString &line : lines) {
        if (line.contains(u'='))
            contents.insert(line.section(u'=', 1));
    }
    return contents;
}

/// One tree with one operation, which is carried out again and again.
class Story {
public:
    Story(const Operation &operation, quint32 seed) : m_operation(operation)
    {
        QRandomGenerator random(seed);
        m_files = randomFiles(operation, random);
    }

    /// The number of calls that the operation makes.
    int learn()
    {
        OperationFixture tree;
        tree.make(m_files.constData());
        m_before = world(m_operation, tree);
        ScriptedLayer counting([](int, QLatin1String) { return FileError(); });
        const ExecutionReport report = execute(tree, counting);
        m_after = world(m_operation, tree);
        m_makesRun = !report.journalId.isEmpty();
        m_isWhole = report.isComplete() &&
                    std::all_of(report.plan.leftOut.begin(), report.plan.leftOut.end(), [](const LeftOutEntry &entry) {
                        return entry.reason == LeftOutReason::NoPlaceOnThisSide; // as of a deletion on one side
                    });
        return counting.calls();
    }

    /// Whether all of it was done when nothing failed.
    [[nodiscard]] bool isWhole() const { return m_isWhole; }

    /// What is wrong when everything fails from the call of that number on; empty when nothing is.
    QString dieAt(int call)
    {
        OperationFixture tree;
        tree.make(m_files.constData());
        ScriptedLayer dying([call](int number, QLatin1String) {
            return number < call ? FileError() : FileError{FileErrorKind::Other, QStringLiteral("dead")};
        });
        const ExecutionReport report = execute(tree, dying);
        const QSet<QString> everywhere =
            contentsIn(world(m_operation, tree) + tree.picture("data") + tree.picture("journal"));
        const QSet<QString> lost = contentsIn(m_before) - everywhere;
        if (!lost.isEmpty())
            return QStringLiteral("lost: ") + lost.values().join(u' ');
        if (report.journalId.isEmpty())
            return world(m_operation, tree) == m_before || !m_makesRun ? QString()
                                                                       : QStringLiteral("changed without a journal");
        return call % 2 == 0 ? takeBack(tree, report.journalId) : goOn(tree, report.journalId);
    }

private:
    [[nodiscard]] ExecutionReport execute(OperationFixture &tree, FileLayer &files) const
    {
        OperationJournal journal(files, tree.journalFolder());
        return OperationFixture::execute(OperationFixture::surveyed(m_operation.plan(tree)), journal, files);
    }

    [[nodiscard]] QString takeBack(OperationFixture &tree, const QString &run) const
    {
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        const UndoPlan undo = journal.planUndo(run);
        journal.setNext(QStringLiteral("again"), undo.id);
        return ended(tree, undo.plan, journal, m_before);
    }

    [[nodiscard]] QString goOn(OperationFixture &tree, const QString &run) const
    {
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        journal.setNext(QStringLiteral("again"));
        return ended(tree, journal.readRun(run).rest, journal, m_after);
    }

    [[nodiscard]] QString ended(OperationFixture &tree, const OperationPlan &plan, OperationJournal &journal,
                                const QStringList &wanted) const
    {
        const ExecutionReport report = OperationFixture::execute(plan, journal);
        if (!report.isComplete())
            return tree.problems(report).join(u'|');
        const QStringList now = world(m_operation, tree);
        return now == wanted ? QString()
                             : QStringLiteral("is ") + now.join(u' ') + QStringLiteral(" and not ") + wanted.join(u' ');
    }

    const Operation &m_operation;
    QByteArray m_files;
    QStringList m_before;
    QStringList m_after;
    bool m_makesRun = false;
    bool m_isWhole = false;
};

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const qint64 wanted = argc > 1 ? QByteArray(argv[1]).toLongLong() : 2000;
    quint32 seed = argc > 2 ? QByteArray(argv[2]).toUInt() : 1;
    QElapsedTimer clock;
    clock.start();
    qint64 points = 0;
    qint64 failures = 0;
    for (; points < wanted; ++seed) {
        const Operation &operation = operations[seed % operations.size()];
        Story story(operation, seed);
        const int calls = story.learn();
        if (!story.isWhole()) {
            ++failures;
            std::printf("%s, seed %u: not all was done\n", operation.name, seed);
        }
        for (int call = 1; call <= calls && points < wanted; ++call, ++points) {
            if (constexpr qint64 some = 10'000; points > 0 && points % some == 0) {
                std::printf("%lld crash points up to seed %u so far\n", points, seed);
                std::fflush(stdout); // a long run is looked at while it goes
            }
            const QString wrong = story.dieAt(call);
            if (wrong.isEmpty())
                continue;
            ++failures;
            std::printf("%s, seed %u, call %d: %s\n", operation.name, seed, call, qPrintable(wrong));
        }
    }
    std::printf("%lld crash points up to seed %u in %lld s, %lld with something wrong\n", points, seed,
                clock.elapsed() / 1000, failures);
    return failures == 0 && points > 0 ? 0 : 1;
}
