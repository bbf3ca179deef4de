#include "core/workers.h"

#include <QDeadlineTimer>
#include <QThread>

#include <mutex>
#include <utility>
#include <vector>

namespace velmora {

namespace {

struct Workers {
    std::mutex mutex;
    std::vector<QThread *> threads; ///< those that run, and those that ended and have not been deleted yet
};

/// Never destroyed: a worker that is left behind may still come here.
Workers &workers()
{
    static auto *const all = new Workers;
    return *all;
}

} // namespace

void startWorker(std::function<void()> work)
{
    QThread *thread = QThread::create(std::move(work));
    {
        const std::lock_guard lock(workers().mutex);
        workers().threads.push_back(thread);
    }
    // While the event loop runs, threads go as they end.
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    QObject::connect(thread, &QObject::destroyed, thread, [thread] {
        const std::lock_guard lock(workers().mutex);
        std::erase(workers().threads, thread);
    });
    thread->start(QThread::InheritPriority);
}

bool joinWorkers(std::chrono::milliseconds patience)
{
    const QDeadlineTimer deadline(patience);
    std::vector<QThread *> threads;
    {
        const std::lock_guard lock(workers().mutex);
        threads = workers().threads;
    }
    bool all = true;
    for (QThread *thread : threads) {
        if (thread->wait(deadline))
            delete thread;
        else
            all = false;
    }
    return all;
}

} // namespace velmora
