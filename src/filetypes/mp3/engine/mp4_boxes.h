#pragma once

#include "filetypes/mp3/engine/sound_layout.h"

namespace velmora {

/// Finds the data of an MP4 file (ISO 14496-12), and which part of it is which chunk of sound.
[[nodiscard]] SoundLayout findMp4(SoundBytes &bytes, const CancelFlag &cancel);

} // namespace velmora
