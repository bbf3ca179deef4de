#pragma once

#include "core/keyed_rows.h"
#include "core/sides.h"
#include "filetypes/registry/engine/registry_tree.h"

#include <memory>

namespace velmora {

class RegistryNoise;

/// One value of either side, or a key itself where only one side has it or a file deletes it. Numbers are those of the
/// trees, -1 for none.
struct RegistryRow {
    Sides<qint32> keys{-1, -1};
    Sides<qint32> values{-1, -1};
    PairStatus status = PairStatus::Same;
    bool isNoise = false; ///< differs, and that says nothing

    [[nodiscard]] bool isKey() const { return values.left < 0 && values.right < 0; }
};

/// One key of either side with its rows, which stand together.
struct RegistryKeyPair {
    Sides<qint32> keys{-1, -1};
    qsizetype firstRow = 0;
    qsizetype rowCount = 0;
    PairCounts counts; ///< of its own rows, noise left out
};

/// Two trees and how they compare.
struct RegistryComparison {
    Sides<RegistryTree> trees;
    std::vector<RegistryKeyPair> keys; ///< in the order of trees
    std::vector<RegistryRow> rows;     ///< in the order of the keys, the key itself first
    PairCounts counts;                 ///< noise left out
    qsizetype noise = 0;               ///< rows of noise

    [[nodiscard]] const RegistryKey &key(const RegistryKeyPair &pair) const;
    /// Null on a side that lacks it.
    [[nodiscard]] const RegistryValue *value(const RegistryRow &row, Side side) const;
    /// The name of the row's value; empty for the default value and for a key.
    [[nodiscard]] QString name(const RegistryRow &row) const;
    /// The path of the row's key, as the left side spells it, where it has it.
    [[nodiscard]] const QString &path(const RegistryRow &row) const;
};

/// Compares two settled trees. Linear in their keys and values.
[[nodiscard]] RegistryComparison compareRegistry(RegistryTree left, RegistryTree right, const RegistryNoise &noise);

/// Says anew which rows are noise.
void judgeNoise(RegistryComparison &comparison, const RegistryNoise &noise);

} // namespace velmora
