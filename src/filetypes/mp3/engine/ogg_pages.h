#pragma once

#include "filetypes/mp3/engine/sound_layout.h"

namespace velmora {

/// Finds the packets of an Ogg file (RFC 3533) that are not tags: what the format of each stream says of itself in its
/// first packet, what decoders need to know, and the sound.
[[nodiscard]] SoundLayout findOgg(SoundBytes &bytes, const CancelFlag &cancel);

} // namespace velmora
