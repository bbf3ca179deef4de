#include "merge/engine/merge_writer.h"

#include "core/output_buffer.h"
#include "merge/engine/telling_lines.h"

#include <algorithm>

namespace velmora {

namespace {

/// Conflicts so near to each other are read as one.
constexpr qsizetype linesBetween = 3;

using Chunks = std::vector<MergeChunk>;

/// Some lines of a text as a text of its own, which shares them.
TextLines partOf(const TextLines &text, LineRange range)
{
    const std::string_view bytes = bytesOf(text, range);
    return TextLines::split(QByteArray::fromRawData(bytes.data(), qsizetype(bytes.size())));
}

/// A conflict without what both versions have in common.
void appendCutUp(Chunks &shown, const MergeChunk &conflict, const ChunkTexts &texts)
{
    const TextLines left = partOf(texts.left, conflict.left);
    Progress silent;
    // What the right version differs in from the left one.
    const ChunkMerge versions = mergeChunks(left, left, partOf(texts.right, conflict.right), {}, {}, silent);
    LineRange base = conflict.base;
    for (MergeChunk chunk : versions.chunks) {
        chunk.kind = chunk.kind == ChunkKind::Unchanged ? ChunkKind::Both : ChunkKind::Conflict;
        chunk.base = base;
        base = {base.end(), 0};
        chunk.left.first += conflict.left.first;
        chunk.right.first += conflict.right.first;
        shown.push_back(chunk);
    }
}

/// A conflict without the lines that both versions begin or end with.
void appendTrimmed(Chunks &shown, const MergeChunk &conflict, const ChunkTexts &texts)
{
    const LineRange left = conflict.left;
    const LineRange right = conflict.right;
    const auto same = [&texts](qsizetype l, qsizetype r) {
        return bytesOf(texts.left, {l, 1}) == bytesOf(texts.right, {r, 1});
    };
    const qsizetype shorter = std::min(left.count, right.count);
    qsizetype above = 0;
    while (above < shorter && same(left.first + above, right.first + above))
        ++above;
    qsizetype below = 0;
    while (below < shorter - above && same(left.end() - below - 1, right.end() - below - 1))
        ++below;
    const auto append = [&](ChunkKind kind, LineRange base, qsizetype l, qsizetype lCount, qsizetype r,
                            qsizetype rCount) {
        if (lCount > 0 || rCount > 0)
            shown.push_back({kind, ChunkMark::None, base, {l, lCount}, {r, rCount}});
    };
    append(ChunkKind::Both, {conflict.base.first, 0}, left.first, above, right.first, above);
    append(ChunkKind::Conflict, conflict.base, left.first + above, left.count - above - below, right.first + above,
           right.count - above - below);
    append(ChunkKind::Both, {conflict.base.end(), 0}, left.end() - below, below, right.end() - below, below);
}

bool isTaken(const MergeChunk &chunk) noexcept
{
    return chunk.kind == ChunkKind::Unchanged || chunk.kind == ChunkKind::Both;
}

LineRange upTo(LineRange first, LineRange last) noexcept
{
    return {first.first, last.end() - first.first};
}

/// Makes one conflict of those between which there is next to nothing.
Chunks withNearConflictsJoined(const Chunks &chunks, const TextLines &left)
{
    Chunks joined;
    qsizetype lastConflict = -1; ///< in `joined`, when nothing but taken text has followed it
    for (const MergeChunk &chunk : chunks) {
        joined.push_back(chunk);
        if (isTaken(chunk))
            continue;
        if (chunk.kind != ChunkKind::Conflict) {
            lastConflict = -1;
            continue;
        }
        if (lastConflict >= 0) {
            MergeChunk &before = joined[size_t(lastConflict)];
            const LineRange between{before.left.end(), chunk.left.first - before.left.end()};
            if (between.count <= linesBetween || !isTelling(bytesOf(left, between))) {
                before.base = upTo(before.base, chunk.base);
                before.left = upTo(before.left, chunk.left);
                before.right = upTo(before.right, chunk.right);
                joined.resize(size_t(lastConflict) + 1);
                continue;
            }
        }
        lastConflict = qsizetype(joined.size()) - 1;
    }
    return joined;
}

enum class EndKind : quint8 { Unknown, Lf, CrLf };

/// How the line before `range` ends, or the first one of the text.
EndKind endBefore(const TextLines &text, LineRange range)
{
    if (text.isEmpty())
        return EndKind::Unknown;
    switch (text.lineEnd(std::max<qsizetype>(range.first - 1, 0))) {
    case LineEnd::CrLf:
        return EndKind::CrLf;
    case LineEnd::Lf:
        return EndKind::Lf;
    case LineEnd::None:
    case LineEnd::Cr:
        break;
    }
    return EndKind::Unknown;
}

std::string_view endOfMarkers(const ChunkTexts &texts, const MergeChunk &conflict)
{
    const EndKind left = endBefore(texts.left, conflict.left);
    const EndKind right = endBefore(texts.right, conflict.right);
    const bool anyLf = left == EndKind::Lf || right == EndKind::Lf;
    const bool anyCrLf = left == EndKind::CrLf || right == EndKind::CrLf;
    return anyCrLf && !anyLf ? "\r\n" : "\n";
}

class ConflictWriter {
public:
    ConflictWriter(OutputBuffer &output, const MarkerFormat &format, std::string_view end)
        : m_output(output), m_format(format), m_end(end)
    {}

    void marker(char sign, const QByteArray &name)
    {
        QByteArray line(m_format.size, sign);
        if (!name.isEmpty())
            line += ' ' + name;
        m_output << std::string_view(line.constData(), size_t(line.size())) << m_end;
    }

    void lines(const TextLines &text, LineRange range)
    {
        const std::string_view bytes = bytesOf(text, range);
        m_output << bytes;
        if (!bytes.empty() && bytes.back() != '\n')
            m_output << m_end;
    }

private:
    OutputBuffer &m_output;
    const MarkerFormat &m_format;
    std::string_view m_end;
};

void writeConflict(OutputBuffer &output, const MergeChunk &conflict, const ChunkTexts &texts,
                   const MarkerFormat &format)
{
    ConflictWriter writer(output, format, endOfMarkers(texts, conflict));
    writer.marker('<', format.leftName);
    writer.lines(texts.left, conflict.left);
    if (format.style != MarkerStyle::Merge) {
        writer.marker('|', format.baseName);
        writer.lines(texts.base, conflict.base);
    }
    writer.marker('=', {});
    writer.lines(texts.right, conflict.right);
    writer.marker('>', format.rightName);
}

} // namespace

std::vector<MergeChunk> shownChunks(const ChunkMerge &merge, const ChunkTexts &texts, MarkerStyle style)
{
    if (style == MarkerStyle::Diff3 || merge.isClean())
        return merge.chunks;
    Chunks shown;
    for (const MergeChunk &chunk : merge.chunks) {
        if (chunk.kind != ChunkKind::Conflict)
            shown.push_back(chunk);
        else if (style == MarkerStyle::Merge)
            appendCutUp(shown, chunk, texts);
        else
            appendTrimmed(shown, chunk, texts);
    }
    return style == MarkerStyle::Merge ? withNearConflictsJoined(shown, texts.left) : shown;
}

void writeMerge(OutputBuffer &output, const std::vector<MergeChunk> &shown, const ChunkTexts &texts,
                const MarkerFormat &format)
{
    for (const MergeChunk &chunk : shown) {
        if (chunk.kind == ChunkKind::Conflict)
            writeConflict(output, chunk, texts, format);
        else if (chunk.kind == ChunkKind::Right)
            output << bytesOf(texts.right, chunk.right);
        else
            output << bytesOf(texts.left, chunk.left);
    }
}

} // namespace velmora
