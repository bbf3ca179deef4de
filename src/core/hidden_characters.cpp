#include "core/hidden_characters.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace velmora {

namespace {

constexpr std::array<std::string_view, 32> controlCodes = {
    "NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS",  "TAB", "LF",  "VT",  "FF", "CR", "SO", "SI",
    "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB", "CAN", "EM",  "SUB", "ESC", "FS", "GS", "RS", "US",
};

struct NamedCharacter {
    char32_t character;
    std::string_view code;
};

constexpr std::array namedCharacters = {
    NamedCharacter{0x7F, "DEL"},    NamedCharacter{0x85, "NEL"},    NamedCharacter{0xA0, "NBSP"},
    NamedCharacter{0xAD, "SHY"},    NamedCharacter{0x34F, "CGJ"},   NamedCharacter{0x61C, "ALM"},
    NamedCharacter{0x200B, "ZWSP"}, NamedCharacter{0x200C, "ZWNJ"}, NamedCharacter{0x200D, "ZWJ"},
    NamedCharacter{0x200E, "LRM"},  NamedCharacter{0x200F, "RLM"},  NamedCharacter{0x2028, "LS"},
    NamedCharacter{0x2029, "PS"},   NamedCharacter{0x202A, "LRE"},  NamedCharacter{0x202B, "RLE"},
    NamedCharacter{0x202C, "PDF"},  NamedCharacter{0x202D, "LRO"},  NamedCharacter{0x202E, "RLO"},
    NamedCharacter{0x202F, "NNBS"}, NamedCharacter{0x2060, "WJ"},   NamedCharacter{0x2066, "LRI"},
    NamedCharacter{0x2067, "RLI"},  NamedCharacter{0x2068, "FSI"},  NamedCharacter{0x2069, "PDI"},
    NamedCharacter{0xFEFF, "BOM"},
};

std::string_view nameOf(char32_t character)
{
    if (character < controlCodes.size())
        return controlCodes[character];
    const auto *found = std::lower_bound(namedCharacters.begin(), namedCharacters.end(), character,
                                         [](const NamedCharacter &named, char32_t c) { return named.character < c; });
    return found != namedCharacters.end() && found->character == character ? found->code : std::string_view();
}

bool isBetween(char32_t character, char32_t first, char32_t last)
{
    return character >= first && character <= last;
}

/// Format characters of Arabic, Syriac and Kaithi that enclose numbers and are drawn.
bool isDrawnFormat(char32_t c)
{
    return isBetween(c, 0x600, 0x605) || c == 0x6DD || c == 0x70F || isBetween(c, 0x890, 0x891) || c == 0x8E2 ||
           c == 0x110BD || c == 0x110CD;
}

/// Letters and marks that nothing is drawn for (Default_Ignorable_Code_Point of other categories). U+FE0E and U+FE0F
/// are left to the emoji in front of them.
bool isIgnorable(char32_t c)
{
    return c == 0x34F || isBetween(c, 0x115F, 0x1160) || isBetween(c, 0x17B4, 0x17B5) || isBetween(c, 0x180B, 0x180F) ||
           c == 0x3164 || isBetween(c, 0xFE00, 0xFE0D) || c == 0xFFA0 || isBetween(c, 0xE0000, 0xE0FFF);
}

bool isHidden(char32_t c)
{
    if (c < 0x7F)
        return c < 0x20 && c != U'\t';
    if (c <= 0xA0 || c == 0xAD)
        return true;
    if (c < 0x300)
        return false;
    switch (QChar::category(c)) {
    case QChar::Other_Format:
        return !isDrawnFormat(c);
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    case QChar::Separator_Space:
        return c != 0x3000 && c != 0x1680;
    default:
        return isIgnorable(c);
    }
}

int hexadecimalDigits(char32_t character)
{
    return character > 0xFFFFF ? 6 : character > 0xFFFF ? 5 : character > 0xFF ? 4 : 2;
}

} // namespace

int hiddenCharacterCells(char32_t character)
{
    if (!isHidden(character))
        return 0;
    const std::string_view name = nameOf(character);
    const int letters = name.empty() ? hexadecimalDigits(character) : int(name.size());
    return letters <= 2 ? 2 : letters <= 4 ? 3 : 4;
}

QString hiddenCharacterCode(char32_t character)
{
    const std::string_view name = nameOf(character);
    if (!name.empty())
        return QString::fromLatin1(name.data(), qsizetype(name.size()));
    return QStringLiteral("%1").arg(uint(character), hexadecimalDigits(character), 16, QLatin1Char('0')).toUpper();
}

QList<HiddenCharacter> takeHiddenCharacters(QString &text)
{
    QList<HiddenCharacter> hidden;
    for (qsizetype unit = 0; unit < text.size(); ++unit) {
        const QChar first = text.at(unit);
        if (first.unicode() >= 0x20 && first.unicode() < 0x7F)
            continue;
        const bool isPair = first.isHighSurrogate() && unit + 1 < text.size() && text.at(unit + 1).isLowSurrogate();
        const char32_t character = isPair ? QChar::surrogateToUcs4(first, text.at(unit + 1)) : first.unicode();
        if (isHidden(character)) {
            hidden.append({unit, isPair ? 2 : 1, character});
            text[unit] = QChar(QChar::Nbsp);
            if (isPair)
                text[unit + 1] = QChar(0x200C); // joins the blank before it, so that no caret comes between
        }
        unit += isPair;
    }
    return hidden;
}

} // namespace velmora
