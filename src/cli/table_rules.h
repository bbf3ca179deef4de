#pragma once

#include "cli/arguments.h"
#include "filetypes/table/engine/column_rule.h"
#include "filetypes/table/engine/table_columns.h"

#include <QList>
#include <QString>

namespace velmora::cli {

/// The column that a name or a number from 1 on stands for, -1 for none. A name comes before a number: columns may be
/// called "2024".
[[nodiscard]] qint32 columnCalled(const TableColumns &columns, const QString &name);

/// The options on columns that were given, as they were; empty for none.
[[nodiscard]] QString givenRules(const Arguments &arguments);

/// Takes what the options "leave-out", "ignore-case", "ignore-space", "tolerance", "dates-dmy" and "dates-mdy" say of
/// columns. Returns what is wrong with them, empty when nothing is.
[[nodiscard]] QString takeColumnRules(const Arguments &arguments, const TableColumns &columns,
                                      QList<ColumnRule> &rules);

} // namespace velmora::cli
