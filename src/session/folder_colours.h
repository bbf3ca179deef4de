#pragma once

#include <QColor>

namespace velmora {

/// What a folder comparison says of a file, or of the files that a folder contains.
enum class FolderMark : quint8 {
    Unknown,  ///< not compared yet
    Scanning, ///< being compared
    Same,
    Older,
    Unique,   ///< on one side only
    Newer,    ///< newer, or different without one being newer
    Filtered, ///< left out by a filter
};

inline constexpr int folderMarkCount = int(FolderMark::Filtered) + 1;

/// The ink in which a name stands, in the light or the dark theme. Readable on a list's background, and told apart by
/// normal, protan, deutan and tritan eyes.
[[nodiscard]] QColor folderMarkColour(FolderMark mark, bool dark);

/// The same in the theme that the application wears.
[[nodiscard]] QColor folderMarkColour(FolderMark mark);

/// A sign that says the same as the colour.
[[nodiscard]] QChar folderMarkSign(FolderMark mark);

} // namespace velmora
