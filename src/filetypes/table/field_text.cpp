#include "filetypes/table/field_text.h"

#include "core/utf8_text.h"
#include "core/visible_name.h"
#include "filetypes/table/engine/field_cursor.h"

#include <string>

namespace velmora {

namespace {

/// Of a field that may have megabytes this much is looked at, and of that so many characters are shown.
constexpr std::size_t bytesLookedAt = 8192;
constexpr qsizetype shownLength = 400;

} // namespace

QString beginningOfField(std::string_view field, qsizetype length)
{
    std::string_view begin = field.substr(0, bytesLookedAt);
    // Not within a character.
    while (begin.size() < field.size() && !begin.empty() && (field[begin.size()] & 0xC0) == 0x80)
        begin.remove_suffix(1);
    std::string buffer;
    QString text = textOfUtf8(fieldValue(begin, buffer));
    const bool isCut = begin.size() < field.size() || text.size() > length;
    text.truncate(text.size() > length && text[length - 1].isHighSurrogate() ? length - 1 : length);
    return isCut ? text + QChar(0x2026) : text;
}

QString shownField(std::string_view field)
{
    QString text = beginningOfField(field, shownLength);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\n', QChar(0x21B5));
    return visibleName(text);
}

} // namespace velmora
