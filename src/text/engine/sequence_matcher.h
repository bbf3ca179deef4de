#pragma once

#include "core/cancel_flag.h"
#include "text/engine/match_input.h"

#include <QtGlobal>

#include <functional>
#include <span>
#include <vector>

namespace velmora {

/// One matched element: index `i` of the first sequence, index `j` of the second, both 0-based.
struct MatchPair {
    qint32 i = 0;
    qint32 j = 0;

    friend bool operator==(const MatchPair &, const MatchPair &) = default;
};

/// Above this product of the lengths two line sequences are matched by blocks instead of by the exact table.
inline constexpr qint64 lineTableLimit = 400000;
/// The same for the characters of two lines.
inline constexpr qint64 characterTableLimit = 200000;

/// Is told now and then how many elements of the first sequence have been matched.
using ElementsMatched = std::function<void(qint64)>;

/// Matches two sequences of any values; the pairs rise strictly in both indices.
///
/// Up to `tableLimit` pairs of positions the result is a longest common subsequence (see `longestCommonSubsequence`),
/// above that the chain of longest common blocks (see `matchBlocks`). Empty when cancelled.
[[nodiscard]] std::vector<MatchPair> matchSequences(std::span<const qint32> a, std::span<const qint32> b,
                                                    qint64 tableLimit, const CancelFlag &cancel = {});

/// The same pairs as common runs in rising order, which are next to nothing where most is equal. Two runs may touch.
/// The result does not depend on `tuning`, the sizes for the choice of means.
[[nodiscard]] std::vector<MatchBlock> matchedRuns(std::span<const qint32> a, std::span<const qint32> b,
                                                  qint64 tableLimit, const MatchTuning &tuning,
                                                  const CancelFlag &cancel,
                                                  const ElementsMatched &elementsMatched = {});

} // namespace velmora
