#pragma once

#include "filetypes/table/engine/column_rule.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace velmora {

/// A delimited text as a list of rows, each a list of its fields. Rows may have different lengths.
using ParsedTable = QList<QStringList>;

/// What a row of a comparison is. The numbers are stored and shown; mind that those of cells cross over.
enum class TableRowStatus : qint32 { Same = 0, Modified = 1, LeftOnly = 2, RightOnly = 3 };

/// What a cell of a comparison is.
enum class TableCellStatus : qint32 { Same = 0, Modified = 1, RightOnly = 2, LeftOnly = 3 };

struct TableCellDiff {
    TableCellStatus status = TableCellStatus::Same;
    QString left; ///< empty where there is none
    QString right;

    friend bool operator==(const TableCellDiff &, const TableCellDiff &) = default;
};

/// Indices are those of the parsed tables, header rows included; -1 where a side has no row.
struct TableRowDiff {
    TableRowStatus status = TableRowStatus::Same;
    qint32 leftRow = -1;
    qint32 rightRow = -1;
    QList<TableCellDiff> cells; ///< one for each header

    friend bool operator==(const TableRowDiff &, const TableRowDiff &) = default;
};

struct TableDiffResult {
    QStringList headers;
    QList<TableRowDiff> rows; ///< in display order
    qint32 sameCount = 0;
    qint32 modifiedCount = 0;
    qint32 leftOnlyCount = 0;
    qint32 rightOnlyCount = 0;

    friend bool operator==(const TableDiffResult &, const TableDiffResult &) = default;
};

/// Parses a text whose fields `delimiter` separates and whose rows line feeds end. A quotation mark anywhere in a field
/// turns quoting on, and one that is not doubled turns it off; carriage returns outside quotes are dropped.
[[nodiscard]] ParsedTable parseDelimitedText(const QString &text, QChar delimiter);

/// Compares two tables cell by cell, each cell with the one at the same position of the other side, whatever the
/// headers say. Rows are paired by their field in column `keyColumn` where the result has that column, of equal keys
/// the last one, and otherwise aligned in their order as the lines of a text are. `hasHeader`: the first row of each
/// table names its columns.
///
/// Every cell is a string of its own; `alignTables` is the form for large tables.
[[nodiscard]] TableDiffResult compareTables(const ParsedTable &left, const ParsedTable &right, qint32 keyColumn,
                                            bool hasHeader);

/// The same with any number of key columns, all of whose values make the key, and with rules by column of the result,
/// as far as there are any: cells whose values count as the same are `Same`. With a rule that is not exact rows are
/// aligned in their order by what stands for their cells (see `roughForm`), and a pair whose cells all count as the
/// same is `Same` however it was found.
[[nodiscard]] TableDiffResult compareTables(const ParsedTable &left, const ParsedTable &right,
                                            const QList<qint32> &keyColumns, bool hasHeader,
                                            const QList<ColumnRule> &rules);

} // namespace velmora
