#pragma once

#include "core/cancel_flag.h"
#include "merge/model/merge_parts.h"

#include <QList>

#include <array>

namespace velmora {

/// How many texts a merge shows: left, base, right, result.
inline constexpr std::size_t mergePaneCount = mergeSourceCount + 1;
inline constexpr std::size_t resultPane = mergeSourceCount;

/// Lines of all texts that stand side by side: 1-based, -1 for none.
struct MergeRow {
    std::array<qint32, mergePaneCount> lines{-1, -1, -1, -1};

    friend bool operator==(const MergeRow &, const MergeRow &) = default;
};

/// The rows of a merge, and where those of each part begin.
struct MergeRows {
    QList<MergeRow> rows;
    std::vector<qsizetype> firstOfPart; ///< behind the last part the number of rows
};

/// Puts the lines of all parts side by side: within a part each version beside the lines of the base that it resembles,
/// and the result's lines beside where they come from. Reentrant; incomplete when cancelled.
[[nodiscard]] MergeRows mergeRows(const MergeTexts &texts, const MergeParts &parts, const EditSnapshot &result,
                                  const CancelFlag &cancel);

/// The rows after `change` of the parts: only those of the parts that changed are laid out anew, and the result's lines
/// behind them are renumbered. `lineShift` is by how much the result became longer. Rows that stay are shared.
[[nodiscard]] MergeRows patchedRows(const MergeRows &before, const MergeTexts &texts, const MergeParts &parts,
                                    const EditSnapshot &result, const PartsChange &change, qsizetype lineShift);

} // namespace velmora
