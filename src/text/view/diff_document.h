#pragma once

#include "text/engine/diff_line.h"
#include "text/engine/line_ends.h"
#include "text/view/line_source.h"
#include "text/view/side.h"

#include <QList>

#include <memory>
#include <optional>
#include <vector>

namespace velmora {

/// A finished comparison as the view shows it: the aligned rows and the lines that they refer to.
///
/// Immutable, shared between the view and its workers, usable from any thread. Rows are addressed by their 0-based
/// position in the result.
class DiffDocument {
public:
    /// The text that a row shows on one side.
    struct Cell {
        const LineSource *source = nullptr; ///< null where only the other side has a line
        qsizetype line = -1;                ///< 0-based in `source`
        bool own = false;                   ///< false for a line of the other side, shown because it does not matter
    };

    /// Rows [first, first + removed) of an earlier state, in the place of which stand [first, first + inserted).
    struct RowChange {
        qsizetype first = 0;
        qsizetype removed = 0;
        qsizetype inserted = 0;
    };

    /// Counts the rows, reads the equal ones and measures the texts. `lineEnds` are the rows whose line ends differ, in
    /// order, where these count; `tabWidth` is the distance of tab stops in columns.
    DiffDocument(QList<AlignedRow> rows, std::shared_ptr<const LineSource> left,
                 std::shared_ptr<const LineSource> right, std::vector<LineEndRow> lineEnds = {}, int tabWidth = 4);
    /// `before` after a change of some rows and of their lines, for a caller that knows how wide the widest line is, at
    /// most, and which of the new rows, counted from 0, have `lineEnds` that differ. Looks at the changed rows alone;
    /// nobody has counted them yet.
    DiffDocument(const DiffDocument &before, const RowChange &change, QList<AlignedRow> rows,
                 std::shared_ptr<const LineSource> left, std::shared_ptr<const LineSource> right,
                 const std::vector<LineEndRow> &lineEnds, qint64 widest);

    /// The same rows and lines with other tab stops.
    DiffDocument(const DiffDocument &other, int tabWidth);

    [[nodiscard]] const QList<AlignedRow> &rows() const noexcept { return m_rows; }
    [[nodiscard]] qsizetype rowCount() const noexcept { return m_rows.size(); }
    [[nodiscard]] DiffLineKind kind(qsizetype row) const { return m_rows.at(row).kind; }
    [[nodiscard]] const LineSource &source(Side side) const { return side == Side::Left ? *m_left : *m_right; }
    [[nodiscard]] int tabWidth() const noexcept { return m_tabWidth; }

    /// The line number, 1-based, or -1.
    [[nodiscard]] qint32 lineNumber(qsizetype row, Side side) const;
    [[nodiscard]] Cell cell(qsizetype row, Side side) const;
    /// The text of a cell, empty without one.
    [[nodiscard]] QString text(qsizetype row, Side side) const;

    /// True for an equal row whose two lines are not the same text: they differ in a way that does not matter.
    [[nodiscard]] bool differsUnimportantly(qsizetype row) const;
    /// All rows of which that is true, in order.
    [[nodiscard]] const std::vector<qint32> &unimportantRows() const noexcept { return m_unimportantRows; }

    /// The rows whose line ends differ, in order; none where line ends do not count.
    [[nodiscard]] const std::vector<LineEndRow> &lineEndRows() const noexcept { return m_lineEndRows; }
    /// Those of one row; null when they are the same or do not count.
    [[nodiscard]] const LineEndRow *lineEndsOf(qsizetype row) const;

    /// The row that shows line `number` (1-based) of `side`, or the nearest row before it that shows a line; -1 when no
    /// row does. Takes the logarithm of the rows, and a step for each row in the longest run of rows without a line.
    [[nodiscard]] qsizetype rowOfLine(Side side, qint32 number) const;

    /// How many rows there are of each kind; nothing where they have not been counted.
    [[nodiscard]] const std::optional<DiffCounts> &counts() const noexcept { return m_counts; }

    /// Columns of the widest line of both sides, or more. Computed at construction, in one pass over the long lines.
    [[nodiscard]] qint64 widestLine() const noexcept { return m_widest; }

private:
    void addUnimportantRows(qsizetype first, qsizetype end);
    void takeLineEnds(const DiffDocument &before, const RowChange &change, const std::vector<LineEndRow> &changed);

    QList<AlignedRow> m_rows;
    std::shared_ptr<const LineSource> m_left;
    std::shared_ptr<const LineSource> m_right;
    int m_tabWidth;
    qint64 m_widest = 0;
    std::optional<DiffCounts> m_counts;
    std::vector<qint32> m_unimportantRows;
    std::vector<LineEndRow> m_lineEndRows;
};

} // namespace velmora
