#pragma once

#include "core/text_lines.h"
#include "core/utf8_text.h"

#include <QString>

#include <string_view>

namespace velmora {

/// One state of one side's lines, as the view reads them.
///
/// Immutable, and readable from any thread: what can be edited hands out a new source after each change. The view asks
/// only for the lines that it shows, and asks again for each frame. Line indices are 0-based, lines are UTF-8 without
/// their ends.
class LineSource {
public:
    LineSource() = default;
    LineSource(const LineSource &) = delete;
    LineSource &operator=(const LineSource &) = delete;
    virtual ~LineSource() = default;

    [[nodiscard]] virtual qsizetype count() const = 0;
    /// Valid as long as this object lives. Precondition: 0 <= line < count().
    [[nodiscard]] virtual std::string_view bytes(qsizetype line) const = 0;
    [[nodiscard]] QString text(qsizetype line) const { return textOfUtf8(bytes(line)); }
};

/// A text that was read from a file.
class TextLinesSource final : public LineSource {
public:
    explicit TextLinesSource(TextLines lines) : m_lines(std::move(lines)) {}

    [[nodiscard]] qsizetype count() const override { return m_lines.count(); }
    [[nodiscard]] std::string_view bytes(qsizetype line) const override { return m_lines.line(line); }

private:
    TextLines m_lines;
};

} // namespace velmora
