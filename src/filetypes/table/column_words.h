#pragma once

#include "filetypes/table/table_document.h"

#include <QString>

namespace velmora {

/// What a rule lets count as the same, in a few words; empty for one that is exact.
[[nodiscard]] QString ruleWords(const ColumnRule &rule);

/// The rules of all columns that have any, with their names; empty for none.
[[nodiscard]] QString allRules(const TableDocument &document);

/// What there is to know of a column, line by line: its name, whether it is a key, its rule, how many cells differ.
[[nodiscard]] QString columnHint(const TableDocument &document, qint32 column);

} // namespace velmora
