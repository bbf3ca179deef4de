#include "core/crew.h"

#include <QThread>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace velmora {

namespace {

/// Counts helpers down and keeps the first exception.
class Attendance {
public:
    void run(const std::function<void(int)> &work, int worker)
    {
        try {
            work(worker);
        } catch (...) {
            const std::lock_guard lock(m_mutex);
            if (!m_exception)
                m_exception = std::current_exception();
        }
    }

    void arrive()
    {
        const std::lock_guard lock(m_mutex);
        ++m_present;
    }

    void leave()
    {
        const std::lock_guard lock(m_mutex);
        if (--m_present == 0)
            m_allGone.notify_all();
    }

    /// True when all helpers have left.
    bool awaitAll(std::chrono::milliseconds patience)
    {
        std::unique_lock lock(m_mutex);
        return m_allGone.wait_for(lock, patience, [this] { return m_present == 0; });
    }

    void rethrow() const
    {
        if (m_exception)
            std::rethrow_exception(m_exception);
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_allGone;
    int m_present = 0;
    std::exception_ptr m_exception;
};

} // namespace

int crewSize()
{
    constexpr int most = 8;
    return std::clamp(QThread::idealThreadCount(), 1, most);
}

void runCrew(int size, const std::function<void(int)> &work, const std::function<void()> &tick)
{
    Attendance attendance;
    {
        std::vector<std::jthread> helpers;
        for (int worker = 1; worker < size; ++worker) {
            attendance.arrive();
            try {
                helpers.emplace_back([&attendance, &work, worker] {
                    attendance.run(work, worker);
                    attendance.leave();
                });
            } catch (const std::system_error &) {
                attendance.leave();
                break;
            }
        }
        attendance.run(work, 0);
        while (!attendance.awaitAll(std::chrono::milliseconds(100))) {
            if (tick)
                tick();
        }
    }
    attendance.rethrow();
}

} // namespace velmora
