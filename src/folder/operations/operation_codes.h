#pragma once

#include "folder/operations/operation_executor.h"

namespace velmora {

/// What an error of the file system means when it comes from the place that a step reads.
[[nodiscard]] OperationErrorCode sourceCode(FileErrorKind kind);

/// The same for the place that a step changes.
[[nodiscard]] OperationErrorCode targetCode(FileErrorKind kind);

/// The world has changed, or the step is not safe: nothing has been tried.
[[nodiscard]] bool isSkip(OperationErrorCode code);

} // namespace velmora
