#pragma once

#include <QByteArrayView>

namespace velmora {

/// Whether the chapters in a piece of an ID3v2 tag, which hold frames of their own, are such that reading them takes
/// neither a call for each of very many levels nor memory without end.
[[nodiscard]] bool chaptersAreModest(QByteArrayView bytes);

/// The most bytes of compressed frames in one tag: they may become a thousand times as many.
inline constexpr qint64 mostCompressedBytes = 256 * 1024;

} // namespace velmora
