#include "merge/merge_job.h"

#include "core/line_ends.h"
#include "core/text_pair.h"
#include "merge/engine/conflict_markers.h"

#include <utility>

namespace velmora {

namespace {

using End = MergeResult::End;

struct Reading {
    MergeResult result;
    std::array<QByteArray, mergeSourceCount> raw;
};

LoadedText &sourceIn(MergeResult &result, MergeSource source)
{
    return result.sources[std::size_t(source)];
}

bool read(Reading &reading, const MergeRequest &request, MergeSource source, const CancelFlag &cancel)
{
    const auto index = std::size_t(source);
    std::optional<LoadedText> loaded = loadText(request.sources[index], reading.raw[index], cancel);
    reading.result.failed = source;
    if (!loaded) {
        reading.result.end = End::Unreadable;
        return false;
    }
    reading.result.sources[index] = std::move(*loaded);
    if (reading.result.sources[index].text.tooLarge)
        reading.result.end = End::TooLarge;
    return reading.result.end == End::Merged;
}

/// Two versions are mostly of one language: what only was guessed of one may be known of another.
void settleEncodings(Reading &reading, MergeSource one, MergeSource other, const CancelFlag &cancel)
{
    LoadedText &first = sourceIn(reading.result, one);
    LoadedText &second = sourceIn(reading.result, other);
    if ((!first.text.encodingGuessed && !second.text.encodingGuessed) || first.missing || second.missing)
        return;
    RawText firstRaw{reading.raw[std::size_t(one)], std::move(first.text)};
    RawText secondRaw{reading.raw[std::size_t(other)], std::move(second.text)};
    settleGuesses(firstRaw, secondRaw, cancel);
    first.text = std::move(firstRaw.text);
    second.text = std::move(secondRaw.text);
}

/// A result without a file of its own is encoded as the left text, or the first of the others that there is.
void readOutput(MergeResult &result, const MergeRequest &request, const CancelFlag &cancel)
{
    for (const MergeSource source : {MergeSource::Left, MergeSource::Right, MergeSource::Base}) {
        const LoadedText &like = sourceIn(result, source);
        if (like.missing)
            continue;
        result.output.text.encoding = like.text.encoding;
        result.output.text.lineEnds = like.text.lineEnds;
        break;
    }
    if (request.isMarked)
        result.output = sourceIn(result, MergeSource::Left);
    if (request.isMarked || request.output.path.isEmpty())
        return;
    QByteArray raw;
    std::optional<LoadedText> there = loadText(request.output, raw, cancel);
    if (there && !there->missing)
        result.output = std::move(*there);
    else
        result.output.missing = true;
}

/// Where there is no base, or an empty one, all that differs is a conflict, and what is the same stands for the base.
ChunkMerge mergeWithoutBase(const TextLines &left, const TextLines &right, TextLines &base, const CancelFlag &cancel,
                            Progress &progress)
{
    ChunkMerge merge = mergeChunks(left, left, right, {}, cancel, progress);
    TextLinesBuilder common;
    qsizetype lines = 0;
    for (MergeChunk &chunk : merge.chunks) {
        chunk.base = {lines, 0};
        if (chunk.kind != ChunkKind::Unchanged) {
            chunk.kind = ChunkKind::Conflict;
            continue;
        }
        chunk.base.count = chunk.left.count;
        lines += chunk.left.count;
        for (qsizetype line = chunk.left.first; line < chunk.left.end(); ++line)
            common.append(left.line(line), left.lineEnd(line));
    }
    base = common.take();
    return merge;
}

/// Where a version ends all lines in another way than the base, that is a change of its own, which the result takes
/// over: the lines are merged without it, as every one of them would be a conflict.
std::optional<LineEndStyle> lineEndsOf(MergeResult &result)
{
    // A text without any line end goes along with the others.
    const auto styleOr = [&result](MergeSource source, LineEndStyle other) {
        const DecodedText &text = sourceIn(result, source).text;
        const bool hasEnds =
            text.lines.count() > 1 || (!text.lines.isEmpty() && text.lines.lineEnd(0) != LineEnd::None);
        return hasEnds ? text.lineEnds : other;
    };
    const LineEndStyle any = styleOr(MergeSource::Right, styleOr(MergeSource::Left, LineEndStyle::Lf));
    const LineEndStyle base = styleOr(MergeSource::Base, any);
    const LineEndStyle left = styleOr(MergeSource::Left, base);
    const LineEndStyle right = styleOr(MergeSource::Right, base);
    const auto isSimple = [](LineEndStyle one) { return one == LineEndStyle::Lf || one == LineEndStyle::CrLf; };
    if (!isSimple(left) || !isSimple(right) || !isSimple(base) || (left == base && right == base))
        return std::nullopt;
    return left != base ? left : right;
}

bool coversAll(const std::vector<MergePart> &parts, const MergeTexts &texts, const TextLines &result)
{
    std::array<qsizetype, mergeSourceCount> next{};
    qsizetype lines = 0;
    for (const MergePart &part : parts) {
        for (std::size_t k = 0; k < mergeSourceCount; ++k) {
            if (part.lines[k].count < 0 || part.lines[k].first != std::exchange(next[k], part.lines[k].end()) ||
                next[k] > texts.text(MergeSource(k)).count())
                return false;
        }
        if (part.resultCount < 0)
            return false;
        lines += part.resultCount;
    }
    for (std::size_t k = 0; k < mergeSourceCount; ++k) {
        if (next[k] != texts.text(MergeSource(k)).count())
            return false;
    }
    return lines == result.count();
}

/// Whether these are as many lines as the result has, of lines that the texts have.
bool coverResult(const std::vector<ResultRun> &runs, const MergeTexts &texts, const TextLines &result)
{
    qsizetype lines = 0;
    for (const ResultRun &run : runs) {
        if (run.source && run.lines.end() > texts.text(*run.source).count())
            return false;
        lines += run.lines.count;
    }
    return lines == result.count();
}

/// The result of a kept merge, whose lines share the memory of the texts that they come from.
EditBuffer keptResult(const KeptMerge &kept, const MergeTexts &texts)
{
    if (!coverResult(kept.runs, texts, kept.result))
        return EditBuffer(kept.result);
    const auto whole = std::make_shared<const TextLines>(kept.result);
    std::vector<LineRun> runs;
    qsizetype start = 0;
    for (const ResultRun &run : kept.runs) {
        if (run.source)
            texts.append(runs, *run.source, run.lines);
        else
            texts.append(runs, LineRun{whole, start, run.lines.count});
        start += run.lines.count;
    }
    return EditSnapshot(runs).holdsSameAs(kept.result) ? EditBuffer(runs) : EditBuffer(kept.result);
}

/// Takes a kept merge up; one that does not fit its texts becomes one part by hand, so that nothing of it is lost.
void takeKept(MergeResult &result, const KeptMerge &kept, const MergeTexts &texts)
{
    if (coversAll(kept.parts, texts, kept.result)) {
        result.parts = MergeParts(kept.parts);
        result.result = keptResult(kept, texts);
        return;
    }
    MergePart all;
    all.kind = ChunkKind::Conflict;
    all.choice = MergeChoice::ByHand;
    all.isByPerson = true;
    all.resultCount = kept.result.count();
    for (std::size_t k = 0; k < mergeSourceCount; ++k)
        all.lines[k] = {0, texts.text(MergeSource(k)).count()};
    result.parts = MergeParts({all});
    result.result = EditBuffer(kept.result);
}

} // namespace

MergeResult runMerge(const MergeRequest &request, const CancelFlag &cancel, Progress &progress)
{
    Reading reading;
    MergeResult &result = reading.result;
    progress.report(0, 0, 0);
    for (const MergeSource source : {MergeSource::Left, MergeSource::Base, MergeSource::Right}) {
        if (!read(reading, request, source, cancel))
            return std::move(result);
    }
    settleEncodings(reading, MergeSource::Left, MergeSource::Right, cancel);
    settleEncodings(reading, MergeSource::Left, MergeSource::Base, cancel);
    reading.raw = {};
    readOutput(result, request, cancel);

    ChunkMerge merge;
    std::shared_ptr<const MergeTexts> texts;
    if (request.isMarked) {
        std::optional<MarkedMerge> marked = readConflictMarkers(sourceIn(result, MergeSource::Left).text.lines);
        if (!marked) {
            result.end = End::NoMarkers;
            return std::move(result);
        }
        texts = std::make_shared<const MergeTexts>(marked->left, marked->base, marked->right);
        merge = std::move(marked->merge);
        result.labels = {marked->leftLabel, marked->baseLabel, marked->rightLabel};
    } else {
        Progress merging([&progress](const ProgressState &state) {
            progress.report(state.phase + 1, state.done, state.total, state.item);
        });
        result.lineEnds = lineEndsOf(result);
        const auto lines = [&result](MergeSource source) {
            const DecodedText &text = sourceIn(result, source).text;
            const bool isOther = result.lineEnds && text.lineEnds != *result.lineEnds;
            return isOther ? withLineEnds(text.lines, *result.lineEnds) : text.lines;
        };
        const TextLines left = lines(MergeSource::Left);
        const TextLines right = lines(MergeSource::Right);
        TextLines base = lines(MergeSource::Base);
        merge = base.isEmpty() && !request.kept ? mergeWithoutBase(left, right, base, cancel, merging)
                                                : mergeChunks(base, left, right, request.options, cancel, merging);
        texts = std::make_shared<const MergeTexts>(left, base, right);
    }
    if (cancel.isCancelled())
        return std::move(result);
    if (request.kept) {
        takeKept(result, *request.kept, *texts);
    } else {
        result.parts = MergeParts(partsOf(merge));
        result.result = EditBuffer(resultOf(*texts, result.parts.all()));
    }
    PaneTexts panes;
    for (std::size_t k = 0; k < mergeSourceCount; ++k)
        panes.push_back(EditBuffer(texts->text(MergeSource(k))).snapshot());
    panes.push_back(result.result.snapshot());
    MergeRows rows = mergeRows(*texts, result.parts, *result.result.snapshot(), cancel);
    if (!cancel.isCancelled()) {
        result.document =
            std::make_shared<MergeDocument>(texts, std::make_shared<const std::vector<MergePart>>(result.parts.all()),
                                            std::move(rows), panes, request.tabWidth);
    }
    return std::move(result);
}

} // namespace velmora
