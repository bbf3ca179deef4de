#include "merge/model/line_by_line.h"

#include "merge/engine/three_way_merge.h"

namespace velmora {

namespace {

TextLines cut(const TextLines &text, const LineRange &lines)
{
    TextLinesBuilder builder;
    for (qsizetype line = lines.first; line < lines.end(); ++line)
        builder.append(text.line(line), text.lineEnd(line));
    return builder.take();
}

/// The line of a text that a merged line has.
SourceLine sourceOf(const MergedLine &line)
{
    switch (line.from) {
    case MergedFrom::Left:
    case MergedFrom::Both:
        return {MergeSource::Left, line.left};
    case MergedFrom::Right:
        return {MergeSource::Right, line.right};
    case MergedFrom::Base:
    case MergedFrom::Conflict:
        break;
    }
    return {MergeSource::Base, line.base};
}

} // namespace

LineByLine mergeLineByLine(const MergeTexts &texts, const MergePart &part)
{
    const auto linesOf = [&](MergeSource source) { return cut(texts.text(source), part.of(source)); };
    Progress nobody;
    const ThreeWayMerge merge =
        mergeThreeWay(linesOf(MergeSource::Base), linesOf(MergeSource::Left), linesOf(MergeSource::Right), {}, nobody);
    LineByLine result;
    for (const MergedLine &line : merge.lines) {
        if (line.from == MergedFrom::Conflict) {
            result.hasConflict = true;
            continue;
        }
        const SourceLine taken = sourceOf(line);
        texts.append(result.lines, taken.source, {part.of(taken.source).first + taken.line, 1});
    }
    for (const LeftOutLine &line : merge.leftOut) {
        const MergeSource source = line.side == Side::Left ? MergeSource::Left : MergeSource::Right;
        result.leftOut.push_back({source, part.of(source).first + line.line});
    }
    return result;
}

} // namespace velmora
