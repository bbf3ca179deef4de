#pragma once

#include <chrono>
#include <functional>

namespace velmora {

/// Calls `work`, which must not throw, on a thread made for it. Nobody waits for it before the process ends: what it
/// uses is its own, or lasts as long as the process. Reentrant.
void startWorker(std::function<void()> work);

/// Waits until every worker has ended, `patience` in all at most; false when one still runs. For the end of the
/// process, on the main thread and before the application object goes. A process with workers left must end at once
/// (`endProcessNow`), as they may use whatever it would take down.
[[nodiscard]] bool joinWorkers(std::chrono::milliseconds patience);

/// How long the end of the process waits for workers that were told to stop: the time of a network drive to answer that
/// it is gone, and of a file that is being written.
inline constexpr std::chrono::milliseconds workersPatience{30000};

} // namespace velmora
