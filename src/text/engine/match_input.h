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
    qint64 pairsPerElement = 6;
    /// Lengths from which on common runs are looked for in a larger rectangle, falling.
    std::span<const qint32> longRuns;
    /// Steps that a search for long runs may take for each element before the rectangle counts as repetitive.
    qint64 stepsPerElement = 16;
    /// The candidates of one length are put into order by marks instead of by sorting when there are more than one in
    /// so many elements.
    qint64 markShare = 8;
    /// Rounds in a row that may leave nearly all of a rectangle in one part before the lengths are taken in a cascade.
    qint32 lopsidedRounds = 3;
};

[[nodiscard]] const MatchTuning &defaultMatchTuning();

} // namespace velmora
