#pragma once

#include <QString>

namespace velmora {

class DiffScene;

/// The current difference in words: its number, what it does, and the lines of both sides ("Difference 2 of 5,
/// modified: left line 3, right lines 3 to 4"). Empty without one.
[[nodiscard]] QString describeCurrentDifference(const DiffScene &scene);

} // namespace velmora
