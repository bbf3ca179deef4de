#pragma once

#include "core/text_lines.h"

#include <QString>
#include <QStringList>

#include <string_view>

namespace velmora {

// The engine is written once for lines of UTF-8 bytes and for lines of UTF-16 units. A line source is a cheap view of a
// text: `Unit`, `count()` and `line(index)`, which stays valid as long as the text does. A place in a line is written
// as 32 bits by `placeOf(index, unit)` and found again by `unitAt(index, place)`.

/// The lines of a `TextLines`, which must outlive this.
class Utf8Lines {
public:
    using Unit = char;

    explicit Utf8Lines(const TextLines &lines) : m_lines(&lines) {}

    [[nodiscard]] qint32 count() const noexcept { return qint32(m_lines->count()); }
    [[nodiscard]] std::string_view line(qint32 index) const noexcept { return m_lines->line(index); }

    // Counted from the start of the text, which is not longer, so that a key is found without a look at its line.
    [[nodiscard]] quint32 placeOf(qint32, const char *unit) const noexcept { return quint32(unit - m_text); }
    [[nodiscard]] const char *unitAt(qint32, quint32 place) const noexcept { return m_text + place; }
    /// True when the bytes of each line are its UTF-16 units, too.
    [[nodiscard]] bool isAscii() const noexcept { return m_lines->isAscii(); }

private:
    const TextLines *m_lines;
    const char *m_text = m_lines->bytes().data();
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

    [[nodiscard]] quint32 placeOf(qint32 index, const char16_t *unit) const noexcept
    {
        return quint32(unit - line(index).data());
    }
    [[nodiscard]] const char16_t *unitAt(qint32 index, quint32 place) const noexcept
    {
        return line(index).data() + place;
    }
    [[nodiscard]] bool isAscii() const noexcept { return false; }

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
