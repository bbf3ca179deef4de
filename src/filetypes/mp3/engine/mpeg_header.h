#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace velmora {

/// The four bytes that every frame of MPEG audio begins with (ISO 11172-3, 2.4.2.3, and ISO 13818-3; version 2.5 is an
/// extension for low sampling rates).
struct MpegHeader {
    enum class Version : quint8 { One, Two, TwoAndHalf };

    Version version = Version::One;
    int layer = 3;       ///< 1 to 3
    int bitRate = 0;     ///< kilobits a second
    int sampleRate = 0;  ///< hertz
    int channelMode = 0; ///< 0 stereo, 1 joint stereo, 2 two channels, 3 mono
    bool isPadded = false;

    /// The bytes of the frame with its header.
    [[nodiscard]] int size() const;
    /// The samples of each channel in it.
    [[nodiscard]] int samples() const;
    /// Whether a frame of `other` can follow one of this: what does not change within a stream is the same.
    [[nodiscard]] bool agreesWith(const MpegHeader &other) const;
};

/// Nothing for what is no header, or one without a rate ("free format").
[[nodiscard]] std::optional<MpegHeader> readMpegHeader(QByteArrayView bytes);

/// What an encoder says of the whole stream in the first frame, which then has no sound: the headers "Xing" and "Info"
/// with their extension by LAME, and "VBRI".
struct MpegStreamInfo {
    enum class Rate : quint8 { Unknown, Constant, Average, Variable };

    Rate rate = Rate::Unknown;
    qint64 frames = -1; ///< without this one; -1 where it does not say
    qint64 bytes = -1;
    QString encoder; ///< "LAME3.100", empty where it does not say
    int delay = -1;  ///< samples that the encoder has put before the sound and behind it; -1 where it does not say
    int padding = -1;
};

/// `frame`: the bytes of the frame with its header; fewer than there should be are no fault.
[[nodiscard]] std::optional<MpegStreamInfo> readMpegStreamInfo(QByteArrayView frame, const MpegHeader &header);

} // namespace velmora
