#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"

#include <QObject>

#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

class QThread;

namespace velmora {

/// How a run ended. An error that a job expects is part of its result and ends as Done.
enum class RunEnd {
    Done,      ///< the job returned and nobody asked it to stop
    Cancelled, ///< the flag was set before the job returned; what it returned is handed over all the same
    Failed,    ///< the job threw (out of memory, above all): there is no value
};

/// What one run hands over, exactly once.
template <typename T>
struct RunOutcome {
    quint64 number = 0; ///< the run's number as `Runner::start` returned it
    RunEnd end = RunEnd::Failed;
    std::optional<T> value; ///< empty when the run failed
};

/// Runs jobs of one owner, one current run at a time, each on a worker thread made for it.
///
/// Lives on the owner's thread, where all its functions are called and all deliveries arrive. A job is a callable
/// `T job(const CancelFlag &, Progress &)` that owns copies of whatever it reads; it runs on the worker and touches
/// nothing else. Each start makes a new flag and the next number, so starting again replaces the current run without
/// waiting for it: the old run is told to stop and whatever it still delivers, progress too, is dropped. Every current
/// run ends with exactly one delivery unless it is replaced or the runner is destroyed. Destruction tells all workers
/// to stop and joins them.
class Runner final : public QObject {
    Q_OBJECT
public:
    explicit Runner(QObject *parent = nullptr);
    ~Runner() override;
    Runner(const Runner &) = delete;
    Runner &operator=(const Runner &) = delete;

    /// Starts `job` and returns the number of its run. `finished(RunOutcome<T> &&)` and `progressed(const ProgressState
    /// &)` are called on the runner's thread, from its event loop, while the run is current; `finished` may start the
    /// next run.
    template <typename Job, typename Finished>
    quint64 start(Job job, Finished finished, std::function<void(const ProgressState &)> progressed = {});

    /// Asks the current run to stop. It stays current and still delivers its outcome.
    void cancel();

    /// Asks the current run to stop and drops whatever it would deliver.
    void abandon();

    [[nodiscard]] bool isRunning() const noexcept { return m_running; }
    /// True from `cancel()` until the run has ended.
    [[nodiscard]] bool isCancelling() const noexcept { return m_running && m_flag.isCancelled(); }
    /// The number of the latest run, 0 before the first.
    [[nodiscard]] quint64 currentNumber() const noexcept { return m_number; }

Q_SIGNALS:
    /// A run started, ended or was abandoned: `isRunning` or `isCancelling` has changed.
    void runningChanged();

private:
    struct Run {
        quint64 number;
        CancelFlag flag;
    };

    Run beginRun();
    void launch(std::function<void()> work);
    [[nodiscard]] bool isCurrent(quint64 number) const noexcept { return m_running && number == m_number; }
    void endRun();

    std::vector<QThread *> m_threads; ///< live workers, this run's and those of replaced ones
    CancelFlag m_flag;
    quint64 m_number = 0;
    bool m_running = false;
};

template <typename Job, typename Finished>
quint64 Runner::start(Job job, Finished finished, std::function<void(const ProgressState &)> progressed)
{
    using Value = std::invoke_result_t<Job &, const CancelFlag &, Progress &>;
    static_assert(std::invocable<Finished &, RunOutcome<Value> &&>);

    const Run run = beginRun();
    // Called and, with the last delivery, destroyed on this thread: they may hold objects that belong to it.
    auto onFinished = std::make_shared<Finished>(std::move(finished));
    auto onProgress = std::make_shared<std::function<void(const ProgressState &)>>(std::move(progressed));

    launch([this, run, job = std::make_shared<Job>(std::move(job)), onFinished, onProgress]() mutable {
        auto outcome = std::make_shared<RunOutcome<Value>>();
        outcome->number = run.number;
        try {
            Progress progress;
            if (*onProgress) {
                progress = Progress([this, run, onProgress](const ProgressState &state) {
                    QMetaObject::invokeMethod(
                        this,
                        [this, run, onProgress, state] {
                            if (isCurrent(run.number))
                                (*onProgress)(state);
                        },
                        Qt::QueuedConnection);
                });
            }
            outcome->value.emplace((*job)(run.flag, progress));
            outcome->end = run.flag.isCancelled() ? RunEnd::Cancelled : RunEnd::Done;
        } catch (...) {
            outcome->end = RunEnd::Failed;
        }
        job.reset(); // the inputs' memory is free before the result is shown
        QMetaObject::invokeMethod(
            this,
            [this, run, onFinished = std::move(onFinished), onProgress = std::move(onProgress),
             outcome = std::move(outcome)] {
                if (!isCurrent(run.number))
                    return;
                endRun();
                (*onFinished)(std::move(*outcome));
            },
            Qt::QueuedConnection);
    });
    return run.number;
}

} // namespace velmora
