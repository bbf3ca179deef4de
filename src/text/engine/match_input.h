#pragma once

#include "text/engine/match_block.h"

#include <QtGlobal>

#include <span>

namespace velmora {

/// The two sequences of one matching. Values are 0 … alphabet-1.
struct MatchInput {
    std::span<const qint32> a;
    std::span<const qint32> b;
    qint32 alphabet = 0;

    [[nodiscard]] bool equal(qint32 i, qint32 j) const noexcept { return a[size_t(i)] == b[size_t(j)]; }
};

/// From which sizes on the block matcher changes its means. The result never depends on them.
struct MatchTuning {
    /// A rectangle with at most this many equal pairs for each of its elements is solved from the list of all pairs.
    qint64 pairsPerElement = 4;
    /// Lengths from which on common runs are looked for in a larger rectangle, falling.
    std::span<const qint32> longRuns;
    /// Steps that a search for long runs may take for each element before the rectangle counts as repetitive.
    qint64 stepsPerElement = 24;
    /// Positions of a rectangle from which on those of one length are found by marks instead of by sorting.
    qint64 markShare = 8;
};

[[nodiscard]] const MatchTuning &defaultMatchTuning();

} // namespace velmora
