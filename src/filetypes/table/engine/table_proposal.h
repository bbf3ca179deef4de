#pragma once

#include "core/cancel_flag.h"
#include "filetypes/table/engine/table_text.h"

#include <array>

namespace velmora {

/// The first of the leading `columns` columns whose values would pair the rows of two tables with headers: no value is
/// empty, nearly none stands twice, and most are on both sides. -1 when there is none. Looks at the first rows only.
[[nodiscard]] qint32 proposedKey(const TableText &left, const TableText &right, qint32 columns,
                                 const CancelFlag &cancel);

/// Whether rows among the first ones of a table, but for its header, have anything in fields behind its last column,
/// which are not compared.
[[nodiscard]] bool hasLongerRows(const TableText &table, qint32 columns);

/// The characters that separate fields in most tables.
inline constexpr std::array usualDelimiters{QChar(u','), QChar(u'\t'), QChar(u';'), QChar(u'|')};

/// The usual delimiter that cuts each of the first rows of a text into the same number of fields, at least two, in both
/// texts, where `delimiter` does not. Null when there is none, or `delimiter` does well. Either text may be empty.
[[nodiscard]] QChar proposedDelimiter(const TextLines &left, const TextLines &right, QChar delimiter);

} // namespace velmora
