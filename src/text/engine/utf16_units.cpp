#include "text/engine/utf16_units.h"

#include <cstring>

namespace velmora {

void appendUtf16(std::string_view utf8, std::u16string &units)
{
    const size_t before = units.size();
    // No character has more units than bytes.
    units.resize(before + utf8.size());
    char16_t *out = units.data() + before;
    const auto *bytes = reinterpret_cast<const unsigned char *>(utf8.data());
    const auto *end = bytes + utf8.size();
    while (bytes < end) {
        const quint32 lead = *bytes;
        if (lead < 0x80) {
            *out++ = char16_t(lead);
            bytes += 1;
        } else if (lead < 0xE0) {
            *out++ = char16_t((lead & 0x1F) << 6 | (bytes[1] & 0x3Fu));
            bytes += 2;
        } else if (lead < 0xF0) {
            *out++ = char16_t((lead & 0x0F) << 12 | (bytes[1] & 0x3Fu) << 6 | (bytes[2] & 0x3Fu));
            bytes += 3;
        } else {
            const quint32 character =
                (lead & 0x07) << 18 | (bytes[1] & 0x3Fu) << 12 | (bytes[2] & 0x3Fu) << 6 | (bytes[3] & 0x3Fu);
            *out++ = QChar::highSurrogate(character);
            *out++ = QChar::lowSurrogate(character);
            bytes += 4;
        }
    }
    units.resize(size_t(out - units.data()));
}

bool isAscii(std::string_view text) noexcept
{
    constexpr quint64 highBits = 0x8080'8080'8080'8080;
    quint64 seen = 0;
    size_t at = 0;
    for (; at + sizeof(quint64) <= text.size(); at += sizeof(quint64)) {
        quint64 word;
        std::memcpy(&word, text.data() + at, sizeof word);
        seen |= word;
    }
    for (; at < text.size(); ++at)
        seen |= static_cast<unsigned char>(text[at]);
    return (seen & highBits) == 0;
}

} // namespace velmora
