#pragma once

#include "filetypes/table/engine/column_rule.h"
#include "filetypes/table/engine/table_text.h"

#include <QList>

#include <string>

namespace velmora {

/// A field that is part of a key.
struct KeyField {
    qint32 field = -1;                ///< -1 for none, whose value is empty
    const ColumnRule *rule = nullptr; ///< what stands for the value (see `valueForm`); null for itself. Not owned
};

/// The keys of the rows [firstRow, endRow) of a table, as far as there are so many, a line for each: the values of
/// these fields, empty where the row is shorter. Rows have the same line just when all values, or what stands for them,
/// are the same. Incomplete when cancelled.
[[nodiscard]] TextLines rowKeys(const TableText &table, qint32 firstRow, qint32 endRow, const QList<KeyField> &fields,
                                const CancelFlag &cancel);

/// True when the lines of the text can stand for the rows in a comparison of whole rows.
[[nodiscard]] bool rowsAreLines(const TableText &table);

/// All rows of a table in a form that does not show how fields were quoted, a line for each: two rows have the same
/// line just when their values, joined by U+001F, are the same. Where `rowsAreLines` holds these are the rows' own
/// bytes. Incomplete when cancelled.
[[nodiscard]] TextLines joinedRows(const TableText &table, const CancelFlag &cancel);

} // namespace velmora
