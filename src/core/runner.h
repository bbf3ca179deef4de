#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"

#include <QObject>

#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>

namespace velmora {

/// How a run ended. An error that a job expects is part of its result and ends as Done.
enum class RunEnd {
    Done,      ///< the job returned and nobody asked it to stop
    Cancelled, ///< the flag was set before the job returned; what it returned is handed over all the same
    Failed,    ///< the job threw: there is no value
};

/// What a job threw.
struct RunFault {
    enum class Kind : quint8 {
        None,        ///< it returned
        OutOfMemory, ///< std::bad_alloc
        Exception,   ///< another std::exception; `what` has what it says
        Unknown,     ///< something else
    };

    Kind kind = Kind::None;
    QString what = {};

    /// The exception that is being handled; for use in a handler.
    [[nodiscard]] static RunFault ofCurrentException();
    friend bool operator==(const RunFault &, const RunFault &) = default;
};

/// What one run hands over, exactly once.
template <typename T>
struct RunOutcome {
    quint64 number = 0; ///< the run's number as `Runner::start` returned it
    RunEnd end = RunEnd::Failed;
    std::optional<T> value; ///< empty when the run failed
    RunFault fault;         ///< why it failed
};

/// Runs jobs of one owner, one current run at a time, each on a worker thread made for it.
///
/// Lives on the owner's thread, where all its functions are called and all deliveries arrive. A job is a callable
/// `T job(const CancelFlag &, Progress &)` that owns whatever it reads; it runs on the worker and touches nothing else.
/// Each start makes a new flag and the next number, so starting again replaces the current run without waiting for it:
/// the old run is told to stop and whatever it still delivers, progress too, is dropped. Every current run ends with
/// exactly one delivery unless it is replaced or the runner is destroyed.
///
/// Destruction tells all workers to stop and waits for none of them: a folder on a network that does not answer may
/// hold one for minutes. A job may therefore outlive its runner, and its value is then dropped on the worker. The end
/// of the process waits (`joinWorkers`).
class Runner final : public QObject {
    Q_OBJECT
public:
    explicit Runner(QObject *parent = nullptr);
    ~Runner() override;
    Runner(const Runner &) = delete;
    Runner &operator=(const Runner &) = delete;

    /// Starts `job` and returns the number of its run. `finished(RunOutcome<T> &&)` and `progressed(const ProgressState
    /// &)` are called on the runner's thread, from its event loop, while the run is current, and destroyed there;
    /// `finished` may start the next run.
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
    /// The way from the workers to the runner, which may be gone when they come.
    class Channel;
    /// An outcome whose type the receiver knows.
    using Parcel = std::shared_ptr<void>;

    /// What is called for the current run.
    struct Receivers {
        std::function<void(const Parcel &)> finished;
        std::function<void(const ProgressState &)> progressed;
    };

    /// What a worker knows of its run.
    struct Run {
        quint64 number = 0;
        CancelFlag flag;
        std::shared_ptr<Channel> channel;
        bool tellsProgress = false;

        [[nodiscard]] Progress progress() const;
        void deliver(Parcel outcome) const;
    };

    Run beginRun(Receivers receivers);
    static void launch(std::function<void()> work);
    [[nodiscard]] bool isCurrent(quint64 number) const noexcept { return m_running && number == m_number; }
    void tellProgress(quint64 number, const ProgressState &state);
    void takeOutcome(quint64 number, const Parcel &outcome);
    void endRun();

    std::shared_ptr<Channel> m_channel;
    std::shared_ptr<Receivers> m_receivers; ///< null while nothing runs
    CancelFlag m_flag;
    quint64 m_number = 0;
    bool m_running = false;
};

template <typename Job, typename Finished>
quint64 Runner::start(Job job, Finished finished, std::function<void(const ProgressState &)> progressed)
{
    using Value = std::invoke_result_t<Job &, const CancelFlag &, Progress &>;
    using Outcome = RunOutcome<Value>;
    static_assert(std::invocable<Finished &, Outcome &&>);

    auto receiver = std::make_shared<Finished>(std::move(finished));
    const Run run = beginRun({[receiver = std::move(receiver)](const Parcel &outcome) {
                                  (*receiver)(std::move(*std::static_pointer_cast<Outcome>(outcome)));
                              },
                              std::move(progressed)});
    launch([run, job = std::make_shared<Job>(std::move(job))]() mutable {
        auto outcome = std::make_shared<Outcome>();
        outcome->number = run.number;
        try {
            Progress progress = run.progress();
            outcome->value.emplace((*job)(run.flag, progress));
            outcome->end = run.flag.isCancelled() ? RunEnd::Cancelled : RunEnd::Done;
        } catch (...) {
            outcome->fault = RunFault::ofCurrentException();
        }
        job.reset(); // the inputs' memory is free before the result is shown
        run.deliver(std::move(outcome));
    });
    return run.number;
}

} // namespace velmora
