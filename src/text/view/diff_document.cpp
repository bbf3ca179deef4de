#include "text/view/diff_document.h"

#include "text/view/line_segments.h"

#include <algorithm>
#include <iterator>

namespace velmora {

namespace {

qint64 widestLineOf(const LineSource &source, int tabWidth)
{
    qint64 widest = 0;
    for (qsizetype line = 0; line < source.count(); ++line) {
        const std::string_view utf8 = source.bytes(line);
        // No byte takes more columns than a tab or a box, so that most lines need no look at their bytes.
        if (qint64(utf8.size()) * std::max(tabWidth, 3) > widest)
            widest = std::max(widest, columnCount(utf8, tabWidth));
    }
    return widest;
}

} // namespace

DiffDocument::DiffDocument(QList<AlignedRow> rows, std::shared_ptr<const LineSource> left,
                           std::shared_ptr<const LineSource> right, std::vector<LineEndRow> lineEnds, int tabWidth)
    : m_rows(std::move(rows)),
      m_left(std::move(left)),
      m_right(std::move(right)),
      m_tabWidth(tabWidth),
      m_widest(std::max(widestLineOf(*m_left, tabWidth), widestLineOf(*m_right, tabWidth))),
      m_counts(countRows(m_rows)),
      m_lineEndRows(std::move(lineEnds))
{
    addUnimportantRows(0, m_rows.size());
}

DiffDocument::DiffDocument(const DiffDocument &before, const RowChange &change, QList<AlignedRow> rows,
                           std::shared_ptr<const LineSource> left, std::shared_ptr<const LineSource> right,
                           const std::vector<LineEndRow> &lineEnds, qint64 widest)
    : m_rows(std::move(rows)),
      m_left(std::move(left)),
      m_right(std::move(right)),
      m_tabWidth(before.m_tabWidth),
      m_widest(widest)
{
    const std::vector<qint32> &earlier = before.m_unimportantRows;
    const auto changed = std::lower_bound(earlier.begin(), earlier.end(), change.first);
    const auto behind = std::lower_bound(changed, earlier.end(), change.first + change.removed);
    m_unimportantRows.assign(earlier.begin(), changed);
    addUnimportantRows(change.first, change.first + change.inserted);
    const auto shift = qint32(change.inserted - change.removed);
    std::transform(behind, earlier.end(), std::back_inserter(m_unimportantRows),
                   [shift](qint32 row) { return row + shift; });
    takeLineEnds(before, change, lineEnds);
}

void DiffDocument::takeLineEnds(const DiffDocument &before, const RowChange &change,
                                const std::vector<LineEndRow> &changed)
{
    const auto comesBefore = [](const LineEndRow &at, qsizetype row) { return at.row < row; };
    const std::vector<LineEndRow> &earlier = before.m_lineEndRows;
    const auto first = std::lower_bound(earlier.begin(), earlier.end(), change.first, comesBefore);
    const auto behind = std::lower_bound(first, earlier.end(), change.first + change.removed, comesBefore);
    const auto appendMoved = [this](auto from, auto to, qsizetype by) {
        std::transform(from, to, std::back_inserter(m_lineEndRows), [by](LineEndRow at) {
            at.row += qint32(by);
            return at;
        });
    };
    m_lineEndRows.assign(earlier.begin(), first);
    appendMoved(changed.begin(), changed.end(), change.first);
    appendMoved(behind, earlier.end(), change.inserted - change.removed);
}

const LineEndRow *DiffDocument::lineEndsOf(qsizetype row) const
{
    const auto found = std::lower_bound(m_lineEndRows.begin(), m_lineEndRows.end(), row,
                                        [](const LineEndRow &at, qsizetype wanted) { return at.row < wanted; });
    return found != m_lineEndRows.end() && found->row == row ? &*found : nullptr;
}

DiffDocument::DiffDocument(const DiffDocument &other, int tabWidth) : DiffDocument(other)
{
    m_tabWidth = tabWidth;
    m_widest = std::max(widestLineOf(*m_left, tabWidth), widestLineOf(*m_right, tabWidth));
}

void DiffDocument::addUnimportantRows(qsizetype first, qsizetype end)
{
    for (qsizetype row = first; row < end; ++row) {
        if (differsUnimportantly(row))
            m_unimportantRows.push_back(qint32(row));
    }
}

qint32 DiffDocument::lineNumber(qsizetype row, Side side) const
{
    const AlignedRow &aligned = m_rows.at(row);
    return side == Side::Left ? aligned.leftLine : aligned.rightLine;
}

DiffDocument::Cell DiffDocument::cell(qsizetype row, Side side) const
{
    const auto cellOf = [this, row](Side from, bool own) {
        const LineSource &lines = source(from);
        const qsizetype line = lineNumber(row, from) - 1;
        return line >= 0 && line < lines.count() ? Cell{&lines, line, own} : Cell{};
    };
    const Cell own = cellOf(side, true);
    if (own.source || kind(row) != Equal)
        return own;
    return cellOf(otherSide(side), false);
}

QString DiffDocument::text(qsizetype row, Side side) const
{
    const Cell shown = cell(row, side);
    return shown.source ? shown.source->text(shown.line) : QString();
}

bool DiffDocument::differsUnimportantly(qsizetype row) const
{
    if (kind(row) != Equal)
        return false;
    const Cell left = cell(row, Side::Left);
    const Cell right = cell(row, Side::Right);
    if (!left.source || !right.source)
        return false;
    return !left.own || !right.own || left.source->bytes(left.line) != right.source->bytes(right.line);
}

qsizetype DiffDocument::rowOfLine(Side side, qint32 number) const
{
    qsizetype found = -1;
    qsizetype low = 0;
    qsizetype high = m_rows.size();
    while (low < high) {
        const qsizetype middle = low + (high - low) / 2;
        qsizetype row = middle;
        while (row < high && lineNumber(row, side) < 1)
            ++row;
        if (row == high || lineNumber(row, side) > number) {
            high = middle;
        } else {
            found = row;
            low = row + 1;
        }
    }
    return found;
}

} // namespace velmora
