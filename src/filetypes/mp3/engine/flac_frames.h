#pragma once

#include "filetypes/mp3/engine/sound_bytes.h"

#include <QtGlobal>

namespace velmora {

/// What the stream information of a FLAC file says of its frames; 0 where it does not.
struct FlacStream {
    int blockSize = 0;        ///< samples of each frame but the last, where all have as many
    qint64 samples = 0;       ///< of each channel
    qint64 mostFrameSize = 0; ///< bytes
};

/// Whether the frames of FLAC (RFC 9639, section 9) between two places do not end with a whole frame, or one that is
/// not the last of the stream. What lies between the first and the last is not looked at.
[[nodiscard]] bool flacIsCutOff(SoundBytes &bytes, qint64 begin, qint64 end, const FlacStream &stream);

} // namespace velmora
