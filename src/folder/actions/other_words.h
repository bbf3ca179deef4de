#pragma once

#include "vfs/place/other_opening.h"

#include <QString>

namespace velmora {

/// Why there is no tree at `path`; empty where there is one, and where the path leads to no other tree.
[[nodiscard]] QString otherFaultText(const QString &path, const OtherOpening &opening);

} // namespace velmora
