#pragma once

#include <QString>

#include <chrono>
#include <functional>

namespace velmora {

/// How far a run has come. What the counts count, and what the phases are, is the engine's to say.
struct ProgressState {
    int phase = 0;    ///< the engine's own numbering of its steps, from 0
    qint64 done = 0;  ///< units finished in this phase
    qint64 total = 0; ///< units of this phase, 0 while not known
    QString item;     ///< what is being worked on (a path), empty when the engine has nothing to name

    friend bool operator==(const ProgressState &, const ProgressState &) = default;
};

/// The reporting end that a worker holds: passes states on to its sink, at most one in each interval.
///
/// Used by the one thread that runs the job. A default-made object drops everything at no cost. The first state and the
/// first one of every phase are always passed on; the last of a phase may be swallowed, since the end of the run says
/// it.
class Progress {
public:
    using Sink = std::function<void(const ProgressState &)>;

    static constexpr std::chrono::milliseconds defaultInterval{100};

    Progress() = default;
    explicit Progress(Sink sink, std::chrono::milliseconds interval = defaultInterval);

    void report(int phase, qint64 done, qint64 total, const QString &item = {});

private:
    Sink m_sink;
    std::chrono::milliseconds m_interval = defaultInterval;
    std::chrono::steady_clock::time_point m_last;
    int m_lastPhase = -1;
};

} // namespace velmora
