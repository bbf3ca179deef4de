#pragma once

#include "folder/operations/operation_executor.h"

namespace velmora {

/// How one step went.
struct StepResult {
    StepEnd end = StepEnd::Done;
    QList<OperationProblem> problems; ///< without the number of the step
    bool sourceMustGo = false;        ///< of a move between volumes: the copy is there, `removeSource` is still to come
    bool isLost = false;              ///< the old contents were beyond the journal's limits
    bool isInBinOnly = false;         ///< journalled, but the system does not tell where in the recycle bin it is

    [[nodiscard]] bool isDone() const noexcept { return end == StepEnd::Done; }
};

/// Puts what went wrong with the steps of a plan into words of the report. The plan must outlive it.
class StepProblems {
public:
    explicit StepProblems(const OperationPlan &plan) : m_plan(plan) {}

    /// Skipped or failed, as `code` tells.
    [[nodiscard]] StepResult failed(OperationErrorCode code, const Place &place, const FileError &error = {}) const;
    [[nodiscard]] StepResult failedAtSource(const Place &place, const FileError &error) const;
    [[nodiscard]] StepResult failedAtTarget(const Place &place, const FileError &error) const;
    /// Done, save for this.
    void warn(StepResult &result, OperationErrorCode code, const Place &place, const FileError &error) const;

private:
    const OperationPlan &m_plan;
};

} // namespace velmora
