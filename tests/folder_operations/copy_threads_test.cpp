#include "folder/operations/source_ahead.h"
#include "folder/operations/write_along.h"
#include "folder_operations/operation_fixture.h"
#include "folder_operations/scripted_layer.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QRandomGenerator>
#include <QSemaphore>

#include <array>

using namespace velmora;
using namespace velmora::test;

namespace {

ScriptedLayer oneThread()
{
    return ScriptedLayer([](int, QLatin1String) { return FileError(); });
}

/// Sizes around those at which contents are read or written in another way.
QByteArray contents(QRandomGenerator &random)
{
    static constexpr std::array<qsizetype, 8> sizes{0, 1, 100, 5000, (64 << 10) - 1, 64 << 10, (64 << 10) + 1, 300'000};
    return QByteArray(sizes[random.bounded(quint64(sizes.size()))], char('a' + random.bounded(26)));
}

} // namespace

/// The threads that help the one that carries out a plan.
class CopyThreadsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The same trees, changed in the same way between plan and run, once with sources opened ahead and once without.
    void openingAheadMakesNoDifference()
    {
        for (quint32 seed = 1; seed <= 12; ++seed) {
            std::array<QStringList, 2> ends;
            for (const bool ahead : {false, true}) {
                QRandomGenerator random(seed);
                OperationFixture tree;
                plant(tree, random);
                const OperationPlan plan = tree.mirror();
                disturb(tree, random);
                ScriptedLayer single = oneThread();
                const ExecutionReport report =
                    OperationFixture::execute(plan, {}, ahead ? FileLayer::native() : single);
                QStringList &end = ends[ahead ? 1 : 0];
                end = tree.problems(report) + tree.picture("right");
                for (const StepEnd step : report.ends)
                    end.append(QString::number(int(step)));
            }
            QVERIFY(ends[0].size() > 100);
            QCOMPARE(ends[1], ends[0]);
        }
    }

    void onlyWhatNoStepCanChangeIsOpenedAhead()
    {
        OperationFixture tree;
        for (int i = 0; i < 20; ++i)
            QVERIFY(makeFile(tree.path(QStringLiteral("left/%1").arg(i)), "1"));
        const auto starts = [](const OperationPlan &plan, FileLayer &files) {
            const FolderChain chain(files, plan.roots);
            return SourceAhead::start(plan, files, chain) != nullptr;
        };
        OperationPlan plan = tree.mirror();
        ScriptedLayer single = oneThread();
        QVERIFY(!starts(plan, single));
        if (!FileLayer::native().isForThreads())
            QSKIP("one thread at a time here");
        QVERIFY(starts(plan, FileLayer::native()));

        OperationPlan moves = plan;
        moves.steps.last().kind = OperationKind::Move;
        QVERIFY(!starts(moves, FileLayer::native()));
        OperationPlan within = plan;
        within.roots[1].path = tree.left() + QLatin1String("/inner");
        QVERIFY(QDir().mkpath(within.roots[1].path));
        within.roots[1].identity.reset();
        QVERIFY(!starts(within, FileLayer::native()));
        within.roots[1].path = tree.path("");
        QVERIFY(!starts(within, FileLayer::native()));
        OperationPlan few = plan;
        few.steps.resize(3);
        QVERIFY(!starts(few, FileLayer::native()));
    }

    /// Whatever happens to files that wait to be taken: what is taken is as the plan has it, or says itself that not.
    void aChangeWhileWaitingShows()
    {
        if (!FileLayer::native().isForThreads())
            QSKIP("one thread at a time here");
        OperationFixture tree;
        constexpr int count = 60;
        for (int i = 0; i < count; ++i)
            QVERIFY(makeFile(tree.path(QStringLiteral("left/%1").arg(i, 2, 10, QLatin1Char('0'))), "before"));
        const OperationPlan plan = tree.mirror();
        QCOMPARE(plan.steps.size(), count);
        const FolderChain chain(FileLayer::native(), plan.roots);
        int taken = 0;
        for (int attempt = 0; attempt < 1000 && taken == 0; ++attempt) { // the thread may come too late
            const auto ahead = SourceAhead::start(plan, FileLayer::native(), chain);
            QVERIFY(ahead);
            for (int i = 0; i < count; ++i) {
                const bool isChanged = i % 3 == 2;
                if (isChanged)
                    QVERIFY(makeFile(plan.pathOf(plan.steps[i].from), "afterwards"));
                const std::optional<OpenedSource> source = ahead->take(i);
                if (!source)
                    continue;
                ++taken;
                QCOMPARE(plan.steps[i].fromSeen.isStill(source->file->state().node), !isChanged);
                QVERIFY(plan.steps[i].fromSeen.isStill(source->node));
            }
            QVERIFY(!ahead->take(count + 100));
        }
        QVERIFY(taken > 0);
    }

    /// The system tells whoever waits for the disk of an error once, and nobody afterwards.
    void whatTheDiskRefusesMeanwhileIsKept()
    {
        OperationFixture tree;
        tree.make("left/a=1");
        QSemaphore asked;
        ScriptedLayer files([&asked](int, QLatin1String call) {
            if (call != QLatin1String("settle"))
                return FileError();
            asked.release();
            return FileError{FileErrorKind::NoSpace, {}};
        });
        QVERIFY(!WriteAlong::start(tree.mirror(), files));
        files.setForThreads();
        if (!files.canSettle())
            QSKIP("every file is flushed by itself here");
        const auto along = WriteAlong::start(tree.mirror(), files);
        QVERIFY(along);
        QVERIFY(asked.tryAcquire(1, 10'000));
        const std::map<int, FileError> errors = along->end();
        QCOMPARE(errors.size(), std::size_t(1));
        QCOMPARE(errors.at(1).kind, FileErrorKind::NoSpace);
    }

private:
    static void plant(OperationFixture &tree, QRandomGenerator &random)
    {
        tree.make("left/d/e/ left/empty/ right/d/ left/link->d");
        for (int i = 0; i < 80; ++i) {
            static constexpr std::array folders{"left/", "left/d/", "left/d/e/"};
            const QString name = QLatin1String(folders[random.bounded(quint64(folders.size()))]) + QString::number(i);
            QVERIFY(makeFile(tree.path(name), contents(random)));
            tree.setTime(name, i);
            if (random.bounded(4) == 0 && !name.startsWith(QLatin1String("left/d/e"))) {
                const QString old = QString(name).replace(QLatin1String("left/"), QLatin1String("right/"));
                QVERIFY(makeFile(tree.path(old), "old"));
                tree.setTime(old, i);
            }
        }
        tree.make("right/goes=1 right/d/goes=2");
    }

    static void disturb(OperationFixture &tree, QRandomGenerator &random)
    {
        for (const char *folder : {"left/", "left/d/", "left/d/e/"}) {
            const QStringList names = QDir(tree.path(folder)).entryList(QDir::Files | QDir::NoSymLinks, QDir::Name);
            for (const QString &name : names) {
                const QString path = tree.path(QLatin1String(folder) + name);
                switch (random.bounded(12)) {
                case 0:
                    QVERIFY(makeFile(path, "changed since"));
                    break;
                case 1:
                    QVERIFY(QFile::remove(path));
                    break;
                case 2:
                    QVERIFY(QFile::remove(path));
                    QVERIFY(QDir().mkpath(path));
                    break;
                default:
                    break;
                }
            }
        }
    }
};

VELMORA_TEST(CopyThreadsTest)
#include "copy_threads_test.moc"
