#pragma once

#include "core/cancel_flag.h"
#include "filetypes/mp3/engine/mpeg_frames.h"
#include "filetypes/mp3/engine/sound_bytes.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace velmora {

/// The formats that are read, told by their contents.
enum class SoundFormat : quint8 { Mpeg, Flac, OggVorbis, OggOpus, OggFlac, OggSpeex, Mp4, Wav, Aiff };

/// Why the sound of a file was not found.
enum class SoundFault : quint8 {
    None,
    CannotOpen,
    NoSound,  ///< none of the formats
    Damaged,  ///< begins as one of them, and cannot be followed
    TooLarge, ///< of 2 GiB or more, or with tags made to exhaust the memory
};

/// What WAV and AIFF say of their sound; 0 where they do not.
struct WaveForm {
    bool isPcm = false; ///< samples as they are, not coded further
    int channels = 0;
    int sampleRate = 0; ///< hertz
    int sampleBits = 0;
    qint64 bytesPerSecond = 0;
    qint64 milliseconds = 0;
};

/// Where the sound of a file lies, and what lies around it is tags and the like.
struct SoundLayout {
    SoundFormat format = SoundFormat::Mpeg;
    SoundFault fault = SoundFault::None;
    QList<SoundRange> sound; ///< in their order in the file
    /// What else belongs to the sound and depends on no place in the file: of MP4 where each chunk lies in the data, of
    /// WAV and AIFF what their samples are.
    QByteArray arrangement;
    std::optional<MpegFrames> mpeg;
    std::optional<WaveForm> wave;
    /// The MD5 of the samples: of FLAC as the encoder has noted it, of WAV where FLAC would note the same; else empty.
    QByteArray samplesHash;
    qint64 damagedPlaces = 0; ///< where the structure had to be found again
    bool isCutOff = false;

    [[nodiscard]] bool ok() const noexcept { return fault == SoundFault::None; }
    [[nodiscard]] qint64 soundSize() const;
};

/// The most bytes that the tags of a file may take, and the most parts that they may be in: what is beyond that is made
/// to exhaust the memory.
inline constexpr qint64 mostTagBytes = qint64(64) << 20;
inline constexpr int mostTagParts = 20'000;

/// Finds the sound of a file. Cancelled, it may say anything.
[[nodiscard]] SoundLayout findSound(SoundBytes &bytes, const CancelFlag &cancel = {});

/// SHA-256 of the sound and its arrangement; empty when it could not be read.
[[nodiscard]] QByteArray hashOfSound(SoundBytes &bytes, const SoundLayout &layout, const CancelFlag &cancel = {});

} // namespace velmora
