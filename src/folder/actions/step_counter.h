#pragma once

#include "core/progress.h"
#include "folder/actions/folder_command.h"
#include "folder/operations/operation_plan.h"

#include <chrono>

namespace velmora {

/// Turns the progress of a run, which counts units, into steps, bytes and the time that is left.
class StepCounter {
public:
    using Clock = std::chrono::steady_clock;

    StepCounter() = default;
    explicit StepCounter(const OperationPlan &plan, Clock::time_point started = Clock::now());

    /// In the order in which the states come; looks at each step of the plan once.
    [[nodiscard]] FolderActionProgress count(const ProgressState &state, Clock::time_point now = Clock::now());

private:
    OperationPlan m_plan;
    Clock::time_point m_started;
    qsizetype m_current = 0;  ///< the step in progress; those before it are behind
    qint64 m_unitsBefore = 0; ///< of the steps before it
    qint64 m_bytesTotal = 0;
};

} // namespace velmora
