#include "core/runner.h"

#include "core/workers.h"

#include <exception>
#include <mutex>
#include <new>

namespace velmora {

RunFault RunFault::ofCurrentException()
{
    try {
        throw;
    } catch (const std::bad_alloc &) {
        return {Kind::OutOfMemory};
    } catch (const std::exception &exception) {
        return {Kind::Exception, QString::fromLocal8Bit(exception.what())};
    } catch (...) {
        return {Kind::Unknown};
    }
}

class Runner::Channel {
public:
    explicit Channel(Runner *runner) : m_runner(runner) {}

    /// Queues a call with the runner; drops it when there is none any more.
    void post(std::function<void(Runner &)> call)
    {
        // Held while queuing: the runner cannot go meanwhile. What is queued when it goes is removed with it.
        const std::lock_guard lock(m_mutex);
        if (m_runner) {
            QMetaObject::invokeMethod(
                m_runner, [runner = m_runner, call = std::move(call)] { call(*runner); }, Qt::QueuedConnection);
        }
    }

    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_runner = nullptr;
    }

private:
    std::mutex m_mutex;
    Runner *m_runner;
};

Progress Runner::Run::progress() const
{
    if (!tellsProgress)
        return {};
    return Progress([number = number, channel = channel](const ProgressState &state) {
        channel->post([number, state](Runner &runner) { runner.tellProgress(number, state); });
    });
}

void Runner::Run::deliver(Parcel outcome) const
{
    channel->post(
        [number = number, outcome = std::move(outcome)](Runner &runner) { runner.takeOutcome(number, outcome); });
}

Runner::Runner(QObject *parent) : QObject(parent), m_channel(std::make_shared<Channel>(this)) {}

Runner::~Runner()
{
    // Replaced runs had their flags set when they were replaced.
    m_flag.cancel();
    m_channel->close();
}

Runner::Run Runner::beginRun(Receivers receivers)
{
    m_flag.cancel();
    m_flag = CancelFlag();
    ++m_number;
    m_running = true;
    const Run run{m_number, m_flag, m_channel, bool(receivers.progressed)};
    m_receivers = std::make_shared<Receivers>(std::move(receivers));
    Q_EMIT runningChanged();
    return run;
}

void Runner::launch(std::function<void()> work)
{
    startWorker(std::move(work));
}

void Runner::cancel()
{
    if (!m_running || m_flag.isCancelled())
        return;
    m_flag.cancel();
    Q_EMIT runningChanged();
}

void Runner::abandon()
{
    m_flag.cancel();
    if (m_running)
        endRun();
}

void Runner::tellProgress(quint64 number, const ProgressState &state)
{
    if (!isCurrent(number))
        return;
    const auto receivers = m_receivers; // it may start the next run
    receivers->progressed(state);
}

void Runner::takeOutcome(quint64 number, const Parcel &outcome)
{
    if (!isCurrent(number))
        return;
    const auto receivers = m_receivers;
    endRun();
    receivers->finished(outcome);
}

void Runner::endRun()
{
    m_running = false;
    m_receivers.reset();
    Q_EMIT runningChanged();
}

} // namespace velmora
