#pragma once

#include "core/cancel_flag.h"

#include <QtGlobal>

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

/// Matches two sequences; the pairs rise strictly in both indices. Empty when cancelled.
[[nodiscard]] std::vector<MatchPair> matchSequences(const std::vector<qint32> &a, const std::vector<qint32> &b,
                                                    qint64 tableLimit, const CancelFlag &cancel = {});

} // namespace velmora
