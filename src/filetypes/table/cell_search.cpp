#include "filetypes/table/cell_search.h"

#include "core/utf8_text.h"
#include "filetypes/table/engine/cell_cursor.h"

namespace velmora {

namespace {

constexpr std::size_t rowsPerLook = 256;

class CellSearch {
public:
    CellSearch(const TableDocument &document, const SearchQuery &query)
        : m_document(document),
          m_expression(query.expression()),
          m_looksAtRowsFirst(!query.isExpression && !query.wholeWords && document.alignment.tables.left.isPlain() &&
                             document.alignment.tables.right.isPlain())
    {}

    [[nodiscard]] bool isValid() const { return m_expression.isValid(); }

    /// What stands in a cell stands in its row, where fields mean their own bytes: most rows need no cutting.
    [[nodiscard]] bool mayHold(const AlignedTableRow &row) const
    {
        if (!m_looksAtRowsFirst)
            return true;
        for (const Side side : bothSides) {
            if (row.row(side) >= 0 && matches(m_document.alignment.tables[side].row(row.row(side))))
                return true;
        }
        return false;
    }

    [[nodiscard]] bool holds(CellCursor &cell) const
    {
        return matches(cell.value(Side::Left)) ||
               (cell.field(Side::Left) != cell.field(Side::Right) && matches(cell.value(Side::Right)));
    }

private:
    [[nodiscard]] bool matches(std::string_view utf8) const
    {
        return !utf8.empty() && m_expression.match(textOfUtf8(utf8)).hasMatch();
    }

    const TableDocument &m_document;
    QRegularExpression m_expression;
    bool m_looksAtRowsFirst;
};

} // namespace

std::vector<CellMatch> findCells(const TableDocument &document, const SearchQuery &query, const CellRange &range,
                                 const CancelFlag &cancel)
{
    std::vector<CellMatch> found;
    const CellSearch search(document, query);
    if (query.text.isEmpty() || !search.isValid())
        return found;
    const std::vector<AlignedTableRow> &rows = document.alignment.rows;
    const std::vector<qint32> *some = document.rowsOf(range.rows);
    const std::size_t count = some ? some->size() : rows.size();
    for (std::size_t place = 0; place < count && found.size() < TextMatches::most; ++place) {
        if (place % rowsPerLook == 0 && cancel.isCancelled())
            break;
        const qint32 row = some ? (*some)[place] : qint32(place);
        if (!search.mayHold(rows[std::size_t(row)]))
            continue;
        CellCursor cell(document.alignment, rows[std::size_t(row)]);
        for (std::size_t column = 0; column < range.columns.size() && cell.next(); ++column) {
            if (range.columns[column] && search.holds(cell))
                found.push_back({row, qint32(column)});
        }
    }
    return found;
}

} // namespace velmora
