#include "text/view/row_layout.h"

#include <algorithm>

namespace velmora {

namespace {

/// The first of the ordered `ranges` that ends behind `position`.
auto firstEndingBehind(const std::vector<RowRange> &ranges, qsizetype position)
{
    return std::upper_bound(ranges.begin(), ranges.end(), position,
                            [](qsizetype p, const RowRange &range) { return p < range.end(); });
}

void extend(std::vector<RowRange> &ranges, qsizetype position)
{
    if (!ranges.empty() && ranges.back().end() == position)
        ++ranges.back().count;
    else
        ranges.push_back({position, 1});
}

} // namespace

void RowLayout::setRows(const QList<AlignedRow> &rows)
{
    m_rows = rows;
    m_blocks.clear();
    for (qsizetype row = 0; row < m_rows.size(); ++row) {
        if (m_rows.at(row).kind != Equal)
            extend(m_blocks, row);
    }
    filterRows();
}

void RowLayout::setFilter(RowFilter filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    filterRows();
}

void RowLayout::filterRows()
{
    m_shown.clear();
    if (m_filter != RowFilter::All) {
        const bool wantsEqual = m_filter == RowFilter::Identical;
        for (qsizetype row = 0; row < m_rows.size(); ++row) {
            if ((m_rows.at(row).kind == Equal) == wantsEqual)
                m_shown.push_back(qint32(row));
        }
    }
    m_shown.shrink_to_fit();
    findRuns();
}

void RowLayout::findRuns()
{
    for (auto &runs : m_runs)
        runs.clear();
    if (m_filter == RowFilter::Identical)
        return;
    for (qsizetype index = 0; index < count(); ++index) {
        const DiffLineKind kind = m_rows.at(rowAt(index)).kind;
        if (kind != Equal)
            extend(m_runs[kind - Added], index);
    }
}

qsizetype RowLayout::count() const noexcept
{
    return m_filter == RowFilter::All ? m_rows.size() : qsizetype(m_shown.size());
}

qsizetype RowLayout::rowAt(qsizetype index) const
{
    return m_filter == RowFilter::All ? index : m_shown[std::size_t(index)];
}

qsizetype RowLayout::indexOf(qsizetype row) const
{
    if (m_filter == RowFilter::All)
        return std::min(row, count() - 1);
    const auto found = std::lower_bound(m_shown.begin(), m_shown.end(), row);
    return std::min<qsizetype>(found - m_shown.begin(), count() - 1);
}

bool RowLayout::isShown(qsizetype row) const
{
    const qsizetype index = indexOf(row);
    return index >= 0 && rowAt(index) == row;
}

bool RowLayout::hidesRowsBefore(qsizetype index) const
{
    return m_filter != RowFilter::All && index > 0 && rowAt(index) != rowAt(index - 1) + 1;
}

void RowLayout::setRowHeight(int height)
{
    m_rowHeight = std::max(height, 1);
}

qsizetype RowLayout::rowsPerPage(int height) const
{
    return std::max(height / m_rowHeight, 1);
}

qsizetype RowLayout::maximumTop(int height) const
{
    return std::max<qsizetype>(count() - rowsPerPage(height), 0);
}

RowRange RowLayout::inSight(qsizetype top, int height) const
{
    const qsizetype first = std::clamp<qsizetype>(top, 0, count());
    const qsizetype rows = (std::max(height, 0) + m_rowHeight - 1) / m_rowHeight;
    return {first, std::min(rows, count() - first)};
}

qint64 RowLayout::yOf(qsizetype index, qsizetype top) const
{
    return qint64(index - top) * m_rowHeight;
}

qsizetype RowLayout::indexAtY(int y, qsizetype top) const
{
    const qsizetype down = y >= 0 ? y / m_rowHeight : -((m_rowHeight - 1 - y) / m_rowHeight);
    return std::min(std::max<qsizetype>(top + down, 0), count() - 1);
}

qsizetype RowLayout::topToShow(qsizetype index, qsizetype top, int height) const
{
    const qsizetype page = rowsPerPage(height);
    return std::clamp<qsizetype>(std::clamp(top, index - page + 1, index), 0, maximumTop(height));
}

qsizetype RowLayout::topToReveal(RowRange range, qsizetype top, int height) const
{
    const qsizetype page = rowsPerPage(height);
    const bool startsInSight = range.first > top || (range.first == 0 && top == 0);
    const bool endsInSight = range.end() < top + page || (range.end() == count() && top >= maximumTop(height));
    if (startsInSight && endsInSight)
        return top;
    return std::clamp<qsizetype>(range.first - page / 3, 0, maximumTop(height));
}

qsizetype RowLayout::blockOf(qsizetype row) const
{
    const auto found = firstEndingBehind(m_blocks, row);
    return found != m_blocks.end() && found->contains(row) ? found - m_blocks.begin() : -1;
}

bool RowLayout::holds(DiffLineKind kind, RowRange range) const
{
    const auto &runs = m_runs[kind - Added];
    const auto found = firstEndingBehind(runs, range.first);
    return found != runs.end() && found->first < range.end();
}

} // namespace velmora
