#pragma once

#include <QString>

namespace velmora {

/// When the program was built, in the form "Oct 10 2026 19:33:53": local time, or, when the environment variable
/// SOURCE_DATE_EPOCH named a time for the build, that time in UTC.
[[nodiscard]] QString buildStamp();

} // namespace velmora
