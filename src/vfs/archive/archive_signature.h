#pragma once

#include <QByteArrayView>

namespace velmora {

/// So many bytes of a file tell all that `beginsLikeArchive` knows; fewer tell less.
inline constexpr qsizetype longestArchiveHead = 33 * 1024;

/// Whether a file begins as the archives and compressed files do that `ArchiveStream` reads, whole or not. Programs
/// that unpack themselves begin as programs.
[[nodiscard]] bool beginsLikeArchive(QByteArrayView head);

} // namespace velmora
