#include "filetypes/table/engine/cell_cursor.h"

#include "core/utf8_text.h"

namespace velmora {

namespace {

FieldCursor cursorOf(const TableText &table, qint32 row)
{
    return row >= 0 ? table.fields(row) : FieldCursor({}, table.delimiter());
}

} // namespace

CellCursor::CellCursor(const TableAlignment &alignment, const AlignedTableRow &row)
    : m_alignment(alignment),
      m_left(cursorOf(alignment.tables.left, row.left)),
      m_right(cursorOf(alignment.tables.right, row.right)),
      m_row(row.status)
{
    if (!m_alignment.columns.arePairedByName())
        return;
    m_rightFields.resize(size_t(m_alignment.columns.count()));
    for (const qint32 column : m_alignment.columns.rightColumns()) {
        if (!m_right.next())
            break;
        m_rightFields[size_t(column)] = m_right.field();
    }
}

void CellCursor::step()
{
    if (!m_alignment.columns.arePairedByName()) {
        static_cast<void>(m_left.next());
        static_cast<void>(m_right.next());
        m_fields = {m_left.field(), m_right.field()};
        return;
    }
    const bool hasLeft = m_alignment.columns.fieldOf(Side::Left, m_column) >= 0 && m_left.next();
    m_fields = {hasLeft ? m_left.field() : std::string_view(), m_rightFields[size_t(m_column)]};
}

bool CellCursor::next()
{
    if (m_column + 1 >= m_alignment.columns.count())
        return false;
    ++m_column;
    step();
    if (m_row == TableRowStatus::LeftOnly)
        m_status = TableCellStatus::LeftOnly;
    else if (m_row == TableRowStatus::RightOnly)
        m_status = TableCellStatus::RightOnly;
    else
        m_status = statusOfPair();
    return true;
}

TableCellStatus CellCursor::statusOfPair()
{
    if (m_fields.left == m_fields.right || value(Side::Left) == value(Side::Right))
        return TableCellStatus::Same;
    const ColumnRule *rule = m_alignment.ruleOf(m_column);
    return rule && countAsSame(value(Side::Left), value(Side::Right), *rule) ? TableCellStatus::Same
                                                                             : TableCellStatus::Modified;
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
