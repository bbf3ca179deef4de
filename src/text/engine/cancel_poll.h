#pragma once

#include "core/cancel_flag.h"

#include <QtGlobal>

#include <functional>

namespace velmora {

/// Looks at a cancel flag once in so many steps of a tight loop, and remembers a request once seen. Used by one thread.
///
/// A step stands for some nanoseconds; loops whose steps cost more say so by their weight.
class CancelPoll {
public:
    explicit CancelPoll(const CancelFlag &flag, std::function<void()> onLook = {})
        : m_flag(flag), m_onLook(std::move(onLook))
    {}
    CancelPoll(const CancelPoll &) = delete;
    CancelPoll &operator=(const CancelPoll &) = delete;

    /// Counts steps; true once the run is to end.
    [[nodiscard]] bool stop(qint64 steps = 1) noexcept
    {
        m_steps -= steps;
        return m_steps < 0 ? look() : m_stopped;
    }
    [[nodiscard]] bool stopped() const noexcept { return m_stopped; }

    /// Looks now.
    bool look() noexcept
    {
        m_steps = stepsPerLook;
        m_stopped = m_stopped || m_flag.isCancelled();
        if (m_onLook && !m_stopped)
            m_onLook();
        return m_stopped;
    }

private:
    static constexpr qint64 stepsPerLook = 1 << 16;

    CancelFlag m_flag;
    std::function<void()> m_onLook;
    qint64 m_steps = 0;
    bool m_stopped = false;
};

} // namespace velmora
