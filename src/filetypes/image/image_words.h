#pragma once

#include "filetypes/image/image_job.h"

namespace velmora {

/// Size and name of a picture, or that there is none.
[[nodiscard]] QString captionOf(const Picture &picture, const QString &path);

/// Why a picture could not be loaded, with the name of its file.
[[nodiscard]] QString faultText(const Picture &picture, const QString &path);

/// What comparing two pictures came to, in one line.
[[nodiscard]] QString verdictText(const DifferenceMap &map, bool sameBytes, int frames);

/// What is said when both are loaded and compared.
[[nodiscard]] QString sizesText(QSize left, QSize right, int tolerance);

/// What the files say beside the pixels.
[[nodiscard]] QList<KeyedRow> propertyRows(const PictureFacts &left, const PictureFacts &right);

} // namespace velmora
