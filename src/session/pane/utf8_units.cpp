#include "session/pane/utf8_units.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace velmora {

namespace {

using Word = std::uint64_t;

constexpr std::size_t blockSize = 8 * sizeof(Word);
constexpr Word ones = 0x0101010101010101U;

bool isContinuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// The units of the characters that begin in a block.
qsizetype unitsInBlock(const char *bytes)
{
    // Counted in each of the eight bytes of a word. All together are fewer than a byte holds, so that a multiplication
    // brings their sum into the highest one.
    Word continuations = 0;
    Word quadruples = 0; // the first bytes of four, which stand for a pair of units
    for (std::size_t at = 0; at < blockSize; at += sizeof(Word)) {
        Word word = 0;
        std::memcpy(&word, bytes + at, sizeof word);
        continuations += (word >> 7) & ~(word >> 6) & ones;
        quadruples += (word >> 7) & (word >> 6) & (word >> 5) & (word >> 4) & ones;
    }
    const auto sum = [](Word counts) { return qsizetype((counts * ones) >> 56); };
    return qsizetype(blockSize) - sum(continuations) + sum(quadruples);
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
