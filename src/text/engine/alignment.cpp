#include "text/engine/alignment.h"

#include "text/engine/gap_pairing.h"
#include "text/engine/line_interner.h"
#include "text/engine/sequence_matcher.h"

#include <algorithm>

namespace velmora {

namespace {

template <typename Source>
std::vector<MatchBlock> matchedKeys(NormalizedSide<Source> &left, NormalizedSide<Source> &right,
                                    const LinesMatched &linesMatched, const CancelFlag &cancel)
{
    CancelPoll poll(cancel);
    const InternedLines lines = internLines(left, right, poll);
    if (poll.stopped())
        return {};
    return matchedRuns(lines.left, lines.right, lineTableLimit, defaultMatchTuning(), cancel, linesMatched);
}

/// How many rows there are at most.
qsizetype rowLimit(qint32 leftKeys, qint32 rightKeys, const std::vector<MatchBlock> &runs)
{
    qsizetype rows = qsizetype(leftKeys) + rightKeys;
    for (const MatchBlock &run : runs)
        rows -= run.length;
    return rows;
}

/// Turns the numbers of keys into those of the lines that they were made of.
template <typename Source>
void numberByLines(QList<AlignedRow> &rows, const NormalizedSide<Source> &left, const NormalizedSide<Source> &right)
{
    if (left.hasEveryLine() && right.hasEveryLine())
        return;
    for (AlignedRow &row : rows) {
        if (row.leftLine > 0)
            row.leftLine = left.lineIndex(row.leftLine - 1) + 1;
        if (row.rightLine > 0)
            row.rightLine = right.lineIndex(row.rightLine - 1) + 1;
    }
}

} // namespace

template <typename Source>
QList<AlignedRow> alignSides(NormalizedSide<Source> &left, NormalizedSide<Source> &right, const AlignParams &params,
                             const LinesMatched &linesMatched, const CancelFlag &cancel)
{
    const std::vector<MatchBlock> anchors = matchedKeys(left, right, linesMatched, cancel);
    CancelPoll poll(cancel);
    QList<AlignedRow> rows;
    rows.reserve(rowLimit(left.count(), right.count(), anchors));
    GapPairing<Source> gaps(left, right, params, rows, poll);
    qint32 i = 0;
    qint32 j = 0;
    qint64 offset = 0;
    for (const MatchBlock &anchor : anchors) {
        gaps.fill(i, anchor.a, j, anchor.b, offset);
        for (qint32 k = 0; k < anchor.length; ++k)
            rows.append({Equal, anchor.a + k + 1, anchor.b + k + 1});
        i = anchor.a + anchor.length;
        j = anchor.b + anchor.length;
        offset = qint64(anchor.b) - anchor.a;
    }
    gaps.fill(i, left.count(), j, right.count(), offset);
    if (poll.look())
        return {};
    numberByLines(rows, left, right);
    return rows;
}

template <typename Source>
QList<AlignedRow> alignByIndex(const NormalizedSide<Source> &left, const NormalizedSide<Source> &right,
                               const CancelFlag &cancel)
{
    CancelPoll poll(cancel);
    const qint32 both = std::min(left.count(), right.count());
    QList<AlignedRow> rows;
    rows.reserve(std::max(left.count(), right.count()));
    for (qint32 index = 0; index < both; ++index) {
        if (poll.stop(qint64(left.key(index).size()) + 16))
            return {};
        rows.append({left.key(index) == right.key(index) ? Equal : Modified, index + 1, index + 1});
    }
    for (qint32 index = both; index < left.count(); ++index)
        rows.append({Removed, index + 1, -1});
    for (qint32 index = both; index < right.count(); ++index)
        rows.append({Added, -1, index + 1});
    numberByLines(rows, left, right);
    return rows;
}

template QList<AlignedRow> alignSides(NormalizedSide<Utf8Lines> &, NormalizedSide<Utf8Lines> &, const AlignParams &,
                                      const LinesMatched &, const CancelFlag &);
template QList<AlignedRow> alignSides(NormalizedSide<Utf16Lines> &, NormalizedSide<Utf16Lines> &, const AlignParams &,
                                      const LinesMatched &, const CancelFlag &);
template QList<AlignedRow> alignByIndex(const NormalizedSide<Utf8Lines> &, const NormalizedSide<Utf8Lines> &,
                                        const CancelFlag &);
template QList<AlignedRow> alignByIndex(const NormalizedSide<Utf16Lines> &, const NormalizedSide<Utf16Lines> &,
                                        const CancelFlag &);

} // namespace velmora
