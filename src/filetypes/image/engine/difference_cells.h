#pragma once

#include <QList>
#include <QRect>
#include <QSize>

#include <vector>

namespace velmora {

/// Which pixels of a picture are marked, in squares of 32 by 32 whose rows and columns are told apart. Threads may mark
/// at the same time where their rows lie in different squares.
class DifferenceCells {
public:
    static constexpr int side = 32;

    explicit DifferenceCells(QSize picture);

    /// Marks pixels from `x`, a multiple of 32, on in row `y`: bit n stands for x + n.
    void mark(int x, int y, quint32 bits) noexcept
    {
        Cell &cell = m_cells[std::size_t(y / side) * std::size_t(m_width) + std::size_t(x / side)];
        cell.columns |= bits;
        cell.rows |= bits != 0 ? 1U << unsigned(y % side) : 0U;
    }

    /// The bounds of the marked pixels of squares that touch, corners too; from top to bottom, then from left to right.
    [[nodiscard]] QList<QRect> regions() const;

private:
    struct Cell {
        quint32 columns = 0;
        quint32 rows = 0;
    };

    [[nodiscard]] QRect bounds(int x, int y) const;
    [[nodiscard]] QRect spread(int x, int y, std::vector<bool> &seen) const;

    int m_width;
    int m_height;
    std::vector<Cell> m_cells;
};

} // namespace velmora
