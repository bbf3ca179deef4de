#pragma once

#include "filetypes/table/table_document.h"

#include <QString>

namespace velmora {

/// What a person ought to know of a result beside its rows, in sentences: files that count as empty, keys that are not
/// there, columns named differently, not compared or not shown. Empty when there is nothing.
[[nodiscard]] QString tableRemarks(const TableDocument &document);

/// Which rows others with their key have replaced; empty for none.
[[nodiscard]] QString tableDuplicates(const TableDocument &document);

/// The numbers of rows.
[[nodiscard]] QString tableCounts(const TableAlignment &alignment);

/// The encodings of both sides, or the one of both.
[[nodiscard]] QString tableEncodings(const TableDocument &document);

} // namespace velmora
