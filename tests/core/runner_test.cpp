#include "core/runner.h"
#include "support/test_main.h"

#include <QSemaphore>
#include <QSignalSpy>
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

} // namespace

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

    void dropsLateProgressAndResultsAfterANewStart()
    {
        auto gate = std::make_shared<Gate>();
        Runner runner;
        int delivered = 0;
        const auto count = [&](RunOutcome<int> &&outcome) { delivered += *outcome.value; };
        runner.start(
            [gate](const CancelFlag &, Progress &progress) {
                progress.report(0, 1, 10);
                gate->pass();
                progress.report(1, 2, 10);
                return 100;
            },
            count, [](const ProgressState &) { QFAIL("a replaced run told of its progress"); });
        gate->entered.acquire();
        // The first report is queued and not yet delivered: replacing the run must drop it as well.
        runner.start(returning(1), count);
        QTRY_COMPARE(delivered, 1);
        gate->open.release();
        for (int expected = 2; expected < 20; ++expected) { // until the old one has surely ended
            runner.start(returning(1), count);
            QTRY_COMPARE(delivered, expected);
        }
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

    void aThrowingJobFails()
    {
        Runner runner;
        QList<RunEnd> ends;
        runner.start([](const CancelFlag &, Progress &) -> int { throw std::bad_alloc(); },
                     [&](RunOutcome<int> &&outcome) {
                         ends.append(outcome.end);
                         QVERIFY(!outcome.value);
                     });
        QTRY_COMPARE(ends, QList<RunEnd>{RunEnd::Failed});
    }

    void aDeliveryMayStartTheNextRun()
    {
        Runner runner;
        QList<int> delivered;
        std::function<void(RunOutcome<int> &&)> next = [&](RunOutcome<int> &&outcome) {
            delivered.append(*outcome.value);
            if (*outcome.value < 5)
                runner.start(returning(*outcome.value + 1), next);
        };
        runner.start(returning(1), next);
        QTRY_COMPARE(delivered, (QList<int>{1, 2, 3, 4, 5}));
    }

    void destructionStopsAndJoinsEveryWorker()
    {
        std::atomic<int> alive{0};
        bool delivered = false;
        {
            Runner runner;
            for (int run = 0; run < 3; ++run) {
                auto begun = std::make_shared<QSemaphore>();
                runner.start(
                    [&alive, begun](const CancelFlag &cancel, Progress &) {
                        ++alive;
                        begun->release();
                        while (!cancel.isCancelled())
                            QThread::yieldCurrentThread();
                        --alive;
                        return 0;
                    },
                    [&](RunOutcome<int> &&) { delivered = true; });
                begun->acquire();
            }
        }
        QCOMPARE(alive.load(), 0);
        QCoreApplication::processEvents();
        QVERIFY(!delivered);
    }

    void anAbandonedRunDeliversNothing()
    {
        auto gate = std::make_shared<Gate>();
        Runner runner;
        runner.start(
            [gate](const CancelFlag &, Progress &) {
                gate->pass();
                return 0;
            },
            [](RunOutcome<int> &&) { QFAIL("an abandoned run delivered"); });
        gate->entered.acquire();
        runner.abandon();
        QVERIFY(!runner.isRunning());
        gate->open.release();
        bool done = false;
        runner.start(returning(0), [&](RunOutcome<int> &&) { done = true; });
        QTRY_VERIFY(done);
    }

    void aThousandRestartsDeliverOnlyTheLast()
    {
        Runner runner;
        QList<int> delivered;
        for (int run = 0; run < 1000; ++run)
            runner.start(returning(run), [&](RunOutcome<int> &&outcome) { delivered.append(*outcome.value); });
        QTRY_VERIFY_WITH_TIMEOUT(!delivered.isEmpty(), 30000);
        QCOMPARE(delivered, QList<int>{999});
        QCOMPARE(runner.currentNumber(), quint64(1000));
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

VELMORA_TEST(RunnerTest)
#include "runner_test.moc"
