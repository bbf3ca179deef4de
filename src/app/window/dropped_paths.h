#pragma once

#include <QStringList>

class QMimeData;

namespace velmora {

/// The local files and folders that a drag carries, in its order; other addresses are left out.
[[nodiscard]] QStringList droppedPaths(const QMimeData *data);

} // namespace velmora
