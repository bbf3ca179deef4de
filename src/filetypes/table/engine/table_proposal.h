#pragma once

#include "core/cancel_flag.h"
#include "filetypes/table/engine/table_text.h"

namespace velmora {

/// The first of the leading `columns` columns whose values would pair the rows of two tables with headers: no value is
/// empty, nearly none stands twice, and most are on both sides. -1 when there is none. Looks at the first rows only.
[[nodiscard]] qint32 proposedKey(const TableText &left, const TableText &right, qint32 columns,
                                 const CancelFlag &cancel);

} // namespace velmora
