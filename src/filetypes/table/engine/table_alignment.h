#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "core/sides.h"
#include "filetypes/table/engine/column_rule.h"
#include "filetypes/table/engine/table_columns.h"
#include "filetypes/table/engine/table_compare.h"
#include "filetypes/table/engine/table_text.h"

#include <QList>

#include <vector>

namespace velmora {

/// What a comparison of tables goes by.
struct TableOptions {
    bool hasHeader = true;
    bool columnsByName = false;   ///< with a header: cells are compared in columns of the same name
    QList<qint32> keys = {};      ///< columns of the result; with none that there is, rows are aligned in their order
    QList<ColumnRule> rules = {}; ///< by column of the result, as far as there are any; see `compareTables`
};

/// A row that is not in a result, since a later one has the same key.
struct ReplacedRow {
    qint32 row = 0;
    qint32 by = 0; ///< the last row with that key, which is in the result

    friend bool operator==(const ReplacedRow &, const ReplacedRow &) = default;
};

/// One row of a result. Indices as in `TableRowDiff`.
struct AlignedTableRow {
    qint32 left = -1;
    qint32 right = -1;
    TableRowStatus status = TableRowStatus::Same;

    [[nodiscard]] qint32 row(Side side) const noexcept { return side == Side::Left ? left : right; }

    friend bool operator==(const AlignedTableRow &, const AlignedTableRow &) = default;
};

struct TableCounts {
    qint64 same = 0;
    qint64 modified = 0;
    qint64 leftOnly = 0;
    qint64 rightOnly = 0;

    [[nodiscard]] qint64 differences() const noexcept { return modified + leftOnly + rightOnly; }
};

/// The rows of two tables side by side; the values stay in the tables.
struct TableAlignment {
    Sides<TableText> tables;
    TableColumns columns;
    QList<ColumnRule> rules;           ///< empty when no column has one
    std::vector<AlignedTableRow> rows; ///< in display order
    TableCounts counts;
    Sides<std::vector<ReplacedRow>> replaced; ///< rising

    /// The rule of a column; null when only the same bytes count as the same there.
    [[nodiscard]] const ColumnRule *ruleOf(qint32 column) const noexcept
    {
        return column < rules.size() && !rules[column].isExact() ? &rules[column] : nullptr;
    }
};

/// What the phases of the progress of `alignTables` count.
enum TablePhase { ReadingRows = 0, MatchingRows = 1, ComparingRows = 2 };

/// Compares two tables as `compareTables` does, row for row the same, without a string for each cell: about linear in
/// the bytes, and 12 bytes for a row of the result. The rows are not all there when `cancel` is set. Precondition: both
/// were cut at the same delimiter.
[[nodiscard]] TableAlignment alignTables(const TableText &left, const TableText &right, const TableOptions &options,
                                         const CancelFlag &cancel, Progress &progress);

/// The same for columns that are known already: those of `tableColumns`.
[[nodiscard]] TableAlignment alignTables(const TableText &left, const TableText &right, const TableColumns &columns,
                                         const TableOptions &options, const CancelFlag &cancel, Progress &progress);

/// The columns of a comparison with these options, whose keys and rules are not looked at.
[[nodiscard]] TableColumns tableColumns(const TableText &left, const TableText &right, const TableOptions &options,
                                        const CancelFlag &cancel);

} // namespace velmora
