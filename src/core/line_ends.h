#pragma once

#include "core/text_file.h"

#include <QString>

#include <optional>

namespace velmora {

/// The style of line ends that a stored name asks for: "CRLF", "LF" or "CR", also by the names "Unix" and "Mac" of
/// earlier versions. Nothing for any other name, "PC" among them, which stands for leaving a text as it is.
[[nodiscard]] std::optional<LineEndStyle> lineEndStyleFromName(const QString &name);

/// "LF", "CRLF" or "CR"; empty for none.
[[nodiscard]] QString lineEndName(LineEnd end);

/// The same text with every line end of `style`; a last line without an end stays without. A carriage return within a
/// line ends it, too. With `LineEndStyle::Cr` the result is a single line, as reading it would give; `Mixed` changes
/// nothing.
[[nodiscard]] TextLines withLineEnds(const TextLines &text, LineEndStyle style);

} // namespace velmora
