#pragma once

#include "core/crew.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <limits>
#include <mutex>
#include <vector>

namespace velmora {

/// Work that brings further work, as the folders of a tree do, for several threads. The latest found comes first, so
/// that the work goes about in the order of the tree.
template <typename Item>
class WorkStack {
public:
    void push(const std::vector<Item> &items)
    {
        if (items.empty())
            return;
        const std::lock_guard lock(m_mutex);
        m_waiting.insert(m_waiting.end(), items.rbegin(), items.rend());
        m_changed.notify_all();
    }

    /// Works off everything and what is pushed meanwhile: `work(worker, item)` is called on up to `threads` threads,
    /// several at a time. `tick` is called on the calling thread now and then while it has to wait for others. An
    /// exception ends the work and is passed on.
    void workOff(int threads, const std::function<void(int worker, const Item &item)> &work,
                 const std::function<void()> &tick)
    {
        constexpr int takenAlone = 16; // what is quickly done alone needs no other thread
        constexpr int noLimit = std::numeric_limits<int>::max();
        workUpTo(threads > 1 ? takenAlone : noLimit, 0, work, tick);
        if (!isEmpty())
            runCrew(
                threads, [&](int worker) { workUpTo(noLimit, worker, work, tick); }, tick);
    }

private:
    void workUpTo(int limit, int worker, const std::function<void(int worker, const Item &item)> &work,
                  const std::function<void()> &tick)
    {
        try {
            Item item{};
            for (int count = 0; count < limit && next(item, worker, tick); ++count) {
                work(worker, item);
                finishOne();
            }
        } catch (...) {
            close();
            throw;
        }
    }

    /// False when there will be none.
    [[nodiscard]] bool next(Item &item, int worker, const std::function<void()> &tick)
    {
        std::unique_lock lock(m_mutex);
        while (!m_closed) {
            if (!m_waiting.empty()) {
                item = std::move(m_waiting.back());
                m_waiting.pop_back();
                ++m_inWork;
                return true;
            }
            if (m_inWork == 0)
                return false;
            if (m_changed.wait_for(lock, std::chrono::milliseconds(100)) == std::cv_status::timeout && worker == 0) {
                lock.unlock();
                tick();
                lock.lock();
            }
        }
        return false;
    }

    void finishOne()
    {
        const std::lock_guard lock(m_mutex);
        if (--m_inWork == 0 && m_waiting.empty())
            m_changed.notify_all();
    }

    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
        m_changed.notify_all();
    }

    [[nodiscard]] bool isEmpty()
    {
        const std::lock_guard lock(m_mutex);
        return m_waiting.empty();
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Item> m_waiting;
    int m_inWork = 0;
    bool m_closed = false;
};

} // namespace velmora
