#include "merge/model/merge_part.h"

#include <algorithm>

namespace velmora {

namespace {

bool needsEnd(LineEnd end)
{
    return end == LineEnd::None || end == LineEnd::Cr;
}

MergeChoice settled(ChunkKind kind)
{
    switch (kind) {
    case ChunkKind::Unchanged:
        return MergeChoice::Base;
    case ChunkKind::Left:
    case ChunkKind::Both:
        return MergeChoice::Left;
    case ChunkKind::Right:
        return MergeChoice::Right;
    case ChunkKind::Conflict:
        return MergeChoice::Open;
    }
    return MergeChoice::Open;
}

std::shared_ptr<const TextLines> oneLine(std::string_view line, LineEnd end)
{
    TextLinesBuilder builder;
    builder.append(line, end);
    return std::make_shared<const TextLines>(builder.take());
}

} // namespace

MergeTexts::MergeTexts(const TextLines &left, const TextLines &base, const TextLines &right)
{
    const TextLines *texts[] = {&left, &base, &right};
    for (std::size_t k = 0; k < mergeSourceCount; ++k)
        m_texts[k].whole = std::make_shared<const TextLines>(*texts[k]);
    for (Text &text : m_texts) {
        const qsizetype last = text.whole->count() - 1;
        if (last >= 0 && needsEnd(text.whole->lineEnd(last)))
            text.endedLast = oneLine(text.whole->line(last), usualEnd());
    }
}

LineEnd MergeTexts::usualEnd() const
{
    for (const Text &text : m_texts) {
        if (text.whole->count() > 0 && !needsEnd(text.whole->lineEnd(0)))
            return text.whole->lineEnd(0);
    }
    return LineEnd::Lf;
}

LineRun MergeTexts::withEnd(const LineRun &last) const
{
    for (const Text &text : m_texts) {
        if (text.whole == last.text && text.endedLast)
            return {text.endedLast, 0, 1};
    }
    return {oneLine(last.text->line(last.first), usualEnd()), 0, 1};
}

void MergeTexts::append(std::vector<LineRun> &runs, const LineRun &run) const
{
    if (run.count == 0)
        return;
    if (!runs.empty()) {
        LineRun &before = runs.back();
        const LineRun last{before.text, before.first + before.count - 1, 1};
        if (needsEnd(last.text->lineEnd(last.first))) {
            before.count -= 1;
            if (before.count == 0)
                runs.pop_back();
            runs.push_back(withEnd(last));
        }
    }
    runs.push_back(run);
}

void MergeTexts::append(std::vector<LineRun> &runs, MergeSource source, const LineRange &lines) const
{
    append(runs, LineRun{m_texts[std::size_t(source)].whole, lines.first, lines.count});
}

void MergeTexts::append(std::vector<LineRun> &runs, const std::vector<LineRun> &lines) const
{
    for (const LineRun &run : lines)
        append(runs, run);
}

std::optional<SourceLine> MergeTexts::originOf(const LineRun &run, qsizetype number) const
{
    for (std::size_t k = 0; k < mergeSourceCount; ++k) {
        if (run.text == m_texts[k].whole)
            return SourceLine{MergeSource(k), run.first + number};
        if (m_texts[k].endedLast && run.text == m_texts[k].endedLast)
            return SourceLine{MergeSource(k), m_texts[k].whole->count() - 1};
    }
    return std::nullopt;
}

std::vector<MergeSource> sourcesOf(MergeChoice choice)
{
    switch (choice) {
    case MergeChoice::Base:
        return {MergeSource::Base};
    case MergeChoice::Left:
        return {MergeSource::Left};
    case MergeChoice::Right:
        return {MergeSource::Right};
    case MergeChoice::LeftThenRight:
        return {MergeSource::Left, MergeSource::Right};
    case MergeChoice::RightThenLeft:
        return {MergeSource::Right, MergeSource::Left};
    case MergeChoice::Open:
    case MergeChoice::ByHand:
    case MergeChoice::LineByLine:
        break;
    }
    return {};
}

std::vector<MergePart> partsOf(const ChunkMerge &merge)
{
    std::vector<MergePart> parts;
    parts.reserve(merge.chunks.size());
    for (const MergeChunk &chunk : merge.chunks) {
        MergePart part;
        part.kind = chunk.kind;
        part.lines = {chunk.left, chunk.base, chunk.right};
        part.choice = settled(chunk.kind);
        part.mark = chunk.mark;
        for (const MergeSource source : sourcesOf(part.choice))
            part.resultCount += part.of(source).count;
        parts.push_back(part);
    }
    return parts;
}

std::vector<LineRun> resultOf(const MergeTexts &texts, const std::vector<MergePart> &parts)
{
    std::vector<LineRun> runs;
    for (const MergePart &part : parts) {
        for (const MergeSource source : sourcesOf(part.choice))
            texts.append(runs, source, part.of(source));
    }
    return runs;
}

} // namespace velmora
