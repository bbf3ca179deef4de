#pragma once

#include <functional>

namespace velmora {

/// How many threads a run may use here: those that the process may run on at once, at most 8.
[[nodiscard]] int crewSize();

/// Runs `work(worker)` once for each worker from 0 to `size` - 1 and returns when all have ended. Worker 0 is the
/// calling thread; the others are threads made for this call, fewer when the system has no more. When worker 0 has
/// ended, `tick` is called on the calling thread every 100 ms until the others have, too. An exception of any worker is
/// passed on, the first one, when all have ended: a worker that throws must make the others end.
void runCrew(int size, const std::function<void(int worker)> &work, const std::function<void()> &tick);

} // namespace velmora
