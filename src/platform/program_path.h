#pragma once

#include <QString>

namespace velmora {

/// The absolute path of the program file of this process, without links; empty when the system does not tell.
[[nodiscard]] QString programPath();

} // namespace velmora
