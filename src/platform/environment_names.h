#pragma once

namespace velmora {

/// Whether environment variables whose names differ in letter case only are the same variable on this system.
[[nodiscard]] bool environmentNamesIgnoreCase();

} // namespace velmora
