#include "core/runner.h"
#include "core/workers.h"
#include "platform/process_end.h"
#include "support/test_main.h"

#include <QProcess>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>

#include <stdexcept>

using namespace velmora;

namespace {

/// A job that holds at `gate` until the test lets it go, and says when it has begun.
struct Gate {
    QSemaphore entered;
    QSemaphore open;

    void pass()
    {
        entered.release();
        open.acquire();
    }
};

/// A job that only returns `value`.
template <typename T>
auto returning(T value)
{
    return [value](const CancelFlag &, Progress &) { return value; };
}

const QString stuckArgument = QStringLiteral("stuck");

} // namespace

/// Not a test but what one of them starts, by the argument alone: a process that ends while a worker never will.
class StuckProcess : public QObject {
    Q_OBJECT
public:
    static constexpr int status = 7;

private Q_SLOTS:
    void stuck()
    {
        if (!QCoreApplication::arguments().contains(stuckArgument))
            QSKIP("for another process");
        Runner().start(
            [](const CancelFlag &, Progress &) -> int {
                for (;;)
                    QThread::yieldCurrentThread();
            },
            [](RunOutcome<int> &&) {});
        if (!joinWorkers(std::chrono::milliseconds(50)))
            endProcessNow(status);
    }
};

class RunnerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void deliversOnTheOwnersThread()
    {
        Runner runner;
        QThread *worker = nullptr;
        QThread *delivery = nullptr;
        int answer = 0;
        const quint64 number = runner.start(
            [&worker](const CancelFlag &, Progress &) {
                worker = QThread::currentThread();
                return 42;
            },
            [&](RunOutcome<int> &&outcome) {
                delivery = QThread::currentThread();
                QCOMPARE(outcome.end, RunEnd::Done);
                QCOMPARE(outcome.number, runner.currentNumber());
                answer = *outcome.value;
            });
        QVERIFY(runner.isRunning());
        QCOMPARE(number, quint64(1));
        QTRY_COMPARE(answer, 42);
        QVERIFY(!runner.isRunning());
        QVERIFY(worker != delivery);
        QCOMPARE(delivery, QThread::currentThread());
    }

    /// What was replaced or abandoned tells nothing more; a delivery may start the next run.
    void dropsLateProgressAndResults_data()
    {
        QTest::addColumn<bool>("abandons");
        QTest::newRow("replaced") << false;
        QTest::newRow("abandoned") << true;
    }

    void dropsLateProgressAndResults()
    {
        QFETCH(bool, abandons);
        auto gate = std::make_shared<Gate>();
        Runner runner;
        runner.start(
            [gate](const CancelFlag &, Progress &progress) {
                progress.report(0, 1, 10);
                gate->pass();
                progress.report(1, 2, 10);
                return 1000;
            },
            [](RunOutcome<int> &&) { QFAIL("a dropped run delivered"); },
            [](const ProgressState &) { QFAIL("a dropped run told of its progress"); });
        gate->entered.acquire();
        if (abandons) {
            runner.abandon();
            QVERIFY(!runner.isRunning());
        }
        // The first report is queued and not yet delivered: it must be dropped as well.
        const auto noProgress = [](const ProgressState &) { QFAIL("told of another run's progress"); };
        int delivered = 0;
        std::function<void(RunOutcome<int> &&)> next = [&](RunOutcome<int> &&outcome) {
            QCOMPARE(*outcome.value, delivered + 1);
            ++delivered;
            gate->open.release();
            if (delivered < 100) // until the old one has surely ended
                runner.start(returning(delivered + 1), next, noProgress);
        };
        runner.start(returning(1), next, noProgress);
        QTRY_COMPARE(delivered, 100);
    }

    void aCancelledRunEndsOnce()
    {
        auto gate = std::make_shared<Gate>();
        Runner runner;
        QSignalSpy changes(&runner, &Runner::runningChanged);
        QList<RunEnd> ends;
        runner.start(
            [gate](const CancelFlag &cancel, Progress &) {
                gate->pass();
                return cancel.isCancelled();
            },
            [&](RunOutcome<bool> &&outcome) {
                ends.append(outcome.end);
                QVERIFY(*outcome.value);
            });
        gate->entered.acquire();
        runner.cancel();
        runner.cancel();
        QVERIFY(runner.isRunning());
        QVERIFY(runner.isCancelling());
        gate->open.release();
        QTRY_COMPARE(ends, QList<RunEnd>{RunEnd::Cancelled});
        QCOMPARE(changes.count(), 3);
    }

    void aThrowingJobIsReportedAsWhatItThrew()
    {
        using Kind = RunFault::Kind;
        const auto faultOf = [](const std::function<void()> &thrower) {
            Runner runner;
            std::optional<RunFault> fault;
            runner.start(
                [thrower](const CancelFlag &, Progress &) {
                    thrower();
                    return 1;
                },
                [&](RunOutcome<int> &&outcome) {
                    QCOMPARE(outcome.value.has_value(), outcome.end == RunEnd::Done);
                    fault = outcome.fault;
                });
            [&] { QTRY_VERIFY(fault); }();
            return fault.value_or(RunFault{});
        };
        QCOMPARE(faultOf([] {}), RunFault{});
        QCOMPARE(faultOf([] { throw std::bad_alloc(); }), (RunFault{Kind::OutOfMemory}));
        QCOMPARE(faultOf([] { throw std::runtime_error("broken"); }),
                 (RunFault{Kind::Exception, QStringLiteral("broken")}));
        QCOMPARE(faultOf([] { throw 5; }), (RunFault{Kind::Unknown}));
    }

    void destructionWaitsForNoWorker()
    {
        auto gate = std::make_shared<Gate>(); // that nobody opens before the owner is gone
        auto told = std::make_shared<QSemaphore>();
        QThread *receiverDied = nullptr;
        {
            Runner runner;
            const std::shared_ptr<void> receiver(nullptr,
                                                 [&receiverDied](void *) { receiverDied = QThread::currentThread(); });
            for (int run = 0; run < 3; ++run) {
                runner.start(
                    [gate, told](const CancelFlag &cancel, Progress &progress) {
                        gate->pass();
                        progress.report(0, 1, 2);
                        told->release(cancel.isCancelled() ? 1 : 0);
                        return 0;
                    },
                    [receiver](RunOutcome<int> &&) { QFAIL("a result arrived where nobody is left"); },
                    [receiver](const ProgressState &) { QFAIL("progress arrived where nobody is left"); });
                gate->entered.acquire();
            }
        }
        QCOMPARE(receiverDied, QThread::currentThread());
        QVERIFY(!joinWorkers(std::chrono::milliseconds(10)));
        gate->open.release(3);
        QVERIFY(joinWorkers(workersPatience));
        QVERIFY(told->tryAcquire(3));
        QCoreApplication::processEvents();
    }

    void aProcessEndsWithAStuckWorker()
    {
        // What a process that ends in this way leaves among the temporary files goes with this folder.
        const QTemporaryDir folder;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TMPDIR"), folder.path());
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("class=StuckProcess"), stuckArgument});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), StuckProcess::status);
    }

    void progressIsThrottledButAnnouncesEachPhase()
    {
        QList<ProgressState> seen;
        Progress progress([&](const ProgressState &state) { seen.append(state); }, std::chrono::hours(1));
        for (int done = 0; done < 100; ++done)
            progress.report(0, done, 100);
        progress.report(1, 7, 9, QStringLiteral("name"));
        QCOMPARE(seen, (QList<ProgressState>{{0, 0, 100, {}}, {1, 7, 9, QStringLiteral("name")}}));
    }
};

VELMORA_TEST(StuckProcess)
VELMORA_TEST(RunnerTest)
#include "runner_test.moc"
