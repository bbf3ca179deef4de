#pragma once

#include <QFont>

namespace velmora {

/// The font of compared texts: of `family`, or the system's own with letters of one width when that is empty.
[[nodiscard]] QFont textFont(const QString &family, qreal pointSize);

} // namespace velmora
