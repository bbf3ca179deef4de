#pragma once

#include <QString>

namespace velmora {

/// Writes `text` and a line end to the console that the process was started from. False when there is none, as for a
/// windowed program started from a desktop: the text must then be shown in another way.
[[nodiscard]] bool writeToConsole(const QString &text);

} // namespace velmora
