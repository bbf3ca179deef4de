#pragma once

#include "filetypes/mp3/engine/sound_bytes.h"

namespace velmora {

/// How many bytes at the end of the ID3v2 tag that a file begins with belong to no frame, as a frame before them is
/// damaged: nobody reads them. 0 for a whole tag, padding left out, and for none. The frames are those of ID3v2.2
/// (March 1998), 2.3 (February 1999) and 2.4 (November 2000).
[[nodiscard]] qint64 unreadTagBytes(SoundBytes &bytes);

} // namespace velmora
