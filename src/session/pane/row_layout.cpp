#include "session/pane/row_layout.h"

#include <algorithm>

namespace velmora {

namespace {

// Rows are not measured for a distance that no view shows.
constexpr qsizetype farAway = 1000;

} // namespace

void RowLayout::setMeasure(Measure measure)
{
    m_measure = std::move(measure);
}

void RowLayout::setRowHeight(int height)
{
    m_rowHeight = std::max(height, 1);
}

qsizetype RowLayout::linesAt(qsizetype index) const
{
    return m_measure && !isBand(index) ? std::max<qsizetype>(m_measure(rowAt(index)), 1) : 1;
}

qsizetype RowLayout::rowsPerPage(int height) const
{
    return std::max(height / m_rowHeight, 1);
}

RowPlace RowLayout::clamped(RowPlace place) const
{
    if (count() == 0 || place.index < 0)
        return {};
    if (place.index >= count())
        return {count() - 1, linesAt(count() - 1) - 1};
    return {place.index, place.line == 0 ? 0 : std::clamp<qsizetype>(place.line, 0, linesAt(place.index) - 1)};
}

RowPlace RowLayout::moved(RowPlace from, qsizetype lines) const
{
    if (!m_measure)
        return clamped({from.index + from.line + lines, 0});
    RowPlace place = clamped(from);
    qsizetype rest = lines;
    while (rest < 0) {
        if (place.line + rest >= 0)
            return {place.index, place.line + rest};
        if (place.index == 0)
            return {};
        rest += place.line + 1;
        --place.index;
        place.line = linesAt(place.index) - 1;
    }
    while (rest > 0) {
        const qsizetype left = linesAt(place.index) - 1 - place.line;
        if (rest <= left || place.index + 1 >= count())
            return {place.index, place.line + std::min(rest, left)};
        rest -= left + 1;
        place = {place.index + 1, 0};
    }
    return place;
}

RowPlace RowLayout::maximumTop(int height) const
{
    if (count() == 0)
        return {};
    const RowPlace last{count() - 1, linesAt(count() - 1) - 1};
    return moved(last, 1 - rowsPerPage(height));
}

RowRange RowLayout::inSight(RowPlace top, int height) const
{
    const qsizetype first = std::clamp<qsizetype>(top.index, 0, count());
    const qsizetype lines = (std::max(height, 0) + m_rowHeight - 1) / m_rowHeight;
    if (!m_measure)
        return {first, std::min(lines, count() - first)};
    qsizetype end = first;
    for (qsizetype filled = -top.line; end < count() && filled < lines; ++end)
        filled += linesAt(end);
    return {first, end - first};
}

qint64 RowLayout::yOf(qsizetype index, RowPlace top) const
{
    qint64 lines = index - top.index;
    if (m_measure && std::abs(lines) < farAway) {
        lines = 0;
        for (qsizetype between = top.index; between < index; ++between)
            lines += linesAt(between);
        for (qsizetype between = index; between < top.index; ++between)
            lines -= linesAt(between);
    }
    return (lines - top.line) * m_rowHeight;
}

RowPlace RowLayout::placeAtY(int y, RowPlace top) const
{
    return moved(top, y >= 0 ? y / m_rowHeight : -((m_rowHeight - 1 - y) / m_rowHeight));
}

qsizetype RowLayout::indexAtY(int y, RowPlace top) const
{
    return count() > 0 ? placeAtY(y, top).index : -1;
}

RowPlace RowLayout::topToShow(RowPlace place, RowPlace top, int height) const
{
    const RowPlace lowest = moved(place, 1 - rowsPerPage(height));
    return std::min(std::clamp(top, lowest, std::max(place, lowest)), maximumTop(height));
}

RowPlace RowLayout::topToReveal(RowRange range, RowPlace top, int height) const
{
    const qsizetype page = rowsPerPage(height);
    const RowPlace start{range.first, 0};
    const bool startsInSight = start > top || (start == RowPlace() && top == RowPlace());
    const bool endsInSight =
        RowPlace{range.end(), 0} <= moved(top, page - 1) || (range.end() == count() && top >= maximumTop(height));
    if (startsInSight && endsInSight)
        return top;
    return std::min(moved(start, -(page / 3)), maximumTop(height));
}

} // namespace velmora
