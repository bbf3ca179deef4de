#pragma once

#include <QPainterPath>
#include <QRectF>

namespace velmora {

/// Outlines of a folder and of a file, as rows of lists show them.
[[nodiscard]] QPainterPath folderShape(const QRectF &box);
[[nodiscard]] QPainterPath fileShape(const QRectF &box);

} // namespace velmora
