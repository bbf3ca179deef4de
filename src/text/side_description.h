#pragma once

#include "text/text_compare_job.h"

#include <QString>

namespace velmora {

/// "Left: %1 [%2] | Right: %3 [%4]": the encodings and, in brackets, the line ends and whatever could not be read as
/// text.
[[nodiscard]] QString describeFormats(const LoadedSide &left, const LoadedSide &right);

/// What is to be said about a comparison without a difference.
[[nodiscard]] QString describeEquality(const LoadedSide &left, const LoadedSide &right);

} // namespace velmora
