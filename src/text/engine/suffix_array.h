#pragma once

#include "text/engine/cancel_poll.h"

#include <QtGlobal>

#include <span>
#include <vector>

namespace velmora {

/// The starts of the suffixes of `text` in lexicographic order, a suffix before every longer one that it begins.
///
/// Linear in time whatever the text, by induced sorting (Nong, Zhang and Chan, "Linear Suffix Array Construction by
/// Almost Pure Induced-Sorting", 2009). Values are 0 … alphabet-1. Meaningless when `poll` has stopped.
[[nodiscard]] std::vector<qint32> suffixArray(std::span<const qint32> text, qint32 alphabet, CancelPoll &poll);

/// For each place in `suffixes` how many elements the suffix there has in common with the one before it; 0 at the
/// first.
///
/// Linear in time (Kärkkäinen, Manzini and Puglisi, "Permuted Longest-Common-Prefix Array", 2009). Meaningless when
/// `poll` has stopped.
[[nodiscard]] std::vector<qint32> commonPrefixes(std::span<const qint32> text, std::span<const qint32> suffixes,
                                                 CancelPoll &poll);

} // namespace velmora
