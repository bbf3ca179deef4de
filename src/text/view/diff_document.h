#pragma once

#include "session/pane/pane_document.h"
#include "text/engine/diff_line.h"
#include "text/engine/line_ends.h"

#include <QList>

#include <memory>
#include <optional>
#include <vector>

namespace velmora {

class PaneScene;

/// A finished comparison of two texts as its two panes show it: the aligned rows and the lines that they refer to.
class DiffDocument final : public PaneDocument {
public:
    /// Rows [first, first + removed) of an earlier state, in the place of which stand [first, first + inserted).
    struct RowChange {
        qsizetype first = 0;
        qsizetype removed = 0;
        qsizetype inserted = 0;
        std::vector<LineEndRow> lineEnds; ///< those of the new rows, counted from 0, whose line ends differ
        qint64 widest = 0;                ///< columns of the widest line, at most
    };

    /// Counts the rows, reads the equal ones and measures the texts. `lineEnds` are the rows whose line ends differ, in
    /// order, where these count; `tabWidth` is the distance of tab stops in columns.
    DiffDocument(QList<AlignedRow> rows, std::shared_ptr<const LineSource> left,
                 std::shared_ptr<const LineSource> right, std::vector<LineEndRow> lineEnds = {}, int tabWidth = 4);
    /// `before` after a change of some rows and of their lines. Looks at the changed rows alone; nobody has counted
    /// them yet.
    DiffDocument(const DiffDocument &before, const RowChange &change, QList<AlignedRow> rows,
                 std::shared_ptr<const LineSource> left, std::shared_ptr<const LineSource> right);

    DiffDocument(const DiffDocument &other, int tabWidth);
    [[nodiscard]] std::shared_ptr<const PaneDocument> withTabWidth(int columns) const override;

    [[nodiscard]] const QList<AlignedRow> &rows() const noexcept { return m_rows; }
    [[nodiscard]] DiffLineKind kind(qsizetype row) const { return m_rows.at(row).kind; }

    [[nodiscard]] qsizetype rowCount() const override { return m_rows.size(); }
    [[nodiscard]] qint32 lineNumber(qsizetype row, PaneIndex pane) const override;
    /// A pane shows the other one's line where a row is equal although it has none of its own.
    [[nodiscard]] Cell cell(qsizetype row, PaneIndex pane) const override;
    [[nodiscard]] bool isEqual(qsizetype row) const override { return kind(row) == Equal; }
    [[nodiscard]] std::vector<TextRowState> states(bool countsMinor) const override;
    [[nodiscard]] bool hasSameStates(const PaneDocument &other, bool countsMinor) const override;
    [[nodiscard]] RowLook look(qsizetype row, PaneIndex pane) const override;
    [[nodiscard]] qint64 columnsBehindLines() const override;
    [[nodiscard]] QString describeRow(qsizetype row) const override;
    [[nodiscard]] QString describeBlock(const ShownRows &shown, qsizetype block) const override;

    /// True for an equal row whose two lines are not the same text: they differ in a way that does not matter.
    [[nodiscard]] bool differsUnimportantly(qsizetype row) const;
    /// All rows of which that is true, in order.
    [[nodiscard]] const std::vector<qint32> &unimportantRows() const noexcept { return m_unimportantRows; }

    /// The rows whose line ends differ, in order; none where line ends do not count.
    [[nodiscard]] const std::vector<LineEndRow> &lineEndRows() const noexcept { return m_lineEndRows; }
    /// Those of one row; null when they are the same or do not count.
    [[nodiscard]] const LineEndRow *lineEndsOf(qsizetype row) const;

    /// How many rows there are of each kind; nothing where they have not been counted.
    [[nodiscard]] const std::optional<DiffCounts> &counts() const noexcept { return m_counts; }

private:
    void addUnimportantRows(qsizetype first, qsizetype end);
    void takeLineEnds(const DiffDocument &before, const RowChange &change);

    QList<AlignedRow> m_rows;
    std::optional<DiffCounts> m_counts;
    std::vector<qint32> m_unimportantRows;
    std::vector<LineEndRow> m_lineEndRows;
};

/// The comparison that `scene`, which shows no other documents, shows; null for none.
[[nodiscard]] const DiffDocument *diffIn(const PaneScene &scene);

} // namespace velmora
