#pragma once

#include "session/pane/pane_index.h"

#include <QtGlobal>

#include <compare>

namespace velmora {

/// A place in the text of one pane: the row (0-based in the document) and the UTF-16 code units before it in its line.
struct TextPosition {
    qsizetype row = 0;
    qsizetype unit = 0;

    friend auto operator<=>(const TextPosition &, const TextPosition &) = default;
};

/// The caret of a view: one pane has it, the others show its row. The selection is what lies between the anchor and the
/// caret, in that pane only.
struct TextCaret {
    PaneIndex pane;
    TextPosition anchor;
    TextPosition position;

    [[nodiscard]] bool hasSelection() const noexcept { return anchor != position; }
    [[nodiscard]] TextPosition selectionStart() const noexcept { return anchor < position ? anchor : position; }
    [[nodiscard]] TextPosition selectionEnd() const noexcept { return anchor < position ? position : anchor; }
    friend bool operator==(const TextCaret &, const TextCaret &) = default;
};

} // namespace velmora
