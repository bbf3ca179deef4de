#pragma once

#include "filetypes/mp3/engine/sound_layout.h"

namespace velmora {

/// Finds the sound of a WAV file (chunks of "RIFF" with the form "WAVE") or an AIFF file ("FORM" with "AIFF" or
/// "AIFC"), and what it is. `isAiff`: which of both it is.
[[nodiscard]] SoundLayout findRiff(SoundBytes &bytes, bool isAiff, const CancelFlag &cancel);

} // namespace velmora
