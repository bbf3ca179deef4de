#pragma once

#include <QColor>

namespace velmora {

/// What a colour stands for in a view that shows differences.
///
/// The backgrounds of different meanings stay apart for normal, protan, deutan and tritan eyes, and every text is
/// readable on each of them; a sign or shape always says the same as the colour. Reports have colours of their own.
enum class DiffColour : quint8 {
    Text,
    MutedText,   ///< hints, line numbers
    Background,  ///< behind equal rows
    Gutter,      ///< behind line numbers
    Added,       ///< behind a line that only the right side has
    Removed,     ///< behind a line that only the left side has
    Modified,    ///< behind a line that was changed
    AddedStrong, ///< its signs and marks, and its changed characters
    RemovedStrong,
    ModifiedStrong,
    Unimportant, ///< behind lines whose differences do not matter
    Filler,      ///< where only the other side has lines; hatched with FillerHatch
    FillerHatch,
    Rule,      ///< thin lines between parts
    Gap,       ///< a thin line in place of rows that are not shown
    Accent,    ///< the frame of the current difference, the focused part
    SearchHit, ///< behind text that was looked for
    Selection,
    SelectedText,
};

inline constexpr int diffColourCount = int(DiffColour::SelectedText) + 1;

/// The colour of `role` in the light or the dark theme.
[[nodiscard]] QColor diffColour(DiffColour role, bool dark);

/// The colour of `role` in the theme that the application wears.
[[nodiscard]] QColor diffColour(DiffColour role);

/// What is behind changed characters: `strong`, or for those that do not matter a shade between it and the background.
[[nodiscard]] QColor markColour(bool minor, const QColor &background, const QColor &strong);

} // namespace velmora
