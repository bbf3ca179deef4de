#include "core/progress.h"

namespace velmora {

Progress::Progress(Sink sink, std::chrono::milliseconds interval) : m_sink(std::move(sink)), m_interval(interval) {}

void Progress::report(int phase, qint64 done, qint64 total, const QString &item)
{
    if (!m_sink)
        return;
    const auto now = std::chrono::steady_clock::now();
    if (phase == m_lastPhase && now - m_last < m_interval)
        return;
    m_last = now;
    m_lastPhase = phase;
    m_sink(ProgressState{phase, done, total, item});
}

} // namespace velmora
