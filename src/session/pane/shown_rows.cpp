#include "session/pane/shown_rows.h"

#include <algorithm>

namespace velmora {

namespace {

// A band in the place of a single row would save nothing.
constexpr qsizetype fewestFolded = 2;

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

/// Of a row that differs.
std::size_t runOf(TextRowState state)
{
    return std::size_t(std::min(state, TextRowState::Modified)) - std::size_t(TextRowState::Added);
}

bool comesBefore(const RowRange &a, const RowRange &b)
{
    return a.first < b.first;
}

} // namespace

void ShownRows::setRows(std::vector<TextRowState> states)
{
    m_states = std::move(states);
    m_opened.clear();
    m_blocks.clear();
    m_rowsInBlocks = 0;
    TextRowState before = TextRowState::Modified;
    for (qsizetype row = 0; row < rowCount(); ++row) {
        if (!differs(row))
            continue;
        const TextRowState apart = stateOf(row) > TextRowState::Minor ? stateOf(row) : TextRowState::Modified;
        if (apart == before)
            extend(m_blocks, row);
        else
            m_blocks.push_back({row, 1});
        before = apart;
        ++m_rowsInBlocks;
    }
    filterRows();
}

void ShownRows::setFilter(RowFilter filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    m_opened.clear();
    filterRows();
}

void ShownRows::setContext(qsizetype rows)
{
    if (rows == m_context)
        return;
    m_context = std::max<qsizetype>(rows, 0);
    filterRows();
}

void ShownRows::filterRows()
{
    m_shown.clear();
    m_bands.clear();
    if (m_filter == RowFilter::Identical) {
        for (qsizetype row = 0; row < rowCount(); ++row) {
            if (!differs(row))
                m_shown.push_back(qint32(row));
        }
    } else if (m_filter == RowFilter::Differences) {
        foldEqualRows();
    }
    m_shown.shrink_to_fit();
    findRuns();
}

void ShownRows::showRows(RowRange rows)
{
    for (qsizetype row = rows.first; row < rows.end(); ++row)
        m_shown.push_back(qint32(row));
}

void ShownRows::foldEqualRows()
{
    qsizetype behind = 0; // the row behind the latest block
    for (qsizetype block = 0; block <= blockCount(); ++block) {
        const RowRange next = block < blockCount() ? m_blocks[std::size_t(block)] : RowRange{rowCount(), 0};
        const qsizetype first = behind + (block > 0 ? m_context : 0);
        const qsizetype end = next.first - (block < blockCount() ? m_context : 0);
        const RowRange folded{first, end - first};
        if (folded.count >= fewestFolded && !wasOpened(folded)) {
            showRows({behind, first - behind});
            m_bands.push_back(folded);
            m_shown.push_back(qint32(first));
            behind = end;
        }
        showRows({behind, next.end() - behind});
        behind = next.end();
    }
}

bool ShownRows::wasOpened(RowRange stretch) const
{
    const auto found = firstEndingBehind(m_opened, stretch.first);
    return found != m_opened.end() && found->first < stretch.end();
}

void ShownRows::findRuns()
{
    for (auto &runs : m_runs)
        runs.clear();
    if (m_filter == RowFilter::Identical || m_blocks.empty())
        return;
    for (qsizetype index = 0; index < count(); ++index) {
        const qsizetype row = rowAt(index);
        if (differs(row))
            extend(m_runs[runOf(stateOf(row))], index);
    }
}

qsizetype ShownRows::count() const noexcept
{
    return m_filter == RowFilter::All ? rowCount() : qsizetype(m_shown.size());
}

qsizetype ShownRows::rowAt(qsizetype index) const
{
    return m_filter == RowFilter::All ? index : m_shown[std::size_t(index)];
}

qsizetype ShownRows::indexOf(qsizetype row) const
{
    if (m_filter == RowFilter::All)
        return std::min(row, count() - 1);
    const auto behind = std::upper_bound(m_shown.begin(), m_shown.end(), row);
    const qsizetype index = behind - m_shown.begin();
    const bool standsForIt = index > 0 && rowsAt(index - 1).contains(row);
    return std::min(standsForIt ? index - 1 : index, count() - 1);
}

bool ShownRows::isShown(qsizetype row) const
{
    const qsizetype index = indexOf(row);
    return index >= 0 && rowAt(index) == row && !isBand(index);
}

bool ShownRows::hidesRowsBefore(qsizetype index) const
{
    return m_filter == RowFilter::Identical && index > 0 && rowAt(index) != rowAt(index - 1) + 1;
}

bool ShownRows::isBand(qsizetype index) const
{
    return rowsAt(index).count > 1;
}

RowRange ShownRows::rowsAt(qsizetype index) const
{
    const qsizetype row = rowAt(index);
    const auto band = std::lower_bound(m_bands.begin(), m_bands.end(), RowRange{row, 0}, comesBefore);
    return band != m_bands.end() && band->first == row ? *band : RowRange{row, 1};
}

bool ShownRows::openBand(qsizetype index)
{
    if (index < 0 || index >= count() || !isBand(index))
        return false;
    const RowRange rows = rowsAt(index);
    m_opened.insert(std::upper_bound(m_opened.begin(), m_opened.end(), rows, comesBefore), rows);
    filterRows();
    return true;
}

void ShownRows::setOpened(std::vector<RowRange> stretches)
{
    if (stretches.empty() && m_opened.empty())
        return;
    m_opened = std::move(stretches);
    std::sort(m_opened.begin(), m_opened.end(), comesBefore);
    filterRows();
}

qsizetype ShownRows::blockFrom(qsizetype row) const
{
    return firstEndingBehind(m_blocks, row) - m_blocks.begin();
}

qsizetype ShownRows::blockOf(qsizetype row) const
{
    const auto found = firstEndingBehind(m_blocks, row);
    return found != m_blocks.end() && found->contains(row) ? found - m_blocks.begin() : -1;
}

bool ShownRows::holds(TextRowState state, RowRange range) const
{
    const auto &runs = m_runs[runOf(state)];
    const auto found = firstEndingBehind(runs, range.first);
    return found != runs.end() && found->first < range.end();
}

} // namespace velmora
