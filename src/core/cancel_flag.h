#pragma once

#include <atomic>
#include <memory>

namespace velmora {

/// The request to end one run early, shared by the side that asks and the worker that looks.
///
/// Copies refer to the same flag. A flag is made for one run, can be set from any thread and is never cleared, so a
/// late request can never reach a later run.
class CancelFlag {
public:
    CancelFlag() : m_requested(std::make_shared<std::atomic<bool>>(false)) {}

    void cancel() const noexcept { m_requested->store(true, std::memory_order_relaxed); }
    [[nodiscard]] bool isCancelled() const noexcept { return m_requested->load(std::memory_order_relaxed); }

private:
    std::shared_ptr<std::atomic<bool>> m_requested;
};

} // namespace velmora
