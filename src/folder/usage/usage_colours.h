#pragma once

#include "folder/engine/usage_tree.h"

#include <QColor>
#include <QString>

namespace velmora {

/// What the rectangles of a map are coloured by.
enum class UsageColouring : quint8 { Kind, Growth };

/// The colour of files of a kind in the theme that the application wears, and what the kind is called.
[[nodiscard]] QColor fileKindColour(FileKind kind);
[[nodiscard]] QString fileKindText(FileKind kind);

/// The colour of what is `size` bytes large and has grown by `growth`, which may be below 0.
[[nodiscard]] QColor growthColour(qint64 size, qint64 growth);

} // namespace velmora
