#pragma once

#include "text/text_compare_job.h"

#include <QString>

namespace velmora {

/// "Left: %1 [%2] | Right: %3 [%4]": the encodings and, in brackets, the line ends and whatever could not be read as
/// text.
[[nodiscard]] QString describeFormats(const LoadedText &left, const LoadedText &right);

/// That `expressions` of the unimportant text are too slow to be looked for in the rest of the lines.
[[nodiscard]] QString leftOutRemark(const QStringList &expressions);

/// What is to be said of expressions that gave up, which some have done.
[[nodiscard]] QString slownessRemark(const CompareRemarks &remarks);

} // namespace velmora
