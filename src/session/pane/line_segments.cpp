#include "session/pane/line_segments.h"

#include "core/hidden_characters.h"

#include <QChar>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace velmora {

namespace {

struct CodePointRange {
    char32_t first;
    char32_t last;
};

// The blocks whose characters Unicode's EastAsianWidth calls wide or full-width, neighbours joined.
constexpr std::array wideRanges = {
    CodePointRange{0x1100, 0x115F},   CodePointRange{0x231A, 0x231B},   CodePointRange{0x2329, 0x232A},
    CodePointRange{0x23E9, 0x23EC},   CodePointRange{0x2614, 0x2615},   CodePointRange{0x2648, 0x2653},
    CodePointRange{0x26C4, 0x26C5},   CodePointRange{0x2705, 0x2705},   CodePointRange{0x270A, 0x270B},
    CodePointRange{0x2728, 0x2728},   CodePointRange{0x274C, 0x274C},   CodePointRange{0x2753, 0x2755},
    CodePointRange{0x2795, 0x2797},   CodePointRange{0x2B1B, 0x2B1C},   CodePointRange{0x2E80, 0x303E},
    CodePointRange{0x3041, 0x33FF},   CodePointRange{0x3400, 0x4DBF},   CodePointRange{0x4E00, 0xA4CF},
    CodePointRange{0xA960, 0xA97F},   CodePointRange{0xAC00, 0xD7A3},   CodePointRange{0xF900, 0xFAFF},
    CodePointRange{0xFE10, 0xFE19},   CodePointRange{0xFE30, 0xFE6F},   CodePointRange{0xFF00, 0xFF60},
    CodePointRange{0xFFE0, 0xFFE6},   CodePointRange{0x16FE0, 0x18CFF}, CodePointRange{0x1B000, 0x1B2FF},
    CodePointRange{0x1F300, 0x1F64F}, CodePointRange{0x1F680, 0x1F6FF}, CodePointRange{0x1F900, 0x1F9FF},
    CodePointRange{0x20000, 0x3FFFD},
};

int cellsOf(char32_t character)
{
    if (character >= 0x20 && character < 0x7F)
        return 1;
    if (const int box = hiddenCharacterCells(character))
        return box;
    if (character < 0x300)
        return 1;
    switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
        return 0;
    default:
        break;
    }
    const auto *range = std::lower_bound(wideRanges.begin(), wideRanges.end(), character,
                                         [](const CodePointRange &r, char32_t c) { return r.last < c; });
    return range != wideRanges.end() && range->first <= character ? 2 : 1;
}

struct Decoded {
    char32_t character;
    int bytes;
};

/// The character at the start of non-empty UTF-8 that is valid, or at least is read without leaving it.
Decoded decodeFirst(std::string_view utf8)
{
    const auto byteAt = [utf8](std::size_t index) {
        return index < utf8.size() ? static_cast<unsigned char>(utf8[index]) : 0U;
    };
    const char32_t lead = byteAt(0);
    const auto length = lead < 0x80 ? 1U : lead < 0xE0 ? 2U : lead < 0xF0 ? 3U : 4U;
    char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t k = 1; k < length; ++k)
        character = character << 6 | (byteAt(k) & 0x3FU);
    return {character, int(std::min<std::size_t>(length, utf8.size()))};
}

qint64 advanced(qint64 column, char32_t character, int tabWidth)
{
    return character == U'\t' ? (column / tabWidth + 1) * tabWidth : column + cellsOf(character);
}

// Eight bytes at a time: the longest lines are asked about with every key that is typed into them.
constexpr std::uint64_t highBits = 0x8080808080808080U;

std::uint64_t blockAt(const char *bytes)
{
    std::uint64_t block = 0;
    std::memcpy(&block, bytes, sizeof block);
    return block;
}

bool isPlainBlock(std::uint64_t block)
{
    constexpr std::uint64_t belowBlank = 0x6060606060606060U; // carries into the high bit from 0x20 on
    constexpr std::uint64_t ones = 0x0101010101010101U;
    return (block & highBits) == 0 && ((block + belowBlank) & highBits) == highBits && ((block + ones) & highBits) == 0;
}

/// Bytes at the start of `utf8` that take a column each, in blocks of eight.
std::size_t plainBlocks(std::string_view utf8)
{
    std::size_t size = 0;
    while (size + sizeof(std::uint64_t) <= utf8.size() && isPlainBlock(blockAt(utf8.data() + size)))
        size += sizeof(std::uint64_t);
    return size;
}

bool isPlainAscii(std::string_view utf8)
{
    utf8.remove_prefix(plainBlocks(utf8));
    return std::all_of(utf8.begin(), utf8.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x20 && byte < 0x7F;
    });
}

bool endsWord(char32_t character)
{
    switch (character) {
    case U' ':
    case U'\t':
    case U'-':
    case U'/':
    case U'\\':
    case U',':
    case U';':
    case U')':
    case U']':
    case U'}':
    case U'>':
        return true;
    default:
        return character > 0x7F && cellsOf(character) > 1;
    }
}

} // namespace

qint64 columnCount(std::string_view utf8, int tabWidth)
{
    qint64 column = 0;
    while (!utf8.empty()) {
        const std::size_t plain = plainBlocks(utf8);
        column += qint64(plain);
        utf8.remove_prefix(plain);
        // Where one character is not plain, its neighbours often are not.
        for (int k = 0; k < 8 && !utf8.empty(); ++k) {
            const Decoded next = decodeFirst(utf8);
            column = advanced(column, next.character, tabWidth);
            utf8.remove_prefix(std::size_t(next.bytes));
        }
    }
    return column;
}

LineSegments::LineSegments(std::string_view utf8, int tabWidth, qint64 wrapColumns)
    : m_utf8(utf8), m_tabWidth(tabWidth), m_wrapColumns(wrapColumns)
{
    findNext();
}

void LineSegments::findNext()
{
    m_starts.push_back(m_next);
    if (m_wrapColumns > 0)
        findByColumns();
    else
        findByLength();
}

void LineSegments::findByColumns()
{
    const Segment start = m_next;
    Segment at = start;
    Segment breakAt = start;
    std::string_view rest = m_utf8.substr(std::size_t(start.byte));
    while (!rest.empty()) {
        const Decoded next = decodeFirst(rest);
        const qint64 column = advanced(at.column, next.character, m_tabWidth);
        const bool isMark = next.character != U'\t' && cellsOf(next.character) == 0;
        if (column - start.column > m_wrapColumns && at.byte > start.byte && !isMark) {
            m_next = breakAt.byte > start.byte ? breakAt : at;
            return;
        }
        const bool breaksBehind = endsWord(next.character) || (isMark && breakAt.byte == at.byte);
        at = {at.byte + next.bytes, at.unit + (next.character > 0xFFFF ? 2 : 1), column};
        if (breaksBehind && at.byte > start.byte)
            breakAt = at;
        rest.remove_prefix(std::size_t(next.bytes));
    }
    m_next = at;
}

void LineSegments::findByLength()
{
    std::string_view rest = m_utf8.substr(std::size_t(m_next.byte));
    const std::string_view head = rest.substr(0, unitsPerSegment);
    const bool followedByMark = rest.size() > head.size() && static_cast<unsigned char>(rest[head.size()]) >= 0x80;
    if (isPlainAscii(head) && !followedByMark) {
        const auto size = qsizetype(head.size());
        m_next = {m_next.byte + size, m_next.unit + size, m_next.column + size};
        return;
    }
    const qsizetype full = m_next.unit + unitsPerSegment;
    // A run of combining marks without end must not make a segment without end.
    const qsizetype limit = full + unitsPerSegment;
    while (!rest.empty()) {
        const Decoded next = decodeFirst(rest);
        if (m_next.unit >= full && (m_next.unit >= limit || next.character == U'\t' || cellsOf(next.character) > 0))
            return;
        m_next.byte += next.bytes;
        m_next.unit += next.character > 0xFFFF ? 2 : 1;
        m_next.column = advanced(m_next.column, next.character, m_tabWidth);
        rest.remove_prefix(std::size_t(next.bytes));
    }
}

qsizetype LineSegments::indexAtUnit(qsizetype unit)
{
    while (!isComplete() && m_next.unit <= unit)
        findNext();
    const auto behind = std::upper_bound(m_starts.begin(), m_starts.end(), unit,
                                         [](qsizetype u, const Segment &segment) { return u < segment.unit; });
    return std::max<qsizetype>(behind - m_starts.begin() - 1, 0);
}

qsizetype LineSegments::indexAtColumn(qint64 column)
{
    while (!isComplete() && m_next.column <= column)
        findNext();
    const auto behind = std::upper_bound(m_starts.begin(), m_starts.end(), column,
                                         [](qint64 c, const Segment &segment) { return c < segment.column; });
    return std::max<qsizetype>(behind - m_starts.begin() - 1, 0);
}

bool LineSegments::contains(qsizetype index)
{
    while (!isComplete() && qsizetype(m_starts.size()) <= index)
        findNext();
    return index >= 0 && index < qsizetype(m_starts.size());
}

LineSegments::Segment LineSegments::at(qsizetype index)
{
    [[maybe_unused]] const bool exists = contains(index);
    Q_ASSERT(exists);
    return m_starts[std::size_t(index)];
}

std::string_view LineSegments::bytes(qsizetype index)
{
    const qsizetype first = at(index).byte;
    const qsizetype behind = contains(index + 1) ? at(index + 1).byte : qsizetype(m_utf8.size());
    return m_utf8.substr(std::size_t(first), std::size_t(behind - first));
}

qsizetype LineSegments::count()
{
    while (!isComplete())
        findNext();
    return qsizetype(m_starts.size());
}

qsizetype LineSegments::unitCount()
{
    while (!isComplete())
        findNext();
    return m_next.unit;
}

qint64 LineSegments::columns()
{
    while (!isComplete())
        findNext();
    return m_next.column;
}

} // namespace velmora
