#pragma once

#include "core/cancel_flag.h"
#include "filetypes/mp3/engine/song_field.h"
#include "filetypes/mp3/engine/sound_layout.h"
#include "filetypes/mp3/engine/tag_damage.h"

#include <QByteArray>
#include <QList>
#include <QString>

class QIODevice;

namespace velmora {

/// A song as it was read.
struct Song {
    SoundFormat format = SoundFormat::Mpeg;
    QList<SongField> facts; ///< of the sound and of the file; their keys are `factKey`s
    SongTags tags;
    QByteArray fileHash;    ///< SHA-256
    QByteArray soundHash;   ///< SHA-256 of the sound, whatever the tags and the notes of encoders say
    QByteArray samplesHash; ///< MD5 of the samples, as FLAC notes it; empty where it is not known
    qint64 milliseconds = -1;
    qint64 damagedPlaces = 0; ///< where the structure of the sound had to be found again
    bool isCutOff = false;
    QList<TagDamage> tagDamage;

    /// The value of a fact; empty where there is none.
    [[nodiscard]] QString fact(const char *key) const;
};

/// The keys of facts, which stay. All numbers are decimal.
namespace factKey {
inline constexpr const char *format = "format";         ///< "MPEG 1 Layer III", "FLAC", "Ogg Vorbis", ...
inline constexpr const char *length = "length";         ///< milliseconds
inline constexpr const char *bitRate = "bitRate";       ///< kilobits a second, on average
inline constexpr const char *rateMode = "rateMode";     ///< "CBR", "ABR" or "VBR"
inline constexpr const char *sampleRate = "sampleRate"; ///< hertz
inline constexpr const char *channels = "channels";
inline constexpr const char *channelMode = "channelMode"; ///< "stereo", "joint stereo", "dual channel", "mono"
inline constexpr const char *sampleBits = "sampleBits";
inline constexpr const char *encoder = "encoder";
inline constexpr const char *gaps = "encoderGaps"; ///< "576 + 1105": samples without sound before and behind it
inline constexpr const char *frames = "frames";
inline constexpr const char *declaredFrames = "declaredFrames"; ///< what the encoder says there are
inline constexpr const char *soundSize = "soundSize";           ///< bytes
inline constexpr const char *storedHash = "storedHash";
inline constexpr const char *soundHash = "soundHash";
inline constexpr const char *id3v2Version = "id3v2Version";
inline constexpr const char *fileSize = "fileSize";
inline constexpr const char *fileHash = "fileHash";
} // namespace factKey

/// A song, or why there is none.
struct SongReading {
    Song song;
    SoundFault fault = SoundFault::None;
    QString detail; ///< the system's own words
    [[nodiscard]] bool ok() const noexcept { return fault == SoundFault::None; }
};

/// Reads a song from a device that is open and can be sought. Cancelled, it may say anything.
[[nodiscard]] SongReading readSong(QIODevice &device, const CancelFlag &cancel = {});

/// The same with a file. What is no regular file is not opened.
[[nodiscard]] SongReading loadSong(const QString &path, const CancelFlag &cancel = {});

} // namespace velmora
