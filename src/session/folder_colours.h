#pragma once

#include "folder/engine/folder_mark.h"

#include <QColor>

namespace velmora {

/// The ink in which a name stands, in the light or the dark theme. Readable on a list's background, and told apart by
/// normal, protan, deutan and tritan eyes.
[[nodiscard]] QColor folderMarkColour(FolderMark mark, bool dark);

/// The same in the theme that the application wears.
[[nodiscard]] QColor folderMarkColour(FolderMark mark);

/// A sign that says the same as the colour.
[[nodiscard]] QChar folderMarkSign(FolderMark mark);

} // namespace velmora
