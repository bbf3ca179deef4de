#pragma once

#include <QString>

namespace velmora {

/// When the program was built, by the compiler's clock, in the form "Oct 10 2026 19:33:53".
[[nodiscard]] QString buildStamp();

} // namespace velmora
