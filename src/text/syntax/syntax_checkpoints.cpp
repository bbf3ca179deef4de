#include "text/syntax/syntax_checkpoints.h"

#include "core/utf8_text.h"
#include "text/syntax/syntax_scanner.h"

#include <algorithm>

namespace velmora {

QString colouredPart(std::string_view utf8)
{
    // No unit takes more than three bytes.
    constexpr std::size_t enough = 3 * (longestColouredLine + 1);
    if (utf8.size() > enough) {
        std::size_t end = enough;
        while (end > 0 && (static_cast<unsigned char>(utf8[end]) & 0xC0) == 0x80)
            --end;
        utf8 = utf8.substr(0, end);
    }
    return textOfUtf8(utf8);
}

SyntaxCheckpoints::SyntaxCheckpoints() : m_entries(1) {}

const SyntaxCheckpoints::Checkpoint &SyntaxCheckpoints::before(qsizetype line) const
{
    const auto sureEnd = m_entries.begin() + std::ptrdiff_t(m_sure);
    const auto behind = std::upper_bound(m_entries.begin(), sureEnd, line, [](qsizetype wanted, const Entry &entry) {
        return wanted < entry.checkpoint.line;
    });
    return std::prev(behind)->checkpoint;
}

qsizetype SyntaxCheckpoints::extend(const SyntaxDefinition &definition, const SyntaxText &text, qsizetype line,
                                    qsizetype bytes, const CancelFlag &cancel)
{
    qsizetype read = 0;
    while (!reaches(line) && read < bytes && !cancel.isCancelled()) {
        const Checkpoint from = m_entries[m_sure - 1].checkpoint;
        qsizetype to = std::min(from.line + spacing, text.count);
        if (m_sure < m_entries.size())
            to = std::min(to, m_entries[m_sure].checkpoint.line);
        if (to <= from.line)
            break;
        SyntaxState state = from.state;
        for (qsizetype at = from.line; at < to; ++at) {
            const QString part = colouredPart(text.line(at));
            state = stateBehind(definition, state, part);
            read += part.size() + 1;
        }
        take(to, state);
    }
    return read;
}

void SyntaxCheckpoints::take(qsizetype line, const SyntaxState &state)
{
    const auto next = m_entries.begin() + std::ptrdiff_t(m_sure);
    if (next == m_entries.end() || next->checkpoint.line > line) {
        m_entries.insert(next, Entry{{line, state}, true});
    } else {
        if (next->checkpoint.state != state) {
            next->checkpoint.state = state;
            if (next + 1 != m_entries.end())
                (next + 1)->follows = false;
        }
        next->follows = true;
    }
    findSure();
}

void SyntaxCheckpoints::findSure()
{
    while (m_sure < m_entries.size() && m_entries[m_sure].follows)
        ++m_sure;
}

void SyntaxCheckpoints::edit(qsizetype first, qsizetype removed, qsizetype inserted)
{
    const auto lineOf = [](const Entry &entry) { return entry.checkpoint.line; };
    const auto kept = std::partition_point(m_entries.begin(), m_entries.end(),
                                           [&](const Entry &entry) { return lineOf(entry) <= first; });
    // Removing whole lines leaves one state for the place between those before and behind.
    const qsizetype end = inserted > 0 ? first + removed : first + removed + 1;
    const auto moved =
        std::partition_point(kept, m_entries.end(), [&](const Entry &entry) { return lineOf(entry) < end; });
    for (auto entry = moved; entry != m_entries.end(); ++entry)
        entry->checkpoint.line += inserted - removed;
    if (moved != m_entries.end())
        moved->follows = false;
    m_sure = std::min(m_sure, std::size_t(kept - m_entries.begin()));
    m_entries.erase(kept, moved);
}

} // namespace velmora
