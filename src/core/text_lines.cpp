#include "core/text_lines.h"

#include "core/text_scan.h"
#include "core/utf8_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <numeric>
#include <utility>

namespace velmora {

namespace {

constexpr size_t cancelInterval = 4 * 1024 * 1024;
/// Still in the nearest cache when it is read a second time.
constexpr size_t blockToSplit = 16 * 1024;

LineEnd endOf(std::string_view lineWithEnd) noexcept
{
    if (lineWithEnd.ends_with('\n'))
        return lineWithEnd.size() >= 2 && lineWithEnd[lineWithEnd.size() - 2] == '\r' ? LineEnd::CrLf : LineEnd::Lf;
    return lineWithEnd.ends_with('\r') ? LineEnd::Cr : LineEnd::None;
}

bool isAscii(std::string_view text) noexcept
{
    using Block = std::array<std::uint64_t, 8>;
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    for (; text.size() >= sizeof(Block); text.remove_prefix(sizeof(Block))) {
        Block block;
        std::memcpy(block.data(), text.data(), sizeof(Block));
        const std::uint64_t all = std::accumulate(block.begin(), block.end(), std::uint64_t(0), std::bit_or<>());
        if (all & highBits)
            return false;
    }
    return std::all_of(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0x80) == 0; });
}

/// The lines of its first block foretell those of a text, but not when they are shorter than these: one block of line
/// feeds shall not ask for more memory than the text has.
size_t mostForetold(std::string_view text) noexcept
{
    constexpr size_t shortLine = 16;
    return text.size() / shortLine;
}

} // namespace

std::string_view lineEndBytes(LineEnd end) noexcept
{
    switch (end) {
    case LineEnd::None:
        break;
    case LineEnd::Lf:
        return "\n";
    case LineEnd::CrLf:
        return "\r\n";
    case LineEnd::Cr:
        return "\r";
    }
    return {};
}

TextLines TextLines::split(const QByteArray &utf8, qsizetype begin, const CancelFlag &cancel)
{
    ByteCounts counts;
    return splitCounting(utf8, begin, counts, cancel);
}

TextLines TextLines::splitCounting(const QByteArray &utf8, qsizetype begin, ByteCounts &counts,
                                   const CancelFlag &cancel)
{
    const std::string_view text(utf8.constData(), size_t(utf8.size()));
    const size_t first = size_t(begin);
    counts = {};
    if (first >= text.size())
        return {};

    auto table = std::make_shared<Table>(1, quint32(first));
    size_t used = 1;
    for (size_t at = first; at < text.size() && !cancel.isCancelled(); at += blockToSplit) {
        const size_t end = std::min(at + blockToSplit, text.size());
        counts += countBytes(text, at, end);
        const size_t lines = size_t(counts.lineFeeds);
        if (at == first)
            table->reserve(std::min(lines * (text.size() - first) / (end - first) * 9 / 8, mostForetold(text)) + 2);
        table->resize(lines + 1);
        quint32 *next = table->data() + used;
        forEachLineFeed(text, at, end, [&next](size_t offset) { *next++ = quint32(offset) + 1; });
        used = lines + 1;
    }
    if (table->back() < text.size() && !cancel.isCancelled())
        table->push_back(quint32(text.size()));
    return TextLines(utf8, std::move(table), counts.ascii);
}

TextLines TextLines::split(const QByteArray &utf8, qsizetype begin, const ByteCounts &counts, const CancelFlag &cancel)
{
    const std::string_view text(utf8.constData(), size_t(utf8.size()));
    const size_t first = size_t(begin);
    if (first >= text.size())
        return {};

    // Every line's start, and one end for the last line.
    const size_t unended = text.back() == '\n' ? 0 : 1;
    auto table = std::make_shared<Table>(size_t(counts.lineFeeds) + unended + 1);
    quint32 *next = table->data();
    *next++ = quint32(first);
    size_t cut = first;
    while (cut < text.size() && !cancel.isCancelled()) {
        const size_t end = std::min(cut + cancelInterval, text.size());
        forEachLineFeed(text, cut, end, [&next](size_t offset) { *next++ = quint32(offset) + 1; });
        cut = end;
    }
    if (cut < text.size())
        table->resize(size_t(next - table->data()));
    else if (unended)
        *next = quint32(text.size());

    return TextLines(utf8, std::move(table), counts.ascii);
}

LineEnd TextLines::lineEnd(qsizetype index) const noexcept
{
    return endOf(lineWithEnd(index));
}

QString TextLines::text(qsizetype index) const
{
    const std::string_view utf8 = line(index);
    return m_ascii ? QString::fromLatin1(utf8.data(), qsizetype(utf8.size())) : textOfUtf8(utf8);
}

std::string_view TextLines::bytes() const noexcept
{
    if (isEmpty())
        return {};
    return {m_text + m_table->front(), size_t(m_table->back() - m_table->front())};
}

qsizetype TextLines::lineAt(qsizetype offset) const noexcept
{
    const quint32 absolute = m_table->front() + quint32(offset);
    return std::upper_bound(m_table->cbegin(), m_table->cend(), absolute) - m_table->cbegin() - 1;
}

void TextLinesBuilder::reserve(qsizetype bytes, qsizetype lines)
{
    m_bytes.reserve(bytes);
    m_table.reserve(size_t(lines) + 1);
}

void TextLinesBuilder::append(std::string_view line, LineEnd end)
{
    const std::string_view ending = lineEndBytes(end);
    m_bytes.append(line.data(), qsizetype(line.size()));
    m_bytes.append(ending.data(), qsizetype(ending.size()));
    m_table.push_back(quint32(m_bytes.size()));
}

void TextLinesBuilder::appendFirst(QByteArray &&line, LineEnd end)
{
    Q_ASSERT(m_bytes.isEmpty());
    m_bytes = std::move(line);
    append({}, end);
}

TextLines TextLinesBuilder::take()
{
    const QByteArray bytes = std::exchange(m_bytes, {});
    auto table = std::make_shared<const TextLines::Table>(std::exchange(m_table, {0}));
    return TextLines(bytes, std::move(table), isAscii({bytes.constData(), size_t(bytes.size())}));
}

} // namespace velmora
