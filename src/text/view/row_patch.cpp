#include "text/view/row_patch.h"

#include "settings/options/text_replacements.h"
#include "settings/options/text_session_options.h"
#include "text/engine/line_diff_engine.h"
#include "text/view/line_segments.h"
#include "text/view/row_layout.h"

#include <algorithm>

namespace velmora {

namespace {

// An edit that joins or parts lines may shift the pairs of the difference that it is in.
constexpr qsizetype rowsAround = 100;
// Beyond this, comparing on the interface thread would be felt.
constexpr qsizetype linesAtOnce = 2000;
constexpr std::size_t bytesAtOnce = 1'000'000;

/// The lines [first, first + count), 0-based.
struct Lines {
    qsizetype first = 0;
    qsizetype count = 0;
};

qint32 &numberOf(AlignedRow &row, Side side)
{
    return side == Side::Left ? row.leftLine : row.rightLine;
}

RowRange touchedRows(const DiffDocument &document, Side side, const LineChange &change)
{
    RowRange rows;
    if (change.removed > 0) {
        rows.first = document.rowOfLine(side, qint32(change.first + 1));
        rows.count = document.rowOfLine(side, qint32(change.first + change.removed)) - rows.first + 1;
    } else {
        // Lines that come in between take the place of the rows that had none.
        rows.first = document.rowOfLine(side, qint32(change.first)) + 1;
        const bool atEnd = change.first >= document.source(side).count();
        const qsizetype next = atEnd ? document.rowCount() : document.rowOfLine(side, qint32(change.first + 1));
        rows.count = next - rows.first;
    }
    if (change.removed == change.inserted)
        return rows;
    qsizetype end = rows.end();
    for (qsizetype k = 0; k < rowsAround && rows.first > 0 && document.kind(rows.first - 1) != Equal; ++k)
        --rows.first;
    for (qsizetype k = 0; k < rowsAround && end < document.rowCount() && document.kind(end) != Equal; ++k)
        ++end;
    return {rows.first, end - rows.first};
}

Lines linesIn(const DiffDocument &document, RowRange rows, Side side)
{
    Lines lines;
    for (qsizetype row = rows.first; row < rows.end(); ++row) {
        const qint32 number = document.lineNumber(row, side);
        if (number < 1)
            continue;
        if (lines.count == 0)
            lines.first = number - 1;
        ++lines.count;
    }
    return lines;
}

std::optional<TextLines> cut(const EditSnapshot &text, Lines lines, const QStringList &find, const QStringList &with)
{
    TextLinesBuilder builder;
    for (qsizetype line = lines.first; line < lines.first + lines.count; ++line)
        builder.append(text.bytes(line), text.lineEnd(line));
    return applyReplacementRules(builder.take(), find, with);
}

bool isTooLong(const EditSnapshot &text, Lines lines)
{
    std::size_t bytes = 0;
    for (qsizetype line = lines.first; line < lines.first + lines.count && bytes <= bytesAtOnce; ++line)
        bytes += text.bytes(line).size();
    return bytes > bytesAtOnce;
}

/// The same pairs of lines: where one has another text, the kind is told by their bytes alone.
QList<AlignedRow> keptPairs(const DiffDocument &before, const EditedTexts &texts, RowRange range)
{
    QList<AlignedRow> rows = before.rows().sliced(range.first, range.count);
    for (AlignedRow &row : rows) {
        if (row.leftLine < 1 || row.rightLine < 1)
            continue;
        const std::string_view left = texts.left->bytes(row.leftLine - 1);
        const std::string_view right = texts.right->bytes(row.rightLine - 1);
        if (left != before.source(Side::Left).bytes(row.leftLine - 1) ||
            right != before.source(Side::Right).bytes(row.rightLine - 1))
            row.kind = left == right ? Equal : Modified;
    }
    return rows;
}

QList<AlignedRow> align(const EditedTexts &texts, Lines left, Lines right, const TextSessionOptions &options)
{
    QList<AlignedRow> rows;
    std::optional<TextLines> leftLines;
    std::optional<TextLines> rightLines;
    if (left.count + right.count <= linesAtOnce) {
        leftLines = cut(*texts.left, left, options.leftReplaceFind, options.leftReplaceWith);
        rightLines = cut(*texts.right, right, options.rightReplaceFind, options.rightReplaceWith);
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
std::vector<LineEndRow> lineEndsIn(const EditedTexts &texts, const QList<AlignedRow> &rows,
                                   const TextSessionOptions &options)
{
    std::vector<LineEndRow> found;
    for (qsizetype row = 0; options.compareLineEndings && row < rows.size(); ++row) {
        const AlignedRow &at = rows[row];
        if (at.leftLine < 1 || at.rightLine < 1)
            continue;
        const LineEndRow ends{qint32(row), texts.left->lineEnd(at.leftLine - 1),
                              texts.right->lineEnd(at.rightLine - 1)};
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

/// Columns of the widest line after the change, or some more where measuring would be felt.
qint64 widest(const DiffDocument &before, const EditSnapshot &text, Side side, const LineChange &change)
{
    const int tabWidth = before.tabWidth();
    qint64 columns = before.widestLine();
    for (qsizetype line = change.first; line < change.first + change.inserted; ++line) {
        const std::string_view bytes = text.bytes(line);
        if (bytes.size() <= bytesAtOnce || change.removed != change.inserted) {
            columns = std::max(columns, columnCount(bytes, tabWidth));
        } else {
            // What came in takes columns, and may push the text behind it to the next stop of a tab.
            const qint64 growth = qint64(bytes.size()) - qint64(before.source(side).bytes(line).size());
            columns += std::max<qint64>(growth, 0) * std::max(tabWidth, 3) + tabWidth;
        }
    }
    return columns;
}

} // namespace

std::shared_ptr<const DiffDocument> patchDocument(const DiffDocument &before, const EditedTexts &texts, Side side,
                                                  const LineChange &change, const TextSessionOptions &options)
{
    const RowRange touched = touchedRows(before, side, change);
    Lines own = linesIn(before, touched, side);
    if (own.count == 0)
        own.first = change.first;
    own.count += change.inserted - change.removed;
    const Lines other = linesIn(before, touched, otherSide(side));
    const bool isLeft = side == Side::Left;
    const auto shift = qint32(change.inserted - change.removed);
    const bool isRough = shift == 0 && (own.count + other.count > linesAtOnce || isTooLong(texts.of(side), own) ||
                                        isTooLong(texts.of(otherSide(side)), other));
    const QList<AlignedRow> rows =
        isRough ? keptPairs(before, texts, touched) : align(texts, isLeft ? own : other, isLeft ? other : own, options);
    const bool sameRows = shift == 0 && before.rows().sliced(touched.first, touched.count) == rows;
    return std::make_shared<DiffDocument>(before, DiffDocument::RowChange{touched.first, touched.count, rows.size()},
                                          sameRows ? before.rows() : spliced(before.rows(), touched, rows, side, shift),
                                          texts.left, texts.right, lineEndsIn(texts, rows, options),
                                          widest(before, texts.of(side), side, change));
}

} // namespace velmora
