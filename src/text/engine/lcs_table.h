#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

namespace velmora {

struct MatchPair;

/// A longest common subsequence of two sequences of any values. Of several, the one found from the ends: equal last
/// elements are a pair; otherwise the last element of `b` is dropped when that leaves as many pairs, else that of `a`.
///
/// Computes 64 cells of the table of lengths at once and keeps one bit of each (Hyyrö, "Bit-Parallel LCS-length
/// Computation Revisited", 2004): a·b/64 steps, a·b/8 bytes. For the small products that the
/// matcher's limits allow, so it is not to be interrupted.
[[nodiscard]] std::vector<MatchPair> longestCommonSubsequence(std::span<const qint32> a, std::span<const qint32> b);

} // namespace velmora
