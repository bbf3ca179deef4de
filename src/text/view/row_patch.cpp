#include "text/view/row_patch.h"

#include "settings/options/text_replacements.h"
#include "settings/options/text_session_options.h"
#include "text/engine/line_diff_engine.h"

#include <algorithm>

namespace velmora {

namespace {

// Beyond this, comparing on the interface thread would be felt.
constexpr qsizetype linesAtOnce = 2000;

qint32 &numberOf(AlignedRow &row, Side side)
{
    return side == Side::Left ? row.leftLine : row.rightLine;
}

std::optional<TextLines> cut(const EditSnapshot &text, PaneLines lines, const QStringList &find,
                             const QStringList &with)
{
    TextLinesBuilder builder;
    for (qsizetype line = lines.first; line < lines.first + lines.count; ++line)
        builder.append(text.bytes(line), text.lineEnd(line));
    return applyReplacementRules(builder.take(), find, with);
}

bool isTooLong(const EditSnapshot &text, PaneLines lines)
{
    std::size_t bytes = 0;
    for (qsizetype line = lines.first; line < lines.first + lines.count && bytes <= bytesLookedAt; ++line)
        bytes += text.bytes(line).size();
    return bytes > bytesLookedAt;
}

/// The same pairs of lines: where one has another text, the kind is told by their bytes alone.
QList<AlignedRow> keptPairs(const DiffDocument &before, const PaneTexts &texts, RowRange range)
{
    QList<AlignedRow> rows = before.rows().sliced(range.first, range.count);
    for (AlignedRow &row : rows) {
        if (row.leftLine < 1 || row.rightLine < 1)
            continue;
        const std::string_view left = texts[0]->bytes(row.leftLine - 1);
        const std::string_view right = texts[1]->bytes(row.rightLine - 1);
        if (left != before.source(Side::Left).bytes(row.leftLine - 1) ||
            right != before.source(Side::Right).bytes(row.rightLine - 1))
            row.kind = left == right ? Equal : Modified;
    }
    return rows;
}

QList<AlignedRow> align(const PaneTexts &texts, PaneLines left, PaneLines right, const TextSessionOptions &options)
{
    QList<AlignedRow> rows;
    std::optional<TextLines> leftLines;
    std::optional<TextLines> rightLines;
    if (left.count + right.count <= linesAtOnce) {
        leftLines = cut(*texts[0], left, options.leftReplaceFind, options.leftReplaceWith);
        rightLines = cut(*texts[1], right, options.rightReplaceFind, options.rightReplaceWith);
    }
    if (!leftLines || !rightLines) {
        for (qsizetype k = 0; k < left.count; ++k)
            rows.append({Removed, qint32(k + 1), -1});
        for (qsizetype k = 0; k < right.count; ++k)
            rows.append({Added, -1, qint32(k + 1)});
    } else if (left.count + right.count > 0) {
        Progress nobody;
        rows = compareTexts(*leftLines, *rightLines, options, {}, nobody);
    }
    for (AlignedRow &row : rows) {
        if (row.leftLine >= 1)
            row.leftLine += qint32(left.first);
        if (row.rightLine >= 1)
            row.rightLine += qint32(right.first);
    }
    return rows;
}

/// The rows of a patch whose lines end differently, counted from 0.
std::vector<LineEndRow> lineEndsIn(const PaneTexts &texts, const QList<AlignedRow> &rows,
                                   const TextSessionOptions &options)
{
    std::vector<LineEndRow> found;
    for (qsizetype row = 0; options.compareLineEndings && row < rows.size(); ++row) {
        const AlignedRow &at = rows[row];
        if (at.leftLine < 1 || at.rightLine < 1)
            continue;
        const LineEndRow ends{qint32(row), texts[0]->lineEnd(at.leftLine - 1), texts[1]->lineEnd(at.rightLine - 1)};
        if (ends.left != ends.right)
            found.push_back(ends);
    }
    return found;
}

QList<AlignedRow> spliced(const QList<AlignedRow> &before, RowRange replaced, const QList<AlignedRow> &with, Side side,
                          qint32 shift)
{
    QList<AlignedRow> rows;
    rows.reserve(before.size() - replaced.count + with.size());
    rows.append(before.first(replaced.first));
    rows.append(with);
    rows.append(before.sliced(replaced.end()));
    for (qsizetype row = replaced.first + with.size(); shift != 0 && row < rows.size(); ++row) {
        qint32 &number = numberOf(rows[row], side);
        if (number >= 1)
            number += shift;
    }
    return rows;
}

} // namespace

std::shared_ptr<const DiffDocument> patchDocument(const DiffDocument &before, const PaneTexts &texts, Side side,
                                                  const LineChange &change, const TextSessionOptions &options)
{
    const RowRange touched = touchedRows(before, side, change);
    PaneLines own = linesIn(before, touched, side);
    if (own.count == 0)
        own.first = change.first;
    own.count += change.inserted - change.removed;
    const PaneLines other = linesIn(before, touched, otherSide(side));
    const bool isLeft = side == Side::Left;
    const auto shift = qint32(change.inserted - change.removed);
    const auto textOf = [&texts](Side of) -> const EditSnapshot & {
        return *texts[std::size_t(PaneIndex(of).number())];
    };
    const bool isRough = shift == 0 && (own.count + other.count > linesAtOnce || isTooLong(textOf(side), own) ||
                                        isTooLong(textOf(otherSide(side)), other));
    QList<AlignedRow> rows =
        isRough ? keptPairs(before, texts, touched) : align(texts, isLeft ? own : other, isLeft ? other : own, options);
    const bool sameRows = shift == 0 && before.rows().sliced(touched.first, touched.count) == rows;
    const DiffDocument::RowChange patch{touched.first, touched.count, rows.size(), lineEndsIn(texts, rows, options),
                                        patchedWidth(before, texts, side, change)};
    rows = sameRows ? before.rows() : spliced(before.rows(), touched, rows, side, shift);
    return std::make_shared<DiffDocument>(before, patch, std::move(rows), texts[0], texts[1]);
}

RowPatcher diffPatcher(const TextSessionOptions &options)
{
    return [options](const PaneDocument &before, const PaneTexts &texts, PaneIndex pane, const LineChange &change) {
        return patchDocument(static_cast<const DiffDocument &>(before), texts, sideOf(pane), change, options);
    };
}

} // namespace velmora
