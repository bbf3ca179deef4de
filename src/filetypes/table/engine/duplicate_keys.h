#pragma once

#include "core/side.h"
#include "filetypes/table/engine/table_alignment.h"

#include <vector>

namespace velmora {

/// A key that several rows of one table have, of which the last one is in the result. Rows as in `AlignedTableRow`.
struct DuplicateKey {
    Side side = Side::Left;
    qint32 last = 0;
    qint64 replaced = 0;      ///< how many others there are
    std::vector<qint32> rows; ///< the first of these, no more than `rowsListed`

    static constexpr std::size_t rowsListed = 20;

    friend bool operator==(const DuplicateKey &, const DuplicateKey &) = default;
};

/// The duplicate keys of both tables, the left one's first, in the order of their last rows, no more than `most` of
/// each.
[[nodiscard]] std::vector<DuplicateKey> duplicateKeys(const TableAlignment &alignment, std::size_t most);

} // namespace velmora
