#include "core/runner.h"

#include <QThread>

namespace velmora {

Runner::Runner(QObject *parent) : QObject(parent) {}

Runner::~Runner()
{
    m_flag.cancel();
    // Replaced runs had their flags set when they were replaced. What a worker posts from here on goes to an object
    // that is dying, and is removed with it.
    for (QThread *thread : m_threads) {
        disconnect(thread, nullptr, this, nullptr);
        thread->wait();
        delete thread;
    }
}

Runner::Run Runner::beginRun()
{
    m_flag.cancel();
    m_flag = CancelFlag();
    ++m_number;
    m_running = true;
    Q_EMIT runningChanged();
    return {m_number, m_flag};
}

void Runner::launch(std::function<void()> work)
{
    QThread *thread = QThread::create(std::move(work));
    m_threads.push_back(thread);
    connect(thread, &QThread::finished, this, [this, thread] {
        std::erase(m_threads, thread);
        thread->deleteLater();
    });
    thread->start(QThread::InheritPriority);
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

void Runner::endRun()
{
    m_running = false;
    Q_EMIT runningChanged();
}

} // namespace velmora
