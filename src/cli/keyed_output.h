#pragma once

#include "cli/json_writer.h"
#include "core/keyed_rows.h"

class QIODevice;

namespace velmora::cli {

// How the commands that compare keys with values write them. Each returns false where the device takes no more.

/// One line: "Total: 3 items | Same: 1 | ...".
[[nodiscard]] bool writeCounts(QIODevice &device, const PairCounts &counts);

/// One line for each row: its sign and its key. "= same, < left only, > right only, ! changed".
[[nodiscard]] bool writeKeys(QIODevice &device, const QList<KeyedRow> &rows);

/// The number of a status as comparisons of folders have it: 0 same, 1 left only, 2 right only, 3 changed.
[[nodiscard]] int statusNumber(PairStatus status);

/// A member with the text, or null where it is not there.
void writeText(JsonWriter &json, std::string_view key, const QString &text, bool isThere);

/// The members "status", "left" and "right".
void writeValues(JsonWriter &json, PairStatus status, const QString &left, const QString &right);

} // namespace velmora::cli
