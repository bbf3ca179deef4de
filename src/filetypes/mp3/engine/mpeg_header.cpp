#include "filetypes/mp3/engine/mpeg_header.h"

#include "filetypes/mp3/engine/sound_bytes.h"

#include <array>

namespace velmora {

namespace {

/// Kilobits a second by the index in the header: layers 1 to 3 of version 1, then layer 1 and layers 2 and 3 of the
/// others.
constexpr std::array<std::array<int, 15>, 5> bitRates{
    {{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
     {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
     {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
     {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
     {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}}};

constexpr std::array sampleRates{44100, 48000, 32000};

/// What stands between the frame's header and the headers of encoders: the side information of a frame without sound.
int sideInformation(const MpegHeader &header)
{
    const bool isMono = header.channelMode == 3;
    if (header.version == MpegHeader::Version::One)
        return isMono ? 17 : 32;
    return isMono ? 9 : 17;
}

MpegStreamInfo::Rate lameRate(int method)
{
    switch (method) {
    case 1:
    case 8: // in two passes, as below
        return MpegStreamInfo::Rate::Constant;
    case 2:
    case 9:
        return MpegStreamInfo::Rate::Average;
    default:
        return method >= 3 && method <= 6 ? MpegStreamInfo::Rate::Variable : MpegStreamInfo::Rate::Unknown;
    }
}

/// LAME's extension: nine letters, then among others how rates were chosen and both gaps.
void readLame(QByteArrayView lame, MpegStreamInfo &info)
{
    constexpr qsizetype nameLength = 9;
    constexpr qsizetype gapsAt = 21;
    if (lame.size() < gapsAt + 3)
        return;
    for (const char letter : lame.first(nameLength)) {
        if (letter >= ' ' && letter <= '~')
            info.encoder += QLatin1Char(letter);
    }
    info.encoder = info.encoder.trimmed();
    if (info.encoder.isEmpty())
        return;
    const MpegStreamInfo::Rate rate = lameRate(quint8(lame[nameLength]) & 0x0f);
    if (rate != MpegStreamInfo::Rate::Unknown)
        info.rate = rate;
    const quint64 gaps = bigEndian(lame, gapsAt, 3);
    info.delay = int(gaps >> 12);
    info.padding = int(gaps & 0xfff);
}

std::optional<MpegStreamInfo> readXing(QByteArrayView bytes)
{
    const bool isConstant = bytes.startsWith("Info");
    if (!isConstant && !bytes.startsWith("Xing"))
        return std::nullopt;
    MpegStreamInfo info;
    info.rate = isConstant ? MpegStreamInfo::Rate::Constant : MpegStreamInfo::Rate::Variable;
    enum Part : quint64 { Frames = 1, Bytes = 2, Table = 4, Quality = 8 };
    const quint64 parts = bigEndian(bytes, 4, 4);
    qsizetype at = 8;
    const auto number = [&] {
        at += 4;
        return bytes.size() >= at ? qint64(bigEndian(bytes, at - 4, 4)) : -1;
    };
    if ((parts & Frames) != 0)
        info.frames = number();
    if ((parts & Bytes) != 0)
        info.bytes = number();
    if ((parts & Table) != 0)
        at += 100;
    if ((parts & Quality) != 0)
        at += 4;
    if (at < bytes.size())
        readLame(bytes.sliced(at), info);
    return info;
}

std::optional<MpegStreamInfo> readVbri(QByteArrayView bytes)
{
    constexpr qsizetype length = 18;
    if (!bytes.startsWith("VBRI") || bytes.size() < length)
        return std::nullopt;
    MpegStreamInfo info;
    info.rate = MpegStreamInfo::Rate::Variable;
    info.bytes = qint64(bigEndian(bytes, 10, 4));
    info.frames = qint64(bigEndian(bytes, 14, 4));
    return info;
}

} // namespace

int MpegHeader::samples() const
{
    if (layer == 1)
        return 384;
    return layer == 3 && version != Version::One ? 576 : 1152;
}

int MpegHeader::size() const
{
    const int slots = samples() / 8 * bitRate * 1000 / sampleRate;
    if (layer == 1)
        return (slots / 4 + (isPadded ? 1 : 0)) * 4;
    return slots + (isPadded ? 1 : 0);
}

bool MpegHeader::agreesWith(const MpegHeader &other) const
{
    return version == other.version && layer == other.layer && sampleRate == other.sampleRate;
}

std::optional<MpegHeader> readMpegHeader(QByteArrayView bytes)
{
    constexpr quint64 sync = 0x7ff;
    const quint64 word = bigEndian(bytes, 0, 4);
    const auto bits = [word](int shift, quint64 mask) { return word >> shift & mask; };
    const quint64 version = bits(19, 3); // 1 stands for none, as 0 does for the layer
    const quint64 layer = bits(17, 3);
    const quint64 rate = bits(12, 15);
    const quint64 sampling = bits(10, 3);
    if (bits(21, sync) != sync || version == 1 || layer == 0 || rate == 0 || rate == 15 || sampling == 3)
        return std::nullopt;
    MpegHeader header;
    header.version = version == 3   ? MpegHeader::Version::One
                     : version == 2 ? MpegHeader::Version::Two
                                    : MpegHeader::Version::TwoAndHalf;
    header.layer = int(4 - layer);
    const int row = header.version == MpegHeader::Version::One ? header.layer - 1 : header.layer == 1 ? 3 : 4;
    header.bitRate = bitRates[std::size_t(row)][std::size_t(rate)];
    header.sampleRate = sampleRates[std::size_t(sampling)] >> int(header.version);
    header.isPadded = bits(9, 1) != 0;
    header.channelMode = int(bits(6, 3));
    return header;
}

std::optional<MpegStreamInfo> readMpegStreamInfo(QByteArrayView frame, const MpegHeader &header)
{
    constexpr qsizetype headerLength = 4;
    constexpr qsizetype vbriAt = 36; // whatever the side information is
    const qsizetype at = headerLength + sideInformation(header);
    if (at < frame.size()) {
        if (const std::optional<MpegStreamInfo> info = readXing(frame.sliced(at)))
            return info;
    }
    return vbriAt < frame.size() ? readVbri(frame.sliced(vbriAt)) : std::nullopt;
}

} // namespace velmora
