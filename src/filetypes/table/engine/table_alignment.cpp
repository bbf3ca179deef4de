#include "filetypes/table/engine/table_alignment.h"

#include "filetypes/table/engine/cell_cursor.h"
#include "filetypes/table/engine/table_keys.h"
#include "filetypes/table/engine/value_lines.h"
#include "text/engine/line_interner.h"
#include "text/engine/sequence_matcher.h"
#include "text/engine/side_reader.h"

#include <algorithm>
#include <span>
#include <utility>

namespace velmora {

namespace {

constexpr size_t rowsPerReport = 8192;

/// Writes rows of a table as their cells in the columns of the result, or what stands for them by the rules of these.
class CellJoiner {
public:
    explicit CellJoiner(const TableAlignment &result) : m_result(result) {}

    /// Valid until the next call.
    std::string_view join(Side side, qint32 row)
    {
        m_line.clear();
        m_empty = 0;
        if (m_result.columns.arePairedByName())
            joinCells(side, row);
        else
            joinFields(m_result.tables[side].fields(row));
        return m_line;
    }

private:
    void joinCells(Side side, qint32 row)
    {
        const AlignedTableRow alone = side == Side::Left ? AlignedTableRow{row, -1, TableRowStatus::LeftOnly}
                                                         : AlignedTableRow{-1, row, TableRowStatus::RightOnly};
        CellCursor cells(m_result, alone);
        for (qint32 column = 0; cells.next(); ++column)
            append(column, cells.value(side));
    }

    /// The same where column k is field k, which needs no look at the other side.
    void joinFields(FieldCursor fields)
    {
        for (qint32 column = 0; column < m_result.columns.count() && fields.next(); ++column)
            append(column, fieldValue(fields.field(), m_value));
    }

    /// Empty cells at the end are left away, so that a short row of a wide table has a short line.
    void append(qint32 column, std::string_view value)
    {
        constexpr char fieldSeparator = 0x1F;
        const ColumnRule *rule = m_result.ruleOf(column);
        const std::string_view form = rule ? roughForm(value, *rule, m_form) : value;
        if (form.empty()) {
            ++m_empty;
            return;
        }
        m_line.append(std::exchange(m_empty, 0), fieldSeparator);
        m_line += form;
        m_line += fieldSeparator;
    }

    const TableAlignment &m_result;
    std::string m_line;
    std::size_t m_empty = 0; ///< cells that were not written yet
    std::string m_value;
    std::string m_form;
};

/// All rows of a table as their cells, a line for each.
TextLines joinedCells(const TableAlignment &result, Side side, const CancelFlag &cancel)
{
    const TableText &table = result.tables[side];
    ValueLines lines;
    lines.reserve(qsizetype(table.text().bytes().size()), table.rowCount());
    CellJoiner joiner(result);
    for (qint32 row = 0; row < table.rowCount() && !cancel.isCancelled(); ++row)
        lines.append(joiner.join(side, row));
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
    void noteReplaced(Side side, qint32 row, qint32 last);
    void appendPair(qint32 left, qint32 right, bool anchored);
    void append(const AlignedTableRow &row);

    TableAlignment &m_result;
    const CancelFlag &m_cancel;
    Progress &m_progress;
    qint32 m_leftStart; ///< the first row of data
    qint32 m_rightStart;
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
        QList<KeyField> fields;
        for (const qint32 column : columns)
            fields.append({m_result.columns.fieldOf(side, column), m_result.ruleOf(column)});
        return rowKeys(table, start, table.rowCount(), fields, m_cancel);
    };
    InternedLines keys = numbered(keysOf(Side::Left, m_leftStart), keysOf(Side::Right, m_rightStart));
    if (m_cancel.isCancelled())
        return;
    std::vector<AlignedTableRow> pairs(size_t(keys.count));
    for (const Side side : bothSides) {
        const std::vector<qint32> &numbers = side == Side::Left ? keys.left : keys.right;
        const qint32 start = side == Side::Left ? m_leftStart : m_rightStart;
        bool hasDuplicates = false;
        for (size_t k = 0; k < numbers.size(); ++k) {
            AlignedTableRow &pair = pairs[size_t(numbers[k])];
            qint32 &row = side == Side::Left ? pair.left : pair.right;
            hasDuplicates = hasDuplicates || row >= 0;
            row = qint32(k) + start;
        }
        for (size_t k = 0; hasDuplicates && k < numbers.size(); ++k)
            noteReplaced(side, qint32(k) + start, pairs[size_t(numbers[k])].row(side));
    }
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

void Aligner::noteReplaced(Side side, qint32 row, qint32 last)
{
    if (row != last)
        m_result.replaced[side].push_back({row, last});
}

void Aligner::alignByOrder()
{
    const TableText &leftTable = m_result.tables.left;
    const TableText &rightTable = m_result.tables.right;
    // Only where both sides are in the same form do the same values have the same line.
    const auto linesOf = [this](Side side) {
        return m_result.columns.arePairedByName() || !m_result.rules.isEmpty()
                   ? joinedCells(m_result, side, m_cancel)
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
    // With rules rows that are the same by them need not be found to be alike.
    const bool canBeSame = anchored || !m_result.rules.isEmpty();
    const bool sameBytes = canBeSame && m_result.tables.left.row(left) == m_result.tables.right.row(right);
    if (sameBytes && !m_result.columns.arePairedByName()) {
        row.status = TableRowStatus::Same;
    } else if (canBeSame) {
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

/// Those of columns that there are, none where all are exact.
QList<ColumnRule> knownRules(const TableOptions &options, qint32 columns)
{
    const QList<ColumnRule> rules = options.rules.first(std::min(options.rules.size(), qsizetype(columns)));
    const bool areExact =
        std::all_of(rules.begin(), rules.end(), [](const ColumnRule &rule) { return rule.isExact(); });
    return areExact ? QList<ColumnRule>() : rules;
}

} // namespace

TableColumns tableColumns(const TableText &left, const TableText &right, const TableOptions &options,
                          const CancelFlag &cancel)
{
    if (!options.hasHeader)
        return TableColumns::numbered(left, right, cancel);
    return options.columnsByName ? TableColumns::pairedByName(left, right, cancel)
                                 : TableColumns::named(left, right, cancel);
}

TableAlignment alignTables(const TableText &left, const TableText &right, const TableColumns &columns,
                           const TableOptions &options, const CancelFlag &cancel, Progress &progress)
{
    TableAlignment result;
    result.tables = {left, right};
    if (left.isEmpty() && right.isEmpty())
        return result;
    result.columns = columns;
    result.rules = knownRules(options, columns.count());
    Aligner aligner(result, options, cancel, progress);
    if (const QList<qint32> keys = knownKeys(options, result.columns.count()); !keys.isEmpty())
        aligner.alignByKeys(keys);
    else
        aligner.alignByOrder();
    return result;
}

TableAlignment alignTables(const TableText &left, const TableText &right, const TableOptions &options,
                           const CancelFlag &cancel, Progress &progress)
{
    return alignTables(left, right, tableColumns(left, right, options, cancel), options, cancel, progress);
}

} // namespace velmora
