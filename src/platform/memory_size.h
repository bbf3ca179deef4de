#pragma once

#include <QtGlobal>

namespace velmora {

/// About how many bytes a process can use now without others being pushed out of memory.
[[nodiscard]] qint64 availableMemory();

} // namespace velmora
