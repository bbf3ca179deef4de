#pragma once

#include "text/engine/block_chain.h"
#include "text/engine/cancel_poll.h"
#include "text/engine/match_input.h"

namespace velmora {

/// Matches two sequences by their longest common block, and then alike before and after it.
///
/// Of several longest blocks the one that starts first in the first sequence is taken, of these the one that starts
/// first in the second. The blocks end up in `chain`; they are a common subsequence, not always the longest. About
/// linear in time whatever the input repeats. What `chain` holds is meaningless when `poll` has stopped.
void matchBlocks(const MatchInput &input, const MatchTuning &tuning, BlockChain &chain, CancelPoll &poll);

} // namespace velmora
