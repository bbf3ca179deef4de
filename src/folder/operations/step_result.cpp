#include "folder/operations/step_result.h"

#include "folder/operations/operation_codes.h"

namespace velmora {

StepResult StepProblems::failed(OperationErrorCode code, const Place &place, const FileError &error) const
{
    StepResult result;
    result.end = isSkip(code) ? StepEnd::Skipped : StepEnd::Failed;
    result.problems.append({-1, code, m_plan.pathOf(place), error.reason});
    return result;
}

StepResult StepProblems::failedAtSource(const Place &place, const FileError &error) const
{
    return failed(sourceCode(error.kind), place, error);
}

StepResult StepProblems::failedAtTarget(const Place &place, const FileError &error) const
{
    return failed(targetCode(error.kind), place, error);
}

void StepProblems::warn(StepResult &result, OperationErrorCode code, const Place &place, const FileError &error) const
{
    result.problems.append({-1, code, m_plan.pathOf(place), error.reason});
}

} // namespace velmora
