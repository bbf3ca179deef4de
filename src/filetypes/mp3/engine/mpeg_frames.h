#pragma once

#include "core/cancel_flag.h"
#include "filetypes/mp3/engine/mpeg_header.h"
#include "filetypes/mp3/engine/sound_bytes.h"

#include <optional>

namespace velmora {

/// The frames of a stream of MPEG audio.
struct MpegFrames {
    SoundRange range; ///< from the first frame with sound to the end of the last one, with what lies between
    MpegHeader first;
    std::optional<MpegStreamInfo> info; ///< of the first frame, which then counts for none
    qint64 frames = 0;
    qint64 samples = 0;
    qint64 soundBytes = 0; ///< of all frames
    bool hasOneRate = true;
    qint64 damagedPlaces = 0; ///< runs of bytes between frames that are none
    bool isCutOff = false;    ///< the last frame is not there to its end
};

/// Finds the frames between two places. The first one must lie within the first mebibyte there and be followed by two
/// others, or by the end. Nothing where there are none, or when `cancel` is set.
[[nodiscard]] std::optional<MpegFrames> findMpegFrames(SoundBytes &bytes, qint64 begin, qint64 end,
                                                       const CancelFlag &cancel);

} // namespace velmora
