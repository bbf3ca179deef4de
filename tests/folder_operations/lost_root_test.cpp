#include "folder/operations/folder_chain.h"
#include "folder_operations/operation_fixture.h"
#include "folder_operations/scripted_layer.h"
#include "support/test_main.h"

#include <QDir>
#include <QRegularExpression>

using namespace velmora;
using namespace velmora::test;

/// Folders that are taken away while a run is at work, as a drive is.
class LostRootTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void endsTheRunAndCanBeUndoneOnceItIsBack_data()
    {
        QTest::addColumn<QString>("lost");
        QTest::addColumn<bool>("isReplaced");
        for (const char *lost : {"left", "right"}) {
            QTest::addRow("%s is gone", lost) << QString::fromLatin1(lost) << false;
            QTest::addRow("another %s is there", lost) << QString::fromLatin1(lost) << true;
        }
    }
    void endsTheRunAndCanBeUndoneOnceItIsBack()
    {
        QFETCH(const QString, lost);
        QFETCH(const bool, isReplaced);
        for (int k = 1;; ++k) {
            OperationFixture tree;
            tree.make("left/a=new left/dir/b=b left/dir/c=c left/z=z right/a=old right/gone/x=x right/y=y");
            const QStringList before = tree.picture();
            OperationJournal journal(FileLayer::native(), tree.journalFolder());
            bool isTaken = false;
            QStringList then;
            bool isOver = false; // the end is written down
            ScriptedLayer layer([&](int number, QLatin1String call) {
                isOver = isOver || call == QLatin1String("sink.flush");
                if (number == k && !isOver) {
                    isTaken = take(tree, lost, isReplaced);
                    then = tree.picture("away");
                }
                return FileError();
            });
            const OperationPlan plan = tree.mirror();
            OperationJournal writing(layer, tree.journalFolder());
            const ExecutionReport report = OperationFixture::execute(plan, writing, layer);
            if (!isTaken)
                break;
            QCOMPARE(tree.picture(lost), QStringList());
            const qint64 done = report.ends.count(StepEnd::Done);
            if (!report.isComplete()) { // all may have been done before the source went
                const QString steps = QString::number(std::max<qint64>(plan.steps.size() - done, 1));
                const QString code = said(OperationErrorCode::RootMissing, lost.toUtf8().constData());
                QCOMPARE(tree.problems(report), {code + (steps == u'1' ? QString() : QStringLiteral(" x") + steps)});
            }
            QVERIFY(!report.isComplete() || (lost == QLatin1String("left") && done == plan.steps.size()));
            for (qsizetype i = 0; lost == QLatin1String("right") && i < report.ends.size(); ++i) {
                const QString file = report.plan.steps[i].to.relative;
                const QStringList made =
                    tree.picture("left").filter(QRegularExpression(u'^' + file + QLatin1String("[=/]")));
                if (report.ends[i] == StepEnd::Done && !file.isEmpty())
                    QVERIFY2(then.contains(made.first()), qPrintable(file));
            }
            // While it is away nothing is taken back in what is there instead.
            if (lost == QLatin1String("right") && !report.journalId.isEmpty() && done > 0)
                QCOMPARE(journal.planUndo(report.journalId).plan.refusedAt, tree.right());
            QVERIFY(!isReplaced || QDir().rmdir(tree.path(lost)));
            QVERIFY(QDir().rename(tree.path("away"), tree.path(lost)));
            if (report.journalId.isEmpty())
                continue;
            const UndoPlan undo = journal.planUndo(report.journalId);
            QCOMPARE(tree.leftOut(undo.plan), QStringList());
            QVERIFY(OperationFixture::execute(undo.plan, journal).isComplete());
            QCOMPARE(tree.picture(), before);
        }
    }

    void sourcesStayWhenTheOtherVolumeGoes()
    {
        for (int k = 1;; ++k) {
            OperationFixture tree;
            tree.make("left/a=1 left/b=2 left/dir/c=3 right/there=4");
            const QStringList before = tree.picture("left");
            std::optional<QStringList> then; // on the other volume, which has nothing more than that
            ScriptedLayer layer([&, other = betweenVolumes()](int number, QLatin1String call) {
                if (number == k && take(tree, QStringLiteral("right"), true))
                    then = tree.picture("away");
                return other(number, call);
            });
            OperationJournal journal(layer, tree.journalFolder());
            const OperationPlan plan =
                OperationFixture::surveyed(planMoveToOtherSide(tree.input(), {0, 1, 2, 3}, Side::Left));
            const ExecutionReport report = OperationFixture::execute(plan, journal, layer);
            if (!then)
                break;
            QCOMPARE(tree.picture("right"), QStringList());
            const QStringList left = tree.picture("left") + *then;
            for (const QString &file : before.filter(QStringLiteral("=")))
                QVERIFY2(left.contains(file), qPrintable(QStringLiteral("%1 at %2").arg(file).arg(k)));
        }
    }

    void whatComparedAnotherFolderIsRefused()
    {
        OperationFixture tree;
        tree.make("left/a=1");
        PlanInput input = tree.input();
        input.identities = identitiesOf(FileLayer::native(), input.roots);
        QVERIFY(take(tree, QStringLiteral("right"), true));
        QCOMPARE(OperationFixture::surveyed(planMirror(input, Side::Left, DeleteManner::ForGood)).refusedAt,
                 tree.right());
    }

private:
    static bool take(const OperationFixture &tree, const QString &root, bool isReplaced)
    {
        return QDir().rename(tree.path(root), tree.path("away")) && (!isReplaced || QDir().mkdir(tree.path(root)));
    }
};

VELMORA_TEST(LostRootTest)
#include "lost_root_test.moc"
