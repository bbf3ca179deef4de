#pragma once

#include <QtGlobal>

#include <vector>

namespace velmora {

/// Which rows of a document are shown.
enum class RowFilter : quint8 { All, Differences, Identical };

/// What a row is to a reader. All but `Equal` are differences; the lines of the last three are equal, or equal but for
/// what does not matter, and count all the same.
enum class TextRowState : quint8 { Equal, Added, Removed, Modified, Minor, LineEnds, LastLineFeed };

/// Consecutive rows [first, first + count).
struct RowRange {
    qsizetype first = 0;
    qsizetype count = 0;

    [[nodiscard]] qsizetype end() const noexcept { return first + count; }
    [[nodiscard]] bool contains(qsizetype row) const noexcept { return row >= first && row < end(); }
    friend bool operator==(const RowRange &, const RowRange &) = default;
};

/// Which rows of a document are shown, and where its differences are.
///
/// A *row* is a position in the document, an *index* a position among what is shown; both are 0-based, and the same
/// when all rows are shown. Where differences only are shown, a few equal rows around each stay as its context and
/// every longer stretch of equal rows is folded into one *band*, which has an index of its own and can be opened.
/// Setting rows or filter takes a step for each row, everything else at most a logarithm of them.
class ShownRows {
public:
    static constexpr qsizetype usualContext = 3;

    /// Takes the state of each row.
    void setRows(std::vector<TextRowState> states);
    void setFilter(RowFilter filter);
    [[nodiscard]] RowFilter filter() const noexcept { return m_filter; }
    /// How many equal rows are left on each side of a difference.
    void setContext(qsizetype rows);
    [[nodiscard]] qsizetype context() const noexcept { return m_context; }

    [[nodiscard]] qsizetype rowCount() const noexcept { return qsizetype(m_states.size()); }

    /// How many rows and bands are shown.
    [[nodiscard]] qsizetype count() const noexcept;
    /// The row at `index`, the first one of a band. Precondition: 0 <= index < count().
    [[nodiscard]] qsizetype rowAt(qsizetype index) const;
    /// The index of `row` or of the band that it is folded into; else of the next shown row behind it, or of the last
    /// one; -1 when nothing is shown.
    [[nodiscard]] qsizetype indexOf(qsizetype row) const;
    /// False for a row in a band.
    [[nodiscard]] bool isShown(qsizetype row) const;
    /// True when rows between the one at `index` and the shown one before it are hidden and no band stands for them.
    [[nodiscard]] bool hidesRowsBefore(qsizetype index) const;

    [[nodiscard]] bool isBand(qsizetype index) const;
    /// The rows that `index` stands for: those of a band, else one.
    [[nodiscard]] RowRange rowsAt(qsizetype index) const;
    /// Shows the rows of the band at `index`; false when that is none.
    bool openBand(qsizetype index);
    /// The stretches that were opened, in order.
    [[nodiscard]] const std::vector<RowRange> &opened() const noexcept { return m_opened; }
    /// Opens the bands that touch any of `stretches` and closes all others.
    void setOpened(std::vector<RowRange> stretches);

    /// A block is a maximal run of rows that differ, whether shown or not; blocks are numbered from 0. Rows that differ
    /// in nothing but their line ends are blocks of their own, and so is one where a last line feed is missing.
    [[nodiscard]] qsizetype blockCount() const noexcept { return qsizetype(m_blocks.size()); }
    /// The rows of a block. Precondition: 0 <= block < blockCount().
    [[nodiscard]] RowRange block(qsizetype block) const { return m_blocks[std::size_t(block)]; }
    /// The rows of all blocks together.
    [[nodiscard]] qsizetype rowsInBlocks() const noexcept { return m_rowsInBlocks; }
    /// The first block that holds `row` or stands behind it; blockCount() when there is none.
    [[nodiscard]] qsizetype blockFrom(qsizetype row) const;
    /// The block that holds `row`, or -1.
    [[nodiscard]] qsizetype blockOf(qsizetype row) const;

    [[nodiscard]] TextRowState stateOf(qsizetype row) const { return m_states[std::size_t(row)]; }

    /// Whether a row of `state`, one of `Added`, `Removed` and `Modified`, is among the shown indices `range`; the
    /// states behind `Modified` count as that.
    [[nodiscard]] bool holds(TextRowState state, RowRange range) const;

private:
    [[nodiscard]] bool differs(qsizetype row) const { return stateOf(row) != TextRowState::Equal; }
    [[nodiscard]] bool wasOpened(RowRange stretch) const;
    void filterRows();
    void showRows(RowRange rows);
    void foldEqualRows();
    void findRuns();

    std::vector<TextRowState> m_states;
    RowFilter m_filter = RowFilter::All;
    qsizetype m_context = usualContext;
    std::vector<qint32> m_shown;    ///< rows by index; unused when all are shown
    std::vector<RowRange> m_bands;  ///< in order
    std::vector<RowRange> m_opened; ///< in order
    std::vector<RowRange> m_blocks;
    qsizetype m_rowsInBlocks = 0;
    std::vector<RowRange> m_runs[3]; ///< runs of indices of the kinds Added, Removed, Modified
};

} // namespace velmora
