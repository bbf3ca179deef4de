#pragma once

#include "core/text_lines.h"

#include <QtGlobal>

#include <string_view>

namespace velmora {

/// The lines [first, first + count) of a text, 0-based. An empty range still has a place.
struct LineRange {
    qsizetype first = 0;
    qsizetype count = 0;

    [[nodiscard]] qsizetype end() const noexcept { return first + count; }
    [[nodiscard]] bool isEmpty() const noexcept { return count == 0; }

    friend bool operator==(const LineRange &, const LineRange &) = default;
};

/// The bytes of these lines as they stand in `text`, line ends included. Precondition: `range` lies within the text.
[[nodiscard]] inline std::string_view bytesOf(const TextLines &text, LineRange range) noexcept
{
    if (range.isEmpty())
        return {};
    const char *const begin = text.line(range.first).data();
    if (range.end() < text.count())
        return {begin, size_t(text.line(range.end()).data() - begin)};
    const std::string_view all = text.bytes();
    return {begin, size_t(all.data() + all.size() - begin)};
}

} // namespace velmora
