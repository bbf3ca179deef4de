#include "folder_operations/operation_fixture.h"
#include "folder_operations/scripted_layer.h"
#include "support/test_main.h"

using namespace velmora;
using namespace velmora::test;

namespace {

using MakePlan = std::function<OperationPlan(const OperationFixture &)>;

struct Case {
    const char *name;
    const char *files;  ///< separated by blanks
    bool staysOnVolume; ///< a single folder cannot be renamed to another volume
    bool needsBin;
    MakePlan plan;
};

const QString otherName = QStringLiteral("other");

const std::vector<Case> &cases()
{
    using Tree = const OperationFixture &;
    static const char *const mixture =
        "left/a=new-a left/dir/b=new-b left/dir/c=new-c right/dir/b=old-b right/gone/d=old-d "
        "right/gone/deep/e=old-e right/f=old-f";
    static const char *const hidden = "left/dir/a=1 left/dir/.b=2 left/dir/deep/c=3";
    constexpr auto left = Side::Left;
    const auto mirror = [](DeleteManner manner) {
        return [manner](Tree tree) { return planMirror(tree.input(), Side::Left, manner); };
    };
    const auto deletion = [](DeleteManner manner) {
        return
            [manner](Tree tree) { return planDelete(tree.input(), {0}, Side::Left, manner, DeleteScope::WholeFolder); };
    };
    static const std::vector<Case> all{
        {"copy", "left/a=1 left/dir/b=2", false, false,
         [](Tree tree) {
             return planCopyToOtherSide(tree.input(), {0, 1, 2}, left);
         }},
        {"replace", "right/a=old left/a=new", false, false, [](Tree tree) { return planUpdate(tree.input(), left); }},
#ifdef Q_OS_UNIX
        {"link", "left/a->nowhere/b left/b->.. right/c=1", false, false, mirror(DeleteManner::ForGood)},
#endif
        {"mirror", mixture, false, false, mirror(DeleteManner::ForGood)},
        {"mirror with bin", mixture, false, true, mirror(DeleteManner::ToRecycleBin)},
        {"move", "left/dir/a=1 left/dir/deep/b=2 right/dir/a=old", false, false,
         [](Tree tree) { return planMoveToOtherSide(tree.input(), {0}, left); }},
        {"move to a place", "left/dir/a=1 left/dir/deep/b=2 other/dir/a=old", false, false,
         [](Tree tree) { return planMoveTo(tree.input(), {0}, left, tree.path(otherName), IfPresent::Replace); }},
        {"rename", "left/dir/a=1", true, false,
         [](Tree tree) { return planRename(tree.input(), 0, left, QStringLiteral("new")); }},
        {"new folder", "left/a=1", false, false,
         [](Tree tree) { return planNewFolder(tree.input(), Side::Right, QStringLiteral("new")); }},
        {"delete whole", hidden, false, false, deletion(DeleteManner::ForGood)},
        {"recycle whole", hidden, false, true, deletion(DeleteManner::ToRecycleBin)},
    };
    return all;
}

/// Which failures a run meets.
struct Weather {
    const char *name;
    bool staysBad;        ///< from the first failure on everything fails
    bool hasOtherVolumes; ///< the journal and the sides lie on different volumes
};

const std::vector<Weather> weathers{
    {"one failure", false, false}, {"the disk dies", true, false}, {"one failure between volumes", false, true}};

/// Contents of all files below a folder.
QStringList contentsIn(const OperationFixture &tree, const Name &folder)
{
    QStringList contents;
    for (const QString &line : tree.picture(folder)) {
        if (line.contains(u'='))
            contents.append(line.section(u'=', 1));
        else if (line.contains(QLatin1String("->")))
            contents.append(line.section(u'/', -1));
    }
    return contents;
}

QStringList world(const OperationFixture &tree)
{
    return tree.picture() + tree.picture(otherName);
}

/// What is neither at its place before nor at its place after the operation.
QStringList strange(QStringList now, const QStringList &before, const QStringList &after)
{
    now.removeIf([&](const QString &line) { return before.contains(line) || after.contains(line); });
    return now;
}

} // namespace

class FaultTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Every call of every operation fails once: nothing is lost or half, the failure is told, and what was done can be
    /// undone.
    void everyCallFails_data()
    {
        QTest::addColumn<int>("operation");
        QTest::addColumn<int>("weather");
        for (std::size_t c = 0; c < cases().size(); ++c) {
            for (std::size_t w = 0; w < weathers.size(); ++w) {
                if (!cases()[c].staysOnVolume || !weathers[w].hasOtherVolumes)
                    QTest::addRow("%s, %s", cases()[c].name, weathers[w].name) << int(c) << int(w);
            }
        }
    }

    void everyCallFails()
    {
        QFETCH(int, operation);
        QFETCH(int, weather);
        const Case &tried = cases()[std::size_t(operation)];
        QStringList after;
        int failures = 0;
        for (int failing = 0;; ++failing) { // 0: none, to know the result
            OperationFixture tree;
            if (failing == 0 && tried.needsBin && !tree.hasRecycleBin())
                QSKIP("no recycle bin here");
            tree.make(tried.files);
            const QStringList before = world(tree);
            const OperationPlan plan = OperationFixture::surveyed(tried.plan(tree));
            QVERIFY(!plan.steps.isEmpty());

            QLatin1String failed;
            ScriptedLayer layer(script(weathers[std::size_t(weather)], failing, failed));
            OperationJournal journal(layer, tree.journalFolder());
            const ExecutionReport report = OperationFixture::execute(plan, journal, layer);
            if (failing == 0) {
                after = world(tree);
                QVERIFY2(report.isComplete(), qPrintable(tree.problems(report).join(u'|')));
            } else if (failed.isEmpty()) {
                QCOMPARE(world(tree), after);
                break;
            } else {
                ++failures;
                check(tree, report, before, after, weathers[std::size_t(weather)]);
            }
            if (QTest::currentTestFailed()) {
                qWarning("with call %d (%s) failing", failing, failed.data());
                return;
            }
            const bool continues = weathers[std::size_t(weather)].staysBad && failing % 2 == 1;
            undoOrContinue(tree, report, before, after, continues);
            if (QTest::currentTestFailed()) {
                qWarning("undoing with call %d (%s) failing", failing, failed.data());
                return;
            }
        }
        QVERIFY(failures > 10);
    }

private:
    static ScriptedLayer::Script script(const Weather &weather, int failing, QLatin1String &failed)
    {
        return [&weather, failing, &failed, crossing = betweenVolumes()](int number, QLatin1String call) {
            if (failing > 0 && (number == failing || (weather.staysBad && number > failing))) {
                if (failed.isEmpty())
                    failed = call;
                return FileError{FileErrorKind::Other, QStringLiteral("injected")};
            }
            return weather.hasOtherVolumes ? crossing(number, call) : FileError();
        };
    }

    static void check(const OperationFixture &tree, const ExecutionReport &report, const QStringList &before,
                      const QStringList &after, const Weather &weather)
    {
        const QStringList now = world(tree);
        QStringList odd = strange(now, before, after);
        if (weather.staysBad) { // nobody could clean up, or swap back what a move was to replace
            odd.removeIf([&before](const QString &line) {
                const QString content = line.mid(line.indexOf(u'='));
                return line.contains(QLatin1String(".velmora-")) ||
                       std::any_of(before.begin(), before.end(),
                                   [&content](const QString &old) { return old.endsWith(content); });
            });
        }
        QVERIFY2(odd.isEmpty(), qPrintable(odd.join(u'|')));

        const QStringList everywhere = contentsIn(tree, "left") + contentsIn(tree, "right") +
                                       contentsIn(tree, otherName) + contentsIn(tree, "data") +
                                       contentsIn(tree, "journal");
        for (const QString &line : before) {
            const QString content = line.contains(u'=') ? line.section(u'=', 1) : line.section(u'/', -1);
            if (!line.endsWith(u'/'))
                QVERIFY2(everywhere.contains(content), qPrintable(QStringLiteral("lost: ") + line));
        }
        if (now != after)
            QVERIFY2(!report.problems.isEmpty() || report.plan.refusal != PlanRefusal::None, "not reported");
    }

    /// Takes the run back or, every other time that it was cut short, goes on with it.
    static void undoOrContinue(OperationFixture &tree, const ExecutionReport &report, const QStringList &before,
                               const QStringList &after, bool continues)
    {
        if (report.journalId.isEmpty()) {
            QCOMPARE(report.done, OperationTotals());
            return;
        }
        ScriptedLayer calm([](int, QLatin1String) { return FileError(); });
        OperationJournal journal(calm, tree.journalFolder());
        const UndoPlan undo = journal.planUndo(report.journalId);
        QCOMPARE(undo.refusal, UndoRefusal::None);
        const OperationPlan plan = continues ? journal.readRun(report.journalId).rest : undo.plan;
        journal.setNext(QStringLiteral("again"), continues ? QString() : undo.id);
        const ExecutionReport again = OperationFixture::execute(plan, journal, calm);
        QVERIFY2(again.isComplete(), qPrintable(tree.problems(again).join(u'|')));
        QCOMPARE(tree.leftOut(plan), QStringList());
        if (!plan.steps.isEmpty()) // else there was no run
            QVERIFY2(world(tree).filter(QStringLiteral(".velmora-")).isEmpty(), "the copy is left");
        QStringList now = world(tree);
        now.removeIf([](const QString &line) { return line.contains(QLatin1String(".velmora-")); });
        QCOMPARE(now, continues ? after : before);
    }
};

VELMORA_TEST(FaultTest)
#include "fault_test.moc"
