#pragma once

#include <QString>

namespace velmora {

/// A path as people know it, on one line: of a passing copy (`session/passing_copies.h`) where it is from, else as the
/// system writes it.
[[nodiscard]] QString shownPath(const QString &path);

} // namespace velmora
