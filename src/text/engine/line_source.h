#pragma once

#include "core/text_lines.h"

#include <QString>
#include <QStringList>

#include <string_view>

namespace velmora {

// The engine is written once for lines of UTF-8 bytes and for lines of UTF-16 units. A line source is a cheap view of a
// text: `Unit`, `count()` and `line(index)`, which must stay valid as long as the text does.

/// The lines of a `TextLines`, which must outlive this.
class Utf8Lines {
public:
    using Unit = char;

    explicit Utf8Lines(const TextLines &lines) : m_lines(&lines) {}

    [[nodiscard]] qint32 count() const noexcept { return qint32(m_lines->count()); }
    [[nodiscard]] std::string_view line(qint32 index) const noexcept { return m_lines->line(index); }

private:
    const TextLines *m_lines;
};

/// The lines of a string list, which must outlive this.
class Utf16Lines {
public:
    using Unit = char16_t;

    explicit Utf16Lines(const QStringList &lines) : m_lines(&lines) {}

    [[nodiscard]] qint32 count() const noexcept { return qint32(m_lines->size()); }
    [[nodiscard]] std::u16string_view line(qint32 index) const noexcept
    {
        const QString &text = m_lines->at(index);
        return {QStringView(text).utf16(), size_t(text.size())};
    }

private:
    const QStringList *m_lines;
};

/// `line` without one carriage return at its end.
template <typename Unit>
[[nodiscard]] std::basic_string_view<Unit> withoutReturn(std::basic_string_view<Unit> line) noexcept
{
    if (!line.empty() && line.back() == Unit('\r'))
        line.remove_suffix(1);
    return line;
}

} // namespace velmora
