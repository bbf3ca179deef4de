#pragma once

#include <QImage>

namespace velmora {

/// Whether the pixel at (x, y) of `picture` looks like the smoothed edge of a shape that `other` has in another place:
/// it lies between a darker and a brighter neighbour, of which one lies within an area of one colour in both pictures.
/// Both are of Format_ARGB32, and the place lies in both.
[[nodiscard]] bool looksAntiAliased(const QImage &picture, const QImage &other, int x, int y);

} // namespace velmora
