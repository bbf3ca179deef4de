#pragma once

#include "core/digest_rounds.h"

namespace velmora {

/// True when this processor computes rounds of SHA-1 and SHA-256 by instructions of its own; only then may the others
/// be called.
[[nodiscard]] bool hasShaInstructions() noexcept;

void sha1InstructionRounds(Sha1State &state, const unsigned char *blocks, std::size_t count) noexcept;
void sha256InstructionRounds(Sha256State &state, const unsigned char *blocks, std::size_t count) noexcept;

} // namespace velmora
