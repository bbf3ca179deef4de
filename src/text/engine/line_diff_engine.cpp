#include "text/engine/line_diff_engine.h"

#include "settings/options/text_session_options.h"
#include "text/engine/alignment.h"
#include "text/engine/side_reader.h"
#include "text/engine/text_comparison.h"

#include <algorithm>

namespace velmora {

namespace {

/// What it costs to make a row with its texts, in the steps of a CancelPoll.
constexpr qint64 stepsPerRow = 64;

/// Puts texts to rows. `leftText` and `rightText` give the text of a line by its 1-based number; `same` says of an
/// equal row with both lines that these have one text. Empty when cancelled.
template <typename LeftText, typename RightText, typename Same>
QList<DiffLine> withTextsOf(const QList<AlignedRow> &rows, LeftText leftText, RightText rightText, Same same,
                            const CancelFlag &cancel = {})
{
    CancelPoll poll(cancel);
    QList<DiffLine> lines;
    lines.reserve(rows.size());
    for (const AlignedRow &row : rows) {
        if (poll.stop(stepsPerRow))
            return {};
        DiffLine line;
        line.kind = row.kind;
        line.leftLine = row.leftLine;
        line.rightLine = row.rightLine;
        if (row.leftLine > 0)
            line.leftText = leftText(row.leftLine);
        if (row.kind == Equal && row.leftLine > 0 && row.rightLine > 0 && same(row))
            line.rightText = line.leftText;
        else if (row.rightLine > 0)
            line.rightText = rightText(row.rightLine);
        if (row.kind == Equal && row.leftLine < 0)
            line.leftText = line.rightText;
        else if (row.kind == Equal && row.rightLine < 0)
            line.rightText = line.leftText;
        lines.append(std::move(line));
    }
    return lines;
}

/// The texts of `lines` by 1-based number, without a carriage return at their end unless that counts.
auto textsOf(const QStringList &lines, bool keepReturns)
{
    return [&lines, keepReturns](qint32 number) {
        if (number > lines.size())
            return QString();
        const QString &text = lines.at(number - 1);
        return !keepReturns && text.endsWith(u'\r') ? text.chopped(1) : text;
    };
}

auto textsOf(const TextLines &lines, bool keepReturns)
{
    return [&lines, keepReturns](qint32 number) {
        if (number > lines.count())
            return QString();
        QString text = lines.text(number - 1);
        if (!keepReturns && text.endsWith(u'\r'))
            text.chop(1);
        return text;
    };
}

/// Strings of the caller's are shared as they are.
constexpr auto sharedAlready = [](const AlignedRow &) { return false; };

} // namespace

AlignParams alignParams(const TextSessionOptions &options)
{
    const bool myers = options.alignAlgorithm == qint32(AlignAlgorithm::Myers);
    const bool patience = options.alignAlgorithm == qint32(AlignAlgorithm::Patience);
    AlignParams params;
    params.mode = options.alignAlgorithm;
    if (options.neverAlignDifferences || myers)
        params.threshold = 1.0;
    else
        params.threshold = patience ? 0.5 : 0.35;
    params.lookahead = !myers && options.useNearbyMatches ? 3 : 0;
    params.skewTolerance = std::max(options.curvatureTolerance, 0);
    return params;
}

QList<AlignedRow> compareTexts(const TextLines &left, const TextLines &right, const TextSessionOptions &options,
                               const CancelFlag &cancel, Progress &progress, CompareRemarks *remarks)
{
    CompareRemarks own;
    return compareSources(Utf8Lines(left), Utf8Lines(right), options, cancel, progress, remarks ? *remarks : own);
}

QList<DiffLine> withTexts(const QList<AlignedRow> &rows, const TextLines &left, const TextLines &right,
                          const TextSessionOptions &options)
{
    const auto same = [&](const AlignedRow &row) {
        return row.leftLine <= left.count() && row.rightLine <= right.count() &&
               left.line(row.leftLine - 1) == right.line(row.rightLine - 1);
    };
    return withTextsOf(rows, textsOf(left, options.compareLineEndings), textsOf(right, options.compareLineEndings),
                       same);
}

QList<DiffLine> compareTextLines(const QStringList &left, const QStringList &right, const TextSessionOptions &options,
                                 const CancelFlag &cancel)
{
    Progress progress;
    CompareRemarks remarks;
    const QList<AlignedRow> rows =
        compareSources(Utf16Lines(left), Utf16Lines(right), options, cancel, progress, remarks);
    return withTextsOf(rows, textsOf(left, options.compareLineEndings), textsOf(right, options.compareLineEndings),
                       sharedAlready, cancel);
}

QList<DiffLine> diffLinesAligned(const QStringList &left, const QStringList &right, const AlignParams &params,
                                 const CancelFlag &cancel)
{
    Progress progress;
    BothSides<Utf16Lines> sides = readSides(Utf16Lines(left), Utf16Lines(right), nullptr, nullptr, cancel, progress);
    if (cancel.isCancelled())
        return {};
    const QList<AlignedRow> rows = alignSides(sides.left, sides.right, params, {}, cancel);
    return withTextsOf(rows, textsOf(left, true), textsOf(right, true), sharedAlready, cancel);
}

QList<DiffLine> diffLinesByIndex(const QStringList &left, const QStringList &right)
{
    Progress progress;
    const CancelFlag cancel;
    const BothSides<Utf16Lines> sides =
        readSides(Utf16Lines(left), Utf16Lines(right), nullptr, nullptr, cancel, progress);
    return withTextsOf(alignByIndex(sides.left, sides.right, cancel), textsOf(left, true), textsOf(right, true),
                       sharedAlready);
}

} // namespace velmora
