#pragma once

#include <QString>

namespace velmora {

/// True for a file, not a folder, that carries the operating system's "system" attribute. Always false where the system
/// knows no such attribute, and for a path that cannot be asked. One system call.
[[nodiscard]] bool isSystemFile(const QString &path);

/// Whether a name that begins with a dot hides a file here.
[[nodiscard]] bool dotHides() noexcept;

} // namespace velmora
