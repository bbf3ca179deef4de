#pragma once

#include "filetypes/version/engine/pe_image.h"
#include "filetypes/version/engine/program_facts.h"

namespace velmora {

/// All that is known of a PE file but its size and hash.
[[nodiscard]] ProgramFacts readPeFacts(const PeImage &image);

/// The checksum that the header of such a file ought to have: the 16-bit words of the file added with their carries,
/// but for the checksum itself, and its length.
[[nodiscard]] quint32 peChecksum(const PeImage &image);

} // namespace velmora
