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

/// Follows the markers of a text, line by line.
class MarkerOrder {
public:
    enum class Step { Line, Marker, Wrong };

    /// What a line is; wrong is a marker that cannot stand here.
    [[nodiscard]] Step read(std::string_view line)
    {
        if (isMarker(line, '<'))
            return pass(m_section == Section::Common, Section::Left);
        if (m_section == Section::Common)
            return Step::Line;
        if (isMarker(line, '>')) {
            ++m_conflicts;
            return pass(m_section == Section::Right, Section::Common);
        }
        if (isMarker(line, '|'))
            return pass(m_section == Section::Left, Section::Base);
        if (isMarker(line, '='))
            return pass(m_section == Section::Left || m_section == Section::Base, Section::Right);
        return Step::Line;
    }

    [[nodiscard]] Section section() const noexcept { return m_section; }
    /// Whether a text that ends here holds conflicts, each of them to its end.
    [[nodiscard]] bool isComplete() const noexcept { return m_section == Section::Common && m_conflicts > 0; }

private:
    [[nodiscard]] Step pass(bool isInOrder, Section to)
    {
        m_section = to;
        return isInOrder ? Step::Marker : Step::Wrong;
    }

    Section m_section = Section::Common;
    qsizetype m_conflicts = 0;
};

class MarkerReader {
public:
    /// False for a marker that cannot stand here.
    [[nodiscard]] bool read(std::string_view line, LineEnd end)
    {
        switch (m_order.read(line)) {
        case MarkerOrder::Step::Line:
            take(line, end);
            return true;
        case MarkerOrder::Step::Marker:
            passMarker(line);
            return true;
        case MarkerOrder::Step::Wrong:
            break;
        }
        return false;
    }

    [[nodiscard]] std::optional<MarkedMerge> finish()
    {
        closeChunk();
        if (!m_order.isComplete())
            return std::nullopt;
        m_merge.left = m_texts[0].take();
        m_merge.base = m_texts[1].take();
        m_merge.right = m_texts[2].take();
        return std::move(m_merge);
    }

private:
    void passMarker(std::string_view line)
    {
        switch (m_order.section()) {
        case Section::Left:
            closeChunk();
            m_chunk.kind = ChunkKind::Conflict;
            keepLabel(m_merge.leftLabel, line);
            break;
        case Section::Base:
            m_merge.hasBase = true;
            keepLabel(m_merge.baseLabel, line);
            break;
        case Section::Right:
            break;
        case Section::Common:
            keepLabel(m_merge.rightLabel, line);
            closeChunk();
            break;
        }
    }

    static void keepLabel(QByteArray &label, std::string_view line)
    {
        if (label.isEmpty())
            label = labelOf(line);
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
        const Section section = m_order.section();
        for (std::size_t k = 0; k < textCount; ++k) {
            if (section != Section::Common && int(section) != int(k) + 1)
                continue;
            m_texts[k].append(line, end);
            ++m_counts[k];
            ++ranges[k]->count;
        }
    }

    MarkerOrder m_order;
    MarkedMerge m_merge;
    MergeChunk m_chunk;
    std::array<TextLinesBuilder, textCount> m_texts;
    std::array<qsizetype, textCount> m_counts{};
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
    if (text.bytes().find("<<<<<<<") == std::string_view::npos)
        return false;
    MarkerOrder order;
    for (qsizetype line = 0; line < text.count(); ++line) {
        if (order.read(text.line(line)) == MarkerOrder::Step::Wrong)
            return false;
    }
    return order.isComplete();
}

} // namespace velmora
