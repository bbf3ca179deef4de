#pragma once

#include <QIcon>

namespace velmora {

/// An icon from an image file that may hold a picture in several sizes. A size is decoded when it is first asked for:
/// the smallest that is not smaller, scaled down to fit. Nothing is scaled up. Without a picture the icon is null.
[[nodiscard]] QIcon pictureIcon(const QString &path);

} // namespace velmora
