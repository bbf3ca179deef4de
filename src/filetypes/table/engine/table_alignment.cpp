#include "filetypes/table/engine/table_alignment.h"

#include "core/utf8_text.h"
#include "filetypes/table/engine/table_keys.h"
#include "filetypes/table/engine/value_lines.h"
#include "text/engine/line_interner.h"
#include "text/engine/sequence_matcher.h"
#include "text/engine/side_reader.h"

#include <algorithm>
#include <span>

namespace velmora {

namespace {

constexpr size_t rowsPerReport = 8192;

/// All rows of a table as their cells in the columns of the result, a line for each.
TextLines joinedCells(const TableAlignment &result, Side side, const CancelFlag &cancel)
{
    constexpr char fieldSeparator = 0x1F;
    ValueLines lines;
    std::string line;
    for (qint32 row = 0; row < result.tables[side].rowCount() && !cancel.isCancelled(); ++row) {
        line.clear();
        AlignedTableRow alone;
        (side == Side::Left ? alone.left : alone.right) = row;
        for (CellCursor cells(result, alone); cells.next();) {
            line += cells.value(side);
            line += fieldSeparator;
        }
        lines.append(line);
    }
    return lines.take();
}

/// Makes the rows of one result.
class Aligner {
public:
    Aligner(TableAlignment &result, const TableOptions &options, const CancelFlag &cancel, Progress &progress)
        : m_result(result),
          m_cancel(cancel),
          m_progress(progress),
          m_leftStart(options.hasHeader && !result.tables.left.isEmpty() ? 1 : 0),
          m_rightStart(options.hasHeader && !result.tables.right.isEmpty() ? 1 : 0)
    {}

    void alignByKeys(const QList<qint32> &columns);
    void alignByOrder();

private:
    [[nodiscard]] InternedLines numbered(const TextLines &left, const TextLines &right);
    void appendPair(qint32 left, qint32 right, bool anchored);
    void append(const AlignedTableRow &row);

    TableAlignment &m_result;
    const CancelFlag &m_cancel;
    Progress &m_progress;
    qint32 m_leftStart; ///< the first row of data
    qint32 m_rightStart;
    std::string m_leftBuffer;
    std::string m_rightBuffer;
    size_t m_expected = 0; ///< rows
};

InternedLines Aligner::numbered(const TextLines &left, const TextLines &right)
{
    BothSides<Utf8Lines> sides = readSides(Utf8Lines(left), Utf8Lines(right), nullptr, nullptr, m_cancel, m_progress);
    CancelPoll poll(m_cancel);
    return poll.look() ? InternedLines() : internLines(sides.left, sides.right, poll);
}

/// Numbers are given out by first appearance, the left side first, so that they are the order of the rows.
void Aligner::alignByKeys(const QList<qint32> &columns)
{
    const auto keysOf = [&](Side side, qint32 start) {
        const TableText &table = m_result.tables[side];
        QList<qint32> tableFields;
        for (const qint32 column : columns)
            tableFields.append(m_result.columns.fieldOf(side, column));
        return rowKeys(table, start, table.rowCount(), tableFields, m_cancel);
    };
    InternedLines keys = numbered(keysOf(Side::Left, m_leftStart), keysOf(Side::Right, m_rightStart));
    if (m_cancel.isCancelled())
        return;
    std::vector<AlignedTableRow> pairs(size_t(keys.count));
    for (size_t k = 0; k < keys.left.size(); ++k) {
        qint32 &row = pairs[size_t(keys.left[k])].left;
        if (row >= 0)
            m_result.replaced.left.push_back(row);
        row = qint32(k) + m_leftStart;
    }
    for (size_t k = 0; k < keys.right.size(); ++k) {
        qint32 &row = pairs[size_t(keys.right[k])].right;
        if (row >= 0)
            m_result.replaced.right.push_back(row);
        row = qint32(k) + m_rightStart;
    }
    std::sort(m_result.replaced.left.begin(), m_result.replaced.left.end());
    std::sort(m_result.replaced.right.begin(), m_result.replaced.right.end());
    keys = {};
    m_expected = pairs.size();
    m_result.rows.reserve(pairs.size());
    for (const AlignedTableRow &pair : pairs) {
        if (pair.left >= 0 && pair.right >= 0)
            appendPair(pair.left, pair.right, true);
        else
            append({pair.left, pair.right, pair.left >= 0 ? TableRowStatus::LeftOnly : TableRowStatus::RightOnly});
        if (m_result.rows.size() % rowsPerReport == 0 && m_cancel.isCancelled())
            return;
    }
}

void Aligner::alignByOrder()
{
    const TableText &leftTable = m_result.tables.left;
    const TableText &rightTable = m_result.tables.right;
    // Only where both sides are in the same form do the same values have the same line.
    const auto linesOf = [this](Side side) {
        return m_result.columns.arePairedByName() ? joinedCells(m_result, side, m_cancel)
                                                  : joinedRows(m_result.tables[side], m_cancel);
    };
    const InternedLines lines = numbered(linesOf(Side::Left), linesOf(Side::Right));
    if (m_cancel.isCancelled())
        return;
    const auto data = [](const std::vector<qint32> &numbers, qint32 start, qint32 end) {
        return std::span(numbers).subspan(size_t(start), size_t(end - start));
    };
    const qint64 total = leftTable.rowCount();
    const std::vector<MatchBlock> anchors =
        matchedRuns(data(lines.left, m_leftStart, leftTable.rowCount()),
                    data(lines.right, m_rightStart, rightTable.rowCount()), lineTableLimit, defaultMatchTuning(),
                    m_cancel, [&](qint64 matched) { m_progress.report(MatchingRows, matched, total); });
    m_expected = size_t(std::max(leftTable.rowCount(), rightTable.rowCount()));
    m_result.rows.reserve(m_expected);
    qint32 l = m_leftStart;
    qint32 r = m_rightStart;
    const auto appendUntil = [&](qint32 leftEnd, qint32 rightEnd) {
        for (; l < leftEnd && r < rightEnd && !m_cancel.isCancelled(); ++l, ++r)
            appendPair(l, r, false);
        for (; l < leftEnd; ++l)
            append({l, -1, TableRowStatus::LeftOnly});
        for (; r < rightEnd; ++r)
            append({-1, r, TableRowStatus::RightOnly});
    };
    for (const MatchBlock &anchor : anchors) {
        appendUntil(anchor.a + m_leftStart, anchor.b + m_rightStart);
        for (qint32 k = 0; k < anchor.length; ++k)
            appendPair(l++, r++, true);
    }
    appendUntil(leftTable.rowCount(), rightTable.rowCount());
}

void Aligner::appendPair(qint32 left, qint32 right, bool anchored)
{
    AlignedTableRow row{left, right, TableRowStatus::Modified};
    const bool sameBytes = anchored && m_result.tables.left.row(left) == m_result.tables.right.row(right);
    if (sameBytes && !m_result.columns.arePairedByName()) {
        row.status = TableRowStatus::Same;
    } else if (anchored) {
        CellCursor cells(m_result, row);
        bool same = true;
        while (same && cells.next())
            same = cells.status() == TableCellStatus::Same;
        row.status = same ? TableRowStatus::Same : TableRowStatus::Modified;
    }
    append(row);
}

void Aligner::append(const AlignedTableRow &row)
{
    TableCounts &counts = m_result.counts;
    switch (row.status) {
    case TableRowStatus::Same:
        ++counts.same;
        break;
    case TableRowStatus::Modified:
        ++counts.modified;
        break;
    case TableRowStatus::LeftOnly:
        ++counts.leftOnly;
        break;
    case TableRowStatus::RightOnly:
        ++counts.rightOnly;
        break;
    }
    m_result.rows.push_back(row);
    if (m_result.rows.size() % rowsPerReport == 0)
        m_progress.report(ComparingRows, qint64(m_result.rows.size()), qint64(m_expected));
}

/// The columns that there are, each once.
QList<qint32> knownKeys(const TableOptions &options, qint32 columns)
{
    QList<qint32> keys;
    for (const qint32 key : options.keys) {
        if (key >= 0 && key < columns && !keys.contains(key))
            keys.append(key);
    }
    return keys;
}

FieldCursor cursorOf(const TableText &table, qint32 row)
{
    return row >= 0 ? table.fields(row) : FieldCursor({}, table.delimiter());
}

} // namespace

TableAlignment alignTables(const TableText &left, const TableText &right, const TableOptions &options,
                           const CancelFlag &cancel, Progress &progress)
{
    TableAlignment result;
    result.tables = {left, right};
    if (left.isEmpty() && right.isEmpty())
        return result;
    result.columns = !options.hasHeader      ? TableColumns::numbered(left, right, cancel)
                     : options.columnsByName ? TableColumns::pairedByName(left, right, cancel)
                                             : TableColumns::named(left, right, cancel);
    Aligner aligner(result, options, cancel, progress);
    if (const QList<qint32> keys = knownKeys(options, result.columns.count()); !keys.isEmpty())
        aligner.alignByKeys(keys);
    else
        aligner.alignByOrder();
    return result;
}

CellCursor::CellCursor(const TableAlignment &alignment, const AlignedTableRow &row)
    : m_columns(alignment.columns),
      m_left(cursorOf(alignment.tables.left, row.left)),
      m_right(cursorOf(alignment.tables.right, row.right)),
      m_row(row.status)
{
    if (!m_columns.arePairedByName())
        return;
    m_rightFields.resize(size_t(m_columns.count()));
    for (const qint32 column : m_columns.rightColumns()) {
        if (!m_right.next())
            break;
        m_rightFields[size_t(column)] = m_right.field();
    }
}

void CellCursor::step()
{
    if (!m_columns.arePairedByName()) {
        static_cast<void>(m_left.next());
        static_cast<void>(m_right.next());
        m_fields = {m_left.field(), m_right.field()};
        return;
    }
    const bool hasLeft = m_columns.fieldOf(Side::Left, m_column) >= 0 && m_left.next();
    m_fields = {hasLeft ? m_left.field() : std::string_view(), m_rightFields[size_t(m_column)]};
}

bool CellCursor::next()
{
    if (m_column + 1 >= m_columns.count())
        return false;
    ++m_column;
    step();
    if (m_row == TableRowStatus::LeftOnly)
        m_status = TableCellStatus::LeftOnly;
    else if (m_row == TableRowStatus::RightOnly)
        m_status = TableCellStatus::RightOnly;
    else if (m_fields.left == m_fields.right || value(Side::Left) == value(Side::Right))
        m_status = TableCellStatus::Same;
    else
        m_status = TableCellStatus::Modified;
    return true;
}

std::string_view CellCursor::value(Side side)
{
    return fieldValue(field(side), m_buffers[side]);
}

TableDiffResult withCells(const TableAlignment &alignment)
{
    TableDiffResult result;
    for (qint32 column = 0; column < alignment.columns.count(); ++column)
        result.headers.append(alignment.columns.name(column));
    for (const AlignedTableRow &row : alignment.rows) {
        TableRowDiff diff{row.status, row.left, row.right, {}};
        for (CellCursor cells(alignment, row); cells.next();)
            diff.cells.append(
                {cells.status(), textOfUtf8(cells.value(Side::Left)), textOfUtf8(cells.value(Side::Right))});
        result.rows.append(diff);
    }
    result.sameCount = qint32(alignment.counts.same);
    result.modifiedCount = qint32(alignment.counts.modified);
    result.leftOnlyCount = qint32(alignment.counts.leftOnly);
    result.rightOnlyCount = qint32(alignment.counts.rightOnly);
    return result;
}

} // namespace velmora
