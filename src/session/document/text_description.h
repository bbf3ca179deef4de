#pragma once

#include "session/document/loaded_text.h"
#include "session/pane/text_caret.h"

#include <QString>

namespace velmora {

class PaneDocument;

/// The name of the encoding, or that there is no file.
[[nodiscard]] QString describeEncoding(const LoadedText &loaded);

/// The line ends, and whatever could not be read as text; "-" without a file.
[[nodiscard]] QString describeContent(const LoadedText &loaded);

/// Where the caret stands: line and column of its pane, both from 1, or the line behind which its row without a line
/// is. Empty without a document. Columns are characters, or UTF-16 units in one of the longest lines.
[[nodiscard]] QString describePlace(const PaneDocument *document, const TextCaret &caret);

} // namespace velmora
