#include "filetypes/table/engine/duplicate_keys.h"

#include "core/sides.h"

#include <algorithm>

namespace velmora {

std::vector<DuplicateKey> duplicateKeys(const TableAlignment &alignment, std::size_t most)
{
    std::vector<DuplicateKey> keys;
    for (const Side side : bothSides) {
        std::vector<ReplacedRow> replaced = alignment.replaced[side];
        std::stable_sort(replaced.begin(), replaced.end(),
                         [](const ReplacedRow &one, const ReplacedRow &other) { return one.by < other.by; });
        const std::size_t end = keys.size() + most;
        for (const ReplacedRow &row : replaced) {
            const bool isNew = keys.empty() || keys.back().side != side || keys.back().last != row.by;
            if (isNew && keys.size() == end)
                break;
            if (isNew)
                keys.push_back({side, row.by, 0, {}});
            DuplicateKey &key = keys.back();
            ++key.replaced;
            if (key.rows.size() < DuplicateKey::rowsListed)
                key.rows.push_back(row.row);
        }
    }
    return keys;
}

} // namespace velmora
