#pragma once

#include "core/text_lines.h"

#include <string_view>

namespace velmora {

/// Collects values, which may hold any characters, as the lines of a text: value k is line k.
class ValueLines {
public:
    /// `bytes` and `values`: how much is expected.
    void reserve(qsizetype bytes, qsizetype values) { m_builder.reserve(bytes + values, values); }

    /// Precondition: `value` is valid UTF-8. Throws std::length_error when the values are too long for one text.
    void append(std::string_view value);

    [[nodiscard]] TextLines take() { return m_builder.take(); }

private:
    TextLinesBuilder m_builder;
    qsizetype m_size = 0;
};

} // namespace velmora
