#include "text/engine/text_comparison.h"

#include "core/sides.h"
#include "text/engine/alignment.h"
#include "text/engine/line_diff_engine.h"
#include "text/engine/line_interner.h"
#include "text/engine/side_reader.h"
#include "text/engine/unimportant_text.h"

#include <array>

namespace velmora {

namespace {

constexpr qint64 linesPerReport = 1024;

bool needsNormalizing(const TextSessionOptions &options)
{
    return options.ignoreBlankLines || !options.unimportantText.isEmpty() || !options.importantLeadingWhitespace ||
           !options.importantEmbeddedWhitespace || !options.importantTrailingWhitespace ||
           !options.importantCharacterCase || !options.importantEverythingElse || !options.compareLineEndings;
}

/// Which lines of both sides are unimportant, not counting a carriage return at their end. Empty lists when none is.
using UnimportantLines = Sides<std::vector<bool>>;

template <typename Source>
UnimportantLines findUnimportant(const Source &left, const Source &right, UnimportantText &text,
                                 const CancelFlag &cancel, Progress &progress)
{
    // Every different text is looked at once: two versions of a file have most lines in common.
    const NormalizeRules asTheyAre;
    Progress silent;
    BothSides<Source> sides = readSides(left, right, &asTheyAre, &asTheyAre, cancel, silent);
    CancelPoll poll(cancel);
    if (poll.look())
        return {};
    const InternedLines lines = internLines(sides.left, sides.right, poll);
    enum class Answer : quint8 { Unknown, No, Yes };
    std::vector<Answer> answers(size_t(lines.count), Answer::Unknown);
    const qint64 total = qint64(left.count()) + right.count();
    qint64 linesRead = 0;
    const auto flagsOf = [&](const NormalizedSide<Source> &side, const std::vector<qint32> &numbers) {
        std::vector<bool> flags;
        flags.reserve(numbers.size());
        for (size_t index = 0; index < numbers.size() && !poll.stopped(); ++index) {
            Answer &answer = answers[size_t(numbers[index])];
            if (answer == Answer::Unknown) {
                answer = text.isIn(side.key(qint32(index)), poll) ? Answer::Yes : Answer::No;
            }
            if (++linesRead % linesPerReport == 0)
                progress.report(ReadingLines, linesRead, total);
            flags.push_back(answer == Answer::Yes);
        }
        return flags;
    };
    UnimportantLines result;
    result.left = flagsOf(sides.left, lines.left);
    result.right = flagsOf(sides.right, lines.right);
    return poll.stopped() ? UnimportantLines() : result;
}

/// One-sided rows whose line is unimportant count as equal.
template <typename Source>
void excuseOrphans(QList<AlignedRow> &rows, const Source &left, const Source &right, const UnimportantLines &lines,
                   UnimportantText &text, const TextSessionOptions &options, const CancelFlag &cancel)
{
    CancelPoll poll(cancel);
    const auto isUnimportant = [&](const Source &source, const std::vector<bool> &flags, qint32 number) {
        const auto line = source.line(number - 1);
        // A carriage return that the row shows can keep a regular expression from matching.
        if (options.compareLineEndings && withoutReturn(line).size() != line.size())
            return text.isIn(line, poll);
        return bool(flags[size_t(number - 1)]);
    };
    for (AlignedRow &row : rows) {
        if (poll.stop())
            break;
        const bool excused = (row.kind == Removed && isUnimportant(left, lines.left, row.leftLine)) ||
                             (row.kind == Added && isUnimportant(right, lines.right, row.rightLine));
        if (excused)
            row.kind = Equal;
    }
}

template <typename Source>
QList<AlignedRow> align(BothSides<Source> &&sides, const TextSessionOptions &options, const CancelFlag &cancel,
                        Progress &progress)
{
    const AlignParams params = alignParams(options);
    if (params.mode == qint32(AlignAlgorithm::Unaligned))
        return alignByIndex(sides.left, sides.right, cancel);
    const qint64 total = sides.left.count();
    const auto report = [&](qint64 matched) { progress.report(MatchingLines, matched, total); };
    return alignSides(sides.left, sides.right, params, report, cancel);
}

} // namespace

template <typename Source>
QList<AlignedRow> compareSources(const Source &left, const Source &right, const TextSessionOptions &options,
                                 const CancelFlag &cancel, Progress &progress, CompareRemarks &remarks)
{
    UnimportantText text(options.unimportantText,
                         [&progress](const QString &expression) { progress.report(LeavingOut, 0, 0, expression); });
    UnimportantLines unimportant;
    if (!text.isEmpty())
        unimportant = findUnimportant(left, right, text, cancel, progress);
    if (cancel.isCancelled())
        return {};

    const bool unaligned = options.alignAlgorithm == qint32(AlignAlgorithm::Unaligned);
    const bool normalizing = unaligned || needsNormalizing(options);
    const KeyRules keyRules = KeyRules::of(options);
    const NormalizeRules leftRules{keyRules, options.ignoreBlankLines, unimportant.left};
    const NormalizeRules rightRules{keyRules, options.ignoreBlankLines, unimportant.right};
    // The search for unimportant text has counted the lines already.
    Progress silent;
    BothSides<Source> sides =
        readSides(left, right, normalizing ? &leftRules : nullptr, normalizing ? &rightRules : nullptr, cancel,
                  text.isEmpty() ? progress : silent);
    if (cancel.isCancelled())
        return {};

    QList<AlignedRow> rows = align(std::move(sides), options, cancel, progress);
    if (!text.isEmpty() && !options.orphanLinesAlwaysImportant)
        excuseOrphans(rows, left, right, unimportant, text, options, cancel);
    remarks = {text.timesGivenUp(), text.leftOut()};
    if (cancel.isCancelled())
        return {};
    return rows;
}

template QList<AlignedRow> compareSources(const Utf8Lines &, const Utf8Lines &, const TextSessionOptions &,
                                          const CancelFlag &, Progress &, CompareRemarks &);
template QList<AlignedRow> compareSources(const Utf16Lines &, const Utf16Lines &, const TextSessionOptions &,
                                          const CancelFlag &, Progress &, CompareRemarks &);

} // namespace velmora
