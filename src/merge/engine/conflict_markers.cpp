#include "merge/engine/conflict_markers.h"

#include <array>
#include <string_view>
#include <utility>

namespace velmora {

namespace {

constexpr std::size_t markerLength = 7;
constexpr std::size_t textCount = 3; // left, base and right

bool isMarker(std::string_view line, char sign)
{
    return line.size() >= markerLength && line.find_first_not_of(sign) >= markerLength &&
           (line.size() == markerLength || line[markerLength] == ' ' || line[markerLength] == '\t');
}

QByteArray labelOf(std::string_view line)
{
    return line.size() > markerLength + 1
               ? QByteArray(line.data() + markerLength + 1, qsizetype(line.size() - markerLength - 1))
               : QByteArray();
}

/// Where a line of the marked file belongs.
enum class Section { Common, Left, Base, Right };

class MarkerReader {
public:
    /// False for a marker that cannot stand here.
    [[nodiscard]] bool read(std::string_view line, LineEnd end)
    {
        if (isMarker(line, '<'))
            return enter(Section::Common, Section::Left, line, m_merge.leftLabel);
        if (isMarker(line, '>') && m_section != Section::Common)
            return leave(line);
        if (isMarker(line, '|') && m_section != Section::Common) {
            m_merge.hasBase = true;
            return enter(Section::Left, Section::Base, line, m_merge.baseLabel);
        }
        if (isMarker(line, '=') && m_section != Section::Common) {
            const bool isInOrder = m_section == Section::Left || m_section == Section::Base;
            m_section = Section::Right;
            return isInOrder;
        }
        take(line, end);
        return true;
    }

    [[nodiscard]] std::optional<MarkedMerge> finish()
    {
        closeChunk();
        if (m_section != Section::Common || m_conflicts == 0)
            return std::nullopt;
        m_merge.left = m_texts[0].take();
        m_merge.base = m_texts[1].take();
        m_merge.right = m_texts[2].take();
        return std::move(m_merge);
    }

private:
    bool enter(Section from, Section to, std::string_view line, QByteArray &label)
    {
        if (m_section != from)
            return false;
        if (to == Section::Left) {
            closeChunk();
            m_chunk.kind = ChunkKind::Conflict;
        }
        if (label.isEmpty())
            label = labelOf(line);
        m_section = to;
        return true;
    }

    bool leave(std::string_view line)
    {
        if (m_section != Section::Right)
            return false;
        ++m_conflicts;
        if (m_merge.rightLabel.isEmpty())
            m_merge.rightLabel = labelOf(line);
        closeChunk();
        m_section = Section::Common;
        return true;
    }

    void closeChunk()
    {
        LineRange *ranges[] = {&m_chunk.left, &m_chunk.base, &m_chunk.right};
        bool isEmpty = true;
        for (LineRange *range : ranges)
            isEmpty = isEmpty && range->count == 0;
        if (!isEmpty)
            m_merge.merge.chunks.push_back(m_chunk);
        m_chunk = {};
        for (std::size_t k = 0; k < textCount; ++k)
            ranges[k]->first = m_counts[k];
    }

    void take(std::string_view line, LineEnd end)
    {
        LineRange *ranges[] = {&m_chunk.left, &m_chunk.base, &m_chunk.right};
        for (std::size_t k = 0; k < textCount; ++k) {
            if (m_section != Section::Common && int(m_section) != int(k) + 1)
                continue;
            m_texts[k].append(line, end);
            ++m_counts[k];
            ++ranges[k]->count;
        }
    }

    MarkedMerge m_merge;
    MergeChunk m_chunk;
    std::array<TextLinesBuilder, textCount> m_texts;
    std::array<qsizetype, textCount> m_counts{};
    Section m_section = Section::Common;
    qsizetype m_conflicts = 0;
};

} // namespace

std::optional<MarkedMerge> readConflictMarkers(const TextLines &text)
{
    MarkerReader reader;
    for (qsizetype line = 0; line < text.count(); ++line) {
        if (!reader.read(text.line(line), text.lineEnd(line)))
            return std::nullopt;
    }
    return reader.finish();
}

bool hasConflictMarkers(const TextLines &text)
{
    return text.bytes().find("<<<<<<<") != std::string_view::npos && readConflictMarkers(text).has_value();
}

} // namespace velmora
