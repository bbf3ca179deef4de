#pragma once

#include "session/pane/text_caret.h"
#include "text/text_compare_job.h"

#include <QString>

namespace velmora {

/// "Left: %1 [%2] | Right: %3 [%4]": the encodings and, in brackets, the line ends and whatever could not be read as
/// text.
[[nodiscard]] QString describeFormats(const LoadedSide &left, const LoadedSide &right);

/// Where the caret stands: line and column of its side, both from 1, or the line behind which its row without a line
/// is. Empty without a document. Columns are characters, or UTF-16 units in one of the longest lines.
[[nodiscard]] QString describePlace(const DiffDocument *document, const TextCaret &caret);

/// Why the text that was read cannot be written again without loss; empty when it can.
[[nodiscard]] QString lossOfSaving(const LoadedSide &loaded);

/// That `expressions` of the unimportant text are too slow to be looked for in the rest of the lines.
[[nodiscard]] QString leftOutRemark(const QStringList &expressions);

/// What is to be said of expressions that gave up, which some have done.
[[nodiscard]] QString slownessRemark(const CompareRemarks &remarks);

} // namespace velmora
