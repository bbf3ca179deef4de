#include "folder/actions/step_counter.h"

#include "folder/actions/action_words.h"
#include "folder/operations/operation_executor.h"
#include "session/shown_path.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr std::chrono::seconds soonest{2}; // what is done before tells too little of the rest

/// What the executor counts of a step beside the step itself.
qint64 bytesOf(const OperationStep &step)
{
    const bool copies = step.kind == OperationKind::Copy || step.kind == OperationKind::Replace;
    return copies ? step.fromSeen.size : 0;
}

} // namespace

StepCounter::StepCounter(const OperationPlan &plan, Clock::time_point started) : m_plan(plan), m_started(started)
{
    for (const OperationStep &step : plan.steps)
        m_bytesTotal += bytesOf(step);
}

FolderActionProgress StepCounter::count(const ProgressState &state, Clock::time_point now)
{
    FolderActionProgress progress;
    progress.path = shownPath(state.item);
    if (state.phase != int(OperationPhase::Working))
        return progress;
    while (m_current < m_plan.steps.size()) {
        const qint64 units = bytesForEachStep + bytesOf(m_plan.steps[m_current]);
        if (m_unitsBefore + units > state.done)
            break;
        m_unitsBefore += units;
        ++m_current;
    }
    progress.filesDone = m_current;
    progress.filesTotal = m_plan.steps.size();
    progress.bytesTotal = m_bytesTotal;
    progress.bytesDone = std::clamp<qint64>(state.done - m_current * bytesForEachStep, 0, m_bytesTotal);
    const std::chrono::duration<double> passed = now - m_started;
    if (passed >= soonest && state.done > 0 && state.total > 0) {
        const double rest = double(state.total - state.done) / double(state.done);
        progress.secondsLeft = qint64(std::max(passed.count() * rest, 0.0) + 0.5);
    }
    return progress;
}

} // namespace velmora
