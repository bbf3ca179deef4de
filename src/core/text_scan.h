#pragma once

#include "core/cancel_flag.h"

#include <QtGlobal>

#include <string_view>

namespace velmora {

/// How often the bytes that matter for reading a text occur in it.
struct ByteCounts {
    qsizetype lineFeeds = 0;
    qsizetype carriageReturns = 0;
    qsizetype crLfPairs = 0; ///< carriage returns right before a line feed
    qsizetype zeros = 0;
    bool ascii = true; ///< every byte is below 0x80

    ByteCounts &operator+=(const ByteCounts &other) noexcept;
};

/// Counts the bytes of `text` [begin, end) at the speed of memory. A carriage return that is the last byte of the range
/// is paired with a line feed behind it when the text goes on.
[[nodiscard]] ByteCounts countBytes(std::string_view text, size_t begin, size_t end) noexcept;

/// The offset at or after `begin` where `text` stops being UTF-8, or its size. A sequence is well-formed by table 3-7
/// of the Unicode standard: shortest form, no surrogates, nothing above U+10FFFF. `begin` is the start of a character;
/// checking ends with the first character that starts at or behind `end`, so that a text can be checked block by block.
[[nodiscard]] size_t validUtf8Until(std::string_view text, size_t begin, size_t end) noexcept;

/// The length of the ill-formed sequence that `text` holds at `at`: the longest start of a well-formed one, at least 1.
[[nodiscard]] size_t damagedUtf8Length(std::string_view text, size_t at) noexcept;

/// What one pass over a whole text finds out.
struct TextScan {
    ByteCounts counts;
    bool validUtf8 = true;
};

/// Counts and checks `text` from `begin` on in one pass; incomplete when `cancel` is set on the way.
[[nodiscard]] TextScan scanText(std::string_view text, size_t begin, const CancelFlag &cancel);

/// Calls `found(offset)` for each line feed of `text` [begin, end), in order.
template <typename Found>
void forEachLineFeed(std::string_view text, size_t begin, size_t end, Found found);

} // namespace velmora

#include "core/text_scan_lines.h"
