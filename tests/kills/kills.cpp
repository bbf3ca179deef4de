// Kills operations on files at random moments, and looks whether anything is lost and all of it can be taken back or
// gone on with. Usage: test_kills [kills [seed]]. The exit status is 0 when all went well.

#include "folder_operations/operation_fixture.h"
#include "folder_operations/scripted_layer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>

#include <csignal>
#include <cstdio>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace velmora;
using namespace velmora::test;

namespace {

using MakePlan = OperationPlan (*)(const OperationFixture &);

struct Operation {
    const char *name;
    MakePlan plan;
    bool isUndone = false; ///< what is killed is its undoing
};

PlanSelection everything(const PlanInput &input)
{
    PlanSelection all;
    for (qsizetype i = 0; i < input.items.size(); ++i)
        all.append(i);
    return all;
}

OperationPlan mirrorForGood(const OperationFixture &tree)
{
    return planMirror(tree.input(), Side::Left, DeleteManner::ForGood);
}

OperationPlan mirrorToBin(const OperationFixture &tree)
{
    return planMirror(tree.input(), Side::Left, DeleteManner::ToRecycleBin);
}

OperationPlan moveAll(const OperationFixture &tree)
{
    const PlanInput input = tree.input();
    return planMoveToOtherSide(input, everything(input), Side::Left);
}

const std::vector<Operation> operations{
    {"copy",
     [](const OperationFixture &tree) {
         const PlanInput input = tree.input();
         return planCopyToOtherSide(input, everything(input), Side::Left);
     }},
    {"mirror", mirrorForGood},
    {"mirror with bin", mirrorToBin},
    {"update", [](const OperationFixture &tree) { return planUpdate(tree.input(), Side::Left); }},
    {"move", moveAll},
    {"delete",
     [](const OperationFixture &tree) {
         const PlanInput input = tree.input();
         return planDelete(input, everything(input), Side::Right, DeleteManner::ForGood, DeleteScope::WholeFolder);
     }},
    {"delete to the bin",
     [](const OperationFixture &tree) {
         const PlanInput input = tree.input();
         return planDelete(input, everything(input), Side::Right, DeleteManner::ToRecycleBin,
                           DeleteScope::ListedEntries);
     }},
    {"undo of a mirror", mirrorForGood, true},
    {"undo of a mirror with bin", mirrorToBin, true},
    {"undo of a move", moveAll, true},
};

/// Files that are on one side, on the other and on both, in folders of two levels. Every file has contents of its own.
void fill(OperationFixture &tree)
{
    QString words;
    for (int i = 0; i < 8; ++i) {
        words += QStringLiteral("right/both%1=old%1 right/dir%1/b=rb%1 right/gone%1/x=gx%1 right/gone%1/deep/y=gy%1 ")
                     .arg(i);
        words += QStringLiteral("left/both%1=new%1 left/new%1=n%1 left/dir%1/b=lb%1 left/dir%1/deep/c=lc%1 ").arg(i);
    }
    tree.make(words.toUtf8().constData());
}

class Campaign {
public:
    Campaign(int kills, quint32 seed) : m_kills(kills), m_random(seed) {}

    /// True when nothing went wrong.
    bool run()
    {
        for (int tries = 0; m_inTheMiddle < m_kills && tries < 20 * m_kills; ++tries)
            tryOne(operations[std::size_t(tries) % operations.size()]);
        std::printf("%d kills in the middle of an operation (%d came too late), %d of them while undoing;\n"
                    "afterwards %d undone, %d continued; %d failures\n",
                    m_inTheMiddle, m_tooLate, m_undoings, m_undone, m_continued, m_failures);
        return m_failures == 0 && m_inTheMiddle >= m_kills;
    }

private:
    void tryOne(const Operation &operation)
    {
        OperationFixture tree;
        fill(tree);
        const QStringList before = tree.picture();
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        if (operation.isUndone)
            (void)tree.execute(operation.plan(tree), journal);
        const OperationPlan plan = operation.isUndone ? OperationPlan() : tree.surveyed(operation.plan(tree));
        if (!killWhile(operation.name, tree, operation.isUndone, plan))
            return;
        check(operation, tree, before, "after the kill");
        if (!operation.isUndone && m_random.bounded(3) == 0)
            goOn(operation, tree, before);
        else
            takeBack(operation, tree, before);
    }

    static void carryOut(const OperationFixture &tree, FileLayer &files, bool undoes, const OperationPlan &plan)
    {
        OperationJournal journal(files, tree.journalFolder());
        const UndoPlan undo = undoes ? journal.planUndo() : UndoPlan{plan, {}};
        journal.setNext(QStringLiteral("killed"), undo.id);
        (void)tree.execute(undo.plan, journal, files);
    }

    /// How long an operation takes when nobody kills it, from its first call of the file system on.
    struct Usual {
        qint64 microseconds = 0;
        int calls = 0;
    };

    /// Kills itself before the call of that number, unless it is 0; tells of its first call and of their number.
    [[noreturn]] static void beKilled(const OperationFixture &tree, bool undoes, const OperationPlan &plan, int killAt,
                                      int pipe)
    {
        const auto tell = [pipe](int calls) {
            if (::write(pipe, &calls, sizeof calls) != sizeof calls)
                std::_Exit(1);
        };
        ScriptedLayer files([&](int number, QLatin1String) {
            if (number == 1)
                tell(number);
            if (number == killAt)
                ::raise(SIGKILL);
            return FileError();
        });
        carryOut(tree, files, undoes, plan);
        tell(files.calls());
        std::_Exit(0);
    }

    /// True when the kill came in the middle: after a random time, or before a call by random.
    bool killWhile(const char *name, const OperationFixture &tree, bool undoes, const OperationPlan &plan)
    {
        Usual &usual = m_usual[QString::fromLatin1(name)];
        const bool isKnown = usual.calls > 0; // the first is never killed
        const int killAt = isKnown && m_random.bounded(2) == 0 ? m_random.bounded(1, usual.calls + 1) : 0;
        int pipe[2] = {-1, -1};
        if (::pipe(pipe) != 0)
            return false;
        const pid_t child = ::fork();
        if (child == 0)
            beKilled(tree, undoes, plan, killAt, pipe[1]);
        ::close(pipe[1]);
        int calls = 0;
        const bool hasBegun = ::read(pipe[0], &calls, sizeof calls) == sizeof calls;
        QElapsedTimer timer;
        timer.start();
        if (isKnown && killAt == 0) {
            const timespec wait{
                0, long(m_random.bounded(qint64(std::min<qint64>(usual.microseconds * 1000, 999'999'999))))};
            pollfd end{pipe[0], POLLIN, 0}; // unless the end comes first
            (void)::ppoll(&end, 1, &wait, nullptr);
            ::kill(child, SIGKILL);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        if (hasBegun && !WIFSIGNALED(status) && ::read(pipe[0], &calls, sizeof calls) == sizeof calls && !isKnown)
            usual = {timer.nsecsElapsed() / 1000 + 1, calls};
        ::close(pipe[0]);
        ++(WIFSIGNALED(status) ? m_inTheMiddle : m_tooLate);
        return WIFSIGNALED(status);
    }

    /// Every content that was there is somewhere: in its place, in the bin or in the journal.
    void check(const Operation &operation, const OperationFixture &tree, const QStringList &before, const char *when)
    {
        QSet<QString> contents;
        for (const QString &line : tree.picture(""))
            contents.insert(line.section(u'=', 1));
        for (const QString &line : before) {
            if (!line.endsWith(u'/') && !contents.contains(line.section(u'=', 1)))
                fail(operation, when, "lost " + line.toUtf8());
        }
    }

    void takeBack(const Operation &operation, const OperationFixture &tree, const QStringList &before)
    {
        // Undoing may be killed, too, and is then tried again.
        while (m_random.bounded(2) == 0 && killWhile("undoing what was killed", tree, true, OperationPlan())) {
            ++m_undoings;
            check(operation, tree, before, "after a kill of undoing");
        }
        m_undoings += operation.isUndone ? 1 : 0;
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        const UndoPlan undo = journal.planUndo();
        if (undo.refusal != UndoRefusal::None && undo.refusal != UndoRefusal::NothingToUndo)
            fail(operation, "undoing", "the journal cannot be read");
        for (const JournalEntry &entry : journal.entries().entries) {
            if (entry.isAtWork)
                fail(operation, "undoing", "a dead run is taken for one at work");
        }
        journal.setNext(QStringLiteral("undo"), undo.id);
        const ExecutionReport report = tree.execute(undo.plan, journal);
        clearLeftover(tree, journal);
        for (const QString &problem : tree.problems(report) + tree.leftOut(undo.plan))
            fail(operation, "undoing", problem.toUtf8());
        compare(operation, tree.picture(), before, "undone");
        ++m_undone;
    }

    void goOn(const Operation &operation, const OperationFixture &tree, const QStringList &before)
    {
        OperationFixture whole; // the same without a kill
        fill(whole);
        (void)whole.execute(operation.plan(whole));
        qputenv("XDG_DATA_HOME", tree.path("data").toUtf8());
        OperationJournal journal(FileLayer::native(), tree.journalFolder());
        const QList<JournalEntry> runs = journal.entries().entries;
        const PastRun run = runs.isEmpty() ? PastRun() : journal.readRun(runs.last().id);
        const OperationPlan &rest = run.rest;
        if (rest.steps.isEmpty() && run.done.steps.isEmpty()) { // killed before the plan was written down
            compare(operation, tree.picture(), before, "not begun");
            return;
        }
        const ExecutionReport report = tree.execute(rest, journal);
        clearLeftover(tree, journal);
        for (const QString &problem : tree.problems(report) + tree.leftOut(rest))
            fail(operation, "going on", problem.toUtf8());
        compare(operation, tree.picture(), whole.picture(), "continued");
        ++m_continued;
    }

    /// The next run, whatever it does, removes a copy that was being made.
    static void clearLeftover(const OperationFixture &tree, OperationJournal &journal)
    {
        (void)OperationFixture::execute(planNewFolder(tree.input(), Side::Right, QStringLiteral("next")), journal);
        QDir(tree.right()).rmdir(QStringLiteral("next"));
    }

    void compare(const Operation &operation, const QStringList &found, const QStringList &wanted, const char *what)
    {
        for (const QString &line : found) {
            if (!wanted.contains(line))
                fail(operation, what, "too much: " + line.toUtf8());
        }
        for (const QString &line : wanted) {
            if (!found.contains(line))
                fail(operation, what, "missing: " + line.toUtf8());
        }
    }

    void fail(const Operation &operation, const char *when, const QByteArray &what)
    {
        ++m_failures;
        std::printf("%s, %s: %s\n", operation.name, when, what.constData());
    }

    int m_kills;
    QRandomGenerator m_random;
    QHash<QString, Usual> m_usual;
    int m_inTheMiddle = 0;
    int m_tooLate = 0;
    int m_undoings = 0;
    int m_undone = 0;
    int m_continued = 0;
    int m_failures = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int kills = arguments.size() > 1 ? arguments[1].toInt() : 200;
    const quint32 seed = arguments.size() > 2 ? arguments[2].toUInt() : QRandomGenerator::global()->generate();
    std::printf("seed %u\n", seed);
    return Campaign(kills, seed).run() ? 0 : 1;
}
