#pragma once

#include "filetypes/version/engine/pe_image.h"
#include "filetypes/version/engine/program_facts.h"

namespace velmora {

/// One resource of an image.
struct PeResource {
    qint64 at = 0; ///< in the file
    quint32 size = 0;
};

enum class PeResourceType : quint8 { Version = 16, Manifest = 24 };

/// The resources of that type, in all languages. What is wrong with their tables is noted in `facts`.
[[nodiscard]] QList<PeResource> resourcesOf(const PeImage &image, PeResourceType type, ProgramFacts &facts);

/// Adds what a version resource (VS_VERSIONINFO) says: the fixed numbers, where no other has said them, every string of
/// every language, and the languages.
void readVersionResource(const ProgramBytes &bytes, const PeResource &resource, ProgramFacts &facts);

} // namespace velmora
