#include "text/view/utf8_units.h"

#include <algorithm>

namespace velmora {

namespace {

// Of a fixed size, and its counts fit into a byte, so that compilers count many bytes at a time.
constexpr std::size_t blockSize = 64;

bool isContinuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// The units of the characters that begin in a block.
qsizetype unitsInBlock(const char *bytes)
{
    unsigned char units = 0;
    for (std::size_t k = 0; k < blockSize; ++k) {
        const auto byte = static_cast<unsigned char>(bytes[k]);
        units = static_cast<unsigned char>(units + ((byte & 0xC0) != 0x80) + (byte >= 0xF0)); // four bytes are a pair
    }
    return units;
}

} // namespace

qsizetype utf16Length(std::string_view utf8)
{
    qsizetype units = 0;
    for (; utf8.size() >= blockSize; utf8.remove_prefix(blockSize))
        units += unitsInBlock(utf8.data());
    for (const char c : utf8)
        units += !isContinuation(c) + (static_cast<unsigned char>(c) >= 0xF0);
    return units;
}

qsizetype byteOfUnit(std::string_view utf8, qsizetype unit)
{
    std::size_t at = 0;
    for (; at + blockSize <= utf8.size() && unit > 0; at += blockSize) {
        const qsizetype units = unitsInBlock(utf8.data() + at);
        if (units > unit)
            break;
        unit -= units;
    }
    // The end of a character that began in the block before.
    while (at > 0 && at < utf8.size() && isContinuation(utf8[at]))
        ++at;
    while (at < utf8.size() && unit > 0) {
        const auto lead = static_cast<unsigned char>(utf8[at]);
        const std::size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        unit -= size == 4 ? 2 : 1;
        if (unit < 0)
            break;
        at += size;
    }
    return qsizetype(std::min(at, utf8.size()));
}

} // namespace velmora
