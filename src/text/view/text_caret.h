#pragma once

#include "text/view/side.h"

#include <QtGlobal>

#include <compare>

namespace velmora {

/// A place in one side of a comparison: the row (0-based in the result) and the UTF-16 code units before it in its
/// line.
struct TextPosition {
    qsizetype row = 0;
    qsizetype unit = 0;

    friend auto operator<=>(const TextPosition &, const TextPosition &) = default;
};

/// The caret of a comparison: one side has it, the other shows its row. The selection is what lies between the anchor
/// and the caret, on that side only.
struct TextCaret {
    Side side = Side::Left;
    TextPosition anchor;
    TextPosition position;

    [[nodiscard]] bool hasSelection() const noexcept { return anchor != position; }
    [[nodiscard]] TextPosition selectionStart() const noexcept { return anchor < position ? anchor : position; }
    [[nodiscard]] TextPosition selectionEnd() const noexcept { return anchor < position ? position : anchor; }
    friend bool operator==(const TextCaret &, const TextCaret &) = default;
};

} // namespace velmora
