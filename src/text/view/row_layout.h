#pragma once

#include "text/engine/diff_line.h"

#include <QList>

#include <vector>

namespace velmora {

/// Which rows of a comparison are shown.
enum class RowFilter : quint8 { All, Differences, Identical };

/// Consecutive rows [first, first + count).
struct RowRange {
    qsizetype first = 0;
    qsizetype count = 0;

    [[nodiscard]] qsizetype end() const noexcept { return first + count; }
    [[nodiscard]] bool contains(qsizetype row) const noexcept { return row >= first && row < end(); }
    friend bool operator==(const RowRange &, const RowRange &) = default;
};

/// Where the rows of a comparison stand in a view of rows of equal height: which are shown, which are in sight, and
/// where the differences are. Pure arithmetic, no widget.
///
/// A *row* is a position in the result, an *index* a position among the rows that are shown; both are 0-based, and the
/// same when all rows are shown. The view scrolls by whole rows: `top` is the index of the uppermost one. Heights are
/// in device independent pixels. Setting rows or filter takes a step for each row, everything else at most a logarithm
/// of them.
class RowLayout {
public:
    void setRows(const QList<AlignedRow> &rows);
    void setFilter(RowFilter filter);
    [[nodiscard]] RowFilter filter() const noexcept { return m_filter; }

    [[nodiscard]] qsizetype rowCount() const noexcept { return m_rows.size(); }

    /// How many rows are shown.
    [[nodiscard]] qsizetype count() const noexcept;
    /// The row at `index`. Precondition: 0 <= index < count().
    [[nodiscard]] qsizetype rowAt(qsizetype index) const;
    /// The index of `row`, or of the next shown row behind it, or of the last one; -1 when nothing is shown.
    [[nodiscard]] qsizetype indexOf(qsizetype row) const;
    [[nodiscard]] bool isShown(qsizetype row) const;
    /// True when rows between the one at `index` and the shown one before it are hidden.
    [[nodiscard]] bool hidesRowsBefore(qsizetype index) const;

    void setRowHeight(int height);
    [[nodiscard]] int rowHeight() const noexcept { return m_rowHeight; }
    /// Rows that fit whole into `height`, at least one.
    [[nodiscard]] qsizetype rowsPerPage(int height) const;
    /// The greatest top that still fills a view of `height`.
    [[nodiscard]] qsizetype maximumTop(int height) const;
    /// The indices in sight, the cut off last one too.
    [[nodiscard]] RowRange inSight(qsizetype top, int height) const;
    /// The y of the upper edge of `index`.
    [[nodiscard]] qint64 yOf(qsizetype index, qsizetype top) const;
    /// The index at `y`, which may lie outside the view; clamped to the shown rows, -1 when there are none.
    [[nodiscard]] qsizetype indexAtY(int y, qsizetype top) const;
    /// The top nearest to `top` that brings `index` whole into sight.
    [[nodiscard]] qsizetype topToShow(qsizetype index, qsizetype top, int height) const;
    /// `top` when the indices `range` are in sight with a row to spare on each side, else a top that shows their
    /// beginning in the upper third of the view.
    [[nodiscard]] qsizetype topToReveal(RowRange range, qsizetype top, int height) const;

    /// A block is a maximal run of rows that are not `Equal`, whether shown or not; blocks are numbered from 0.
    [[nodiscard]] qsizetype blockCount() const noexcept { return qsizetype(m_blocks.size()); }
    /// The rows of a block. Precondition: 0 <= block < blockCount().
    [[nodiscard]] RowRange block(qsizetype block) const { return m_blocks[std::size_t(block)]; }
    /// The block that holds `row`, or -1.
    [[nodiscard]] qsizetype blockOf(qsizetype row) const;

    /// Whether a row of `kind` (not `Equal`) is among the shown indices `range`.
    [[nodiscard]] bool holds(DiffLineKind kind, RowRange range) const;

private:
    void filterRows();
    void findRuns();

    QList<AlignedRow> m_rows;
    RowFilter m_filter = RowFilter::All;
    std::vector<qint32> m_shown; ///< rows by index; unused when all are shown
    std::vector<RowRange> m_blocks;
    std::vector<RowRange> m_runs[3]; ///< runs of indices of the kinds Added, Removed, Modified
    int m_rowHeight = 1;
};

} // namespace velmora
