#include "filetypes/table/table_scene.h"

#include "filetypes/table/engine/cell_cursor.h"

#include <algorithm>

namespace velmora {

namespace {

/// Some screens of usual tables, and more than one of the widest.
constexpr std::size_t cellsToKeep = 500'000;

} // namespace

void TableScene::setDocument(std::shared_ptr<const TableDocument> document, ColumnArrangement arrangement)
{
    Q_EMIT aboutToChange();
    m_document = std::move(document);
    m_arrangement = std::move(arrangement);
    m_cells.clear();
    m_cellsKept = 0;
    Q_EMIT changed();
}

void TableScene::setArrangement(ColumnArrangement arrangement)
{
    if (arrangement == m_arrangement)
        return;
    Q_EMIT aboutToChange();
    m_arrangement = std::move(arrangement);
    Q_EMIT changed();
}

qint32 TableScene::placeOfColumn(qint32 column) const noexcept
{
    const auto place = std::find(m_arrangement.shown.begin(), m_arrangement.shown.end(), column);
    return place == m_arrangement.shown.end() ? -1 : qint32(place - m_arrangement.shown.begin());
}

void TableScene::setFilter(RowsView filter)
{
    if (filter == m_filter)
        return;
    Q_EMIT aboutToChange();
    m_filter = filter;
    Q_EMIT changed();
}

const std::vector<qint32> *TableScene::filtered() const noexcept
{
    return m_document->rowsOf(m_filter);
}

qint32 TableScene::placeCount() const noexcept
{
    if (!m_document)
        return 0;
    const std::vector<qint32> *rows = filtered();
    return qint32(rows ? rows->size() : m_document->alignment.rows.size());
}

qint32 TableScene::columnCount() const noexcept
{
    return m_document ? std::min(m_document->alignment.columns.count(), columnLimit) : 0;
}

qint32 TableScene::rowAt(qint32 place) const noexcept
{
    const std::vector<qint32> *rows = filtered();
    return rows ? (*rows)[std::size_t(place)] : place;
}

qint32 TableScene::placeOf(qint32 row) const noexcept
{
    const std::vector<qint32> *rows = m_document ? filtered() : nullptr;
    if (!rows)
        return row;
    const auto at = std::lower_bound(rows->begin(), rows->end(), row);
    return at != rows->end() && *at == row ? qint32(at - rows->begin()) : -1;
}

const std::vector<TableScene::Cell> &TableScene::cells(qint32 row)
{
    if (const auto known = m_cells.find(row); known != m_cells.end())
        return known->second;
    const auto columns = std::size_t(columnCount());
    if (m_cellsKept + columns > cellsToKeep) {
        m_cells.clear();
        m_cellsKept = 0;
    }
    m_cellsKept += columns;
    std::vector<Cell> &cells = m_cells[row];
    cells.reserve(columns);
    CellCursor cursor(m_document->alignment, this->row(row));
    while (cells.size() < columns && cursor.next())
        cells.push_back({cursor.status(), {cursor.field(Side::Left), cursor.field(Side::Right)}});
    return cells;
}

} // namespace velmora
