#pragma once

#include <QList>
#include <QString>

namespace velmora {

/// Characters that have no picture of their own, look like a plain blank, or would change the order of the others:
/// control and format characters, the spaces other than U+0020 and U+3000, tags and the like. They are shown as a small
/// box with a code, so that two texts which differ never look the same. A tabulator and the selectors between text and
/// emoji style are none of them.

/// Cells of the text grid that the box of `character` takes; 0 for one that is drawn as it is.
[[nodiscard]] int hiddenCharacterCells(char32_t character);

/// The code in the box: the usual abbreviation ("NBSP", "RLO"), or the code point in hexadecimal ("E0041").
[[nodiscard]] QString hiddenCharacterCode(char32_t character);

/// One hidden character of a text.
struct HiddenCharacter {
    qsizetype unit = 0; ///< UTF-16 code units before it
    int units = 1;
    char32_t character = 0;
};

/// Replaces the hidden characters in `text`, unit for unit, by blanks that upset nothing, and says where they are.
[[nodiscard]] QList<HiddenCharacter> takeHiddenCharacters(QString &text);

} // namespace velmora
