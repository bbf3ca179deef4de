#include "text/text_compare_job.h"

#include "core/text_pair.h"
#include "session/pane/edit_buffer.h"
#include "settings/options/text_replacements.h"

namespace velmora {

namespace {

/// False when the file could not be read. `raw` gets the bytes of one that was.
bool load(const TextOrigin &origin, LoadedText &side, QByteArray &raw, const CancelFlag &cancel)
{
    std::optional<LoadedText> loaded = loadText(origin, raw, cancel);
    if (loaded)
        side = *std::move(loaded);
    return loaded.has_value();
}

/// Two encodings that were guessed side by side are guessed again, together.
void settleEncodings(LoadedText &left, const QByteArray &leftRaw, LoadedText &right, const QByteArray &rightRaw,
                     const CancelFlag &cancel)
{
    if ((!left.text.encodingGuessed && !right.text.encodingGuessed) || left.missing || right.missing)
        return;
    RawText first{leftRaw, std::move(left.text)};
    RawText second{rightRaw, std::move(right.text)};
    settleGuesses(first, second, cancel);
    left.text = std::move(first.text);
    right.text = std::move(second.text);
}

/// Of a text that was edited nobody has counted the line ends.
EndedLines endedLines(const TextOrigin &origin, const LoadedText &side)
{
    return {side.text.lines, origin.edited ? LineEndStyle::Mixed : side.text.lineEnds};
}

} // namespace

TextCompareResult runTextCompare(const TextCompareInput &input, const CancelFlag &cancel, Progress &progress)
{
    TextCompareResult result;
    progress.report(0, 0, 0);
    QByteArray leftRaw;
    QByteArray rightRaw;
    if (!load(input.left, result.left, leftRaw, cancel))
        return {.unreadable = Side::Left, .left = {}, .right = {}, .document = {}, .remarks = {}, .multiplied = {}};
    if (!load(input.right, result.right, rightRaw, cancel))
        return {.unreadable = Side::Right, .left = {}, .right = {}, .document = {}, .remarks = {}, .multiplied = {}};

    settleEncodings(result.left, std::exchange(leftRaw, {}), result.right, std::exchange(rightRaw, {}), cancel);

    result.left.shown = keptText(input.left, result.left);
    result.right.shown = keptText(input.right, result.right);
    const TextSessionOptions &options = input.options;
    const auto left =
        applyReplacementRules(result.left.text.lines, options.leftReplaceFind, options.leftReplaceWith, cancel);
    const auto right =
        applyReplacementRules(result.right.text.lines, options.rightReplaceFind, options.rightReplaceWith, cancel);
    if (!left || !right)
        result.multiplied = left ? Side::Right : Side::Left;
    if (cancel.isCancelled() || result.multiplied)
        return result;
    Progress compareProgress([&progress](const ProgressState &state) {
        progress.report(state.phase + 1, state.done, state.total, state.item);
    });
    AlignedTexts aligned = compareAligned(*left, *right, options, input.pairs, cancel, compareProgress);
    QList<AlignedRow> &rows = aligned.rows;
    result.remarks = std::move(aligned.remarks);
    if (cancel.isCancelled())
        return result;
    std::vector<LineEndRow> lineEnds = differingLineEnds(rows, endedLines(input.left, result.left),
                                                         endedLines(input.right, result.right), options, cancel);
    result.document = std::make_shared<DiffDocument>(
        std::move(rows), std::make_shared<TextLinesSource>(result.left.text.lines),
        std::make_shared<TextLinesSource>(result.right.text.lines), std::move(lineEnds), input.tabWidth);
    return result;
}

} // namespace velmora
