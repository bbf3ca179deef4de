#pragma once

#include "filetypes/mp3/engine/sound_bytes.h"

namespace velmora {

/// Where what follows the ID3v2 tags at the beginning of a file begins; 0 without one. A tag that says it is longer
/// than the file leads to its end.
[[nodiscard]] qint64 tagsBefore(SoundBytes &bytes);

/// Where the tags at the end of a file begin (ID3v1 with its extension, APE, Lyrics3); the size of the file without
/// any.
[[nodiscard]] qint64 tagsBehind(SoundBytes &bytes);

/// Whether an APE tag at the end says that it has more, or takes more, than tags may.
[[nodiscard]] bool tagsAreOversized(SoundBytes &bytes);

} // namespace velmora
