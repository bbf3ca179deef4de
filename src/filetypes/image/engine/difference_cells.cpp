#include "filetypes/image/engine/difference_cells.h"

#include <QPoint>

#include <algorithm>
#include <bit>
#include <tuple>

namespace velmora {

DifferenceCells::DifferenceCells(QSize picture)
    : m_width((picture.width() + side - 1) / side),
      m_height((picture.height() + side - 1) / side),
      m_cells(std::size_t(m_width) * std::size_t(m_height))
{}

QRect DifferenceCells::bounds(int x, int y) const
{
    const Cell &cell = m_cells[std::size_t(y) * std::size_t(m_width) + std::size_t(x)];
    if (cell.rows == 0)
        return {};
    const QPoint corner(x * side, y * side);
    return {corner + QPoint(std::countr_zero(cell.columns), std::countr_zero(cell.rows)),
            corner + QPoint(side - 1 - std::countl_zero(cell.columns), side - 1 - std::countl_zero(cell.rows))};
}

QRect DifferenceCells::spread(int x, int y, std::vector<bool> &seen) const
{
    QRect all;
    std::vector<QPoint> open{{x, y}};
    seen[std::size_t(y) * std::size_t(m_width) + std::size_t(x)] = true;
    while (!open.empty()) {
        const QPoint at = open.back();
        open.pop_back();
        all |= bounds(at.x(), at.y());
        for (int row = std::max(at.y() - 1, 0); row <= std::min(at.y() + 1, m_height - 1); ++row) {
            for (int column = std::max(at.x() - 1, 0); column <= std::min(at.x() + 1, m_width - 1); ++column) {
                const std::size_t place = std::size_t(row) * std::size_t(m_width) + std::size_t(column);
                if (m_cells[place].rows == 0 || seen[place])
                    continue;
                seen[place] = true;
                open.emplace_back(column, row);
            }
        }
    }
    return all;
}

QList<QRect> DifferenceCells::regions() const
{
    QList<QRect> found;
    std::vector<bool> seen(m_cells.size());
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x) {
            const std::size_t place = std::size_t(y) * std::size_t(m_width) + std::size_t(x);
            if (m_cells[place].rows != 0 && !seen[place])
                found.append(spread(x, y, seen));
        }
    }
    std::sort(found.begin(), found.end(), [](const QRect &one, const QRect &other) {
        return std::tuple(one.top(), one.left()) < std::tuple(other.top(), other.left());
    });
    return found;
}

} // namespace velmora
