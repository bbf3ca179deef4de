#pragma once

#include <QString>

namespace velmora {

/// `text` as a tool tip that shows it letter by letter: the toolkit takes what looks like markup, as the name of a file
/// may, for markup. For the tool tips of items and tabs; those of widgets are shown plainly anyway.
[[nodiscard]] QString plainToolTip(const QString &text);

} // namespace velmora
