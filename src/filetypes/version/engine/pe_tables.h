#pragma once

#include "filetypes/version/engine/pe_image.h"
#include "filetypes/version/engine/program_essence.h"
#include "filetypes/version/engine/program_facts.h"

namespace velmora {

// Each adds what a table of the image says; what is wrong with the table is noted in `facts`. `masked` takes the places
// of time stamps and the like, which are no contents.

/// The libraries and functions that are imported, at once and delayed.
void readImports(const PeImage &image, ProgramFacts &facts);
void readExports(const PeImage &image, ProgramFacts &facts, QList<ByteRange> &masked);
/// What tells a build to a debugger.
void readDebug(const PeImage &image, ProgramFacts &facts, QList<ByteRange> &masked);
/// The signature behind the image. Neither its bytes nor the header's entry for it are contents.
void readSignature(const PeImage &image, ProgramFacts &facts, QList<ByteRange> &masked);

} // namespace velmora
