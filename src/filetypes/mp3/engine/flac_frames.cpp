#include "filetypes/mp3/engine/flac_frames.h"

#include <algorithm>
#include <bit>
#include <optional>

namespace velmora {

namespace {

/// A cyclic redundancy check whose bits are taken highest first and that begins with 0.
template <typename Number>
Number checkOf(QByteArrayView bytes, Number polynomial)
{
    constexpr int width = 8 * int(sizeof(Number));
    Number check = 0;
    for (const char byte : bytes) {
        check = Number(check ^ Number(Number(quint8(byte)) << (width - 8)));
        for (int bit = 0; bit < 8; ++bit)
            check = Number((check >> (width - 1)) != 0 ? (check << 1) ^ polynomial : check << 1);
    }
    return check;
}

struct FrameHeader {
    quint64 number = 0; ///< of the frame, or of its first sample
    bool countsSamples = false;
    qint64 samples = 0;
};

/// The bytes of a number that is coded as UTF-8 codes letters, up to 36 bits; 0 for none.
int numberLength(quint8 first)
{
    constexpr int longest = 7;
    const int ones = std::countl_one(first);
    if (ones == 0)
        return 1;
    return ones >= 2 && ones <= longest ? ones : 0;
}

std::optional<FrameHeader> readHeader(QByteArrayView bytes)
{
    constexpr qsizetype most = 16;
    if (bytes.size() < most || quint8(bytes[0]) != 0xff || (quint8(bytes[1]) & 0xfe) != 0xf8)
        return std::nullopt;
    const int sizeCode = quint8(bytes[2]) >> 4;
    const int rateCode = quint8(bytes[2]) & 0x0f;
    const int length = numberLength(quint8(bytes[4]));
    if (sizeCode == 0 || rateCode == 15 || length == 0)
        return std::nullopt;
    FrameHeader header;
    header.countsSamples = (quint8(bytes[1]) & 1) != 0;
    header.number = length == 1 ? quint8(bytes[4]) : quint8(bytes[4]) & (0x7fU >> length);
    qsizetype at = 5;
    for (int k = 1; k < length; ++k)
        header.number = header.number << 6 | (quint8(bytes[at++]) & 0x3fU);
    constexpr int inOneByte = 6;
    constexpr int inTwoBytes = 7;
    if (sizeCode == inOneByte || sizeCode == inTwoBytes) {
        const int sizeLength = sizeCode - inOneByte + 1;
        header.samples = qint64(bigEndian(bytes, at, sizeLength)) + 1;
        at += sizeLength;
    } else if (sizeCode == 1) {
        header.samples = 192;
    } else {
        header.samples = sizeCode < 6 ? qint64(144) << sizeCode : qint64(1) << sizeCode;
    }
    at += rateCode == 12 ? 1 : rateCode == 13 || rateCode == 14 ? 2 : 0;
    return checkOf<quint8>(bytes.first(at), 0x07) == quint8(bytes[at]) ? std::optional(header) : std::nullopt;
}

bool isLast(const FrameHeader &header, const FlacStream &stream)
{
    if (stream.samples == 0 || (!header.countsSamples && stream.blockSize == 0))
        return true; // nothing tells
    const quint64 first = header.countsSamples ? header.number : header.number * quint64(stream.blockSize);
    return qint64(first) + header.samples >= stream.samples;
}

} // namespace

bool flacIsCutOff(SoundBytes &bytes, qint64 begin, qint64 end, const FlacStream &stream)
{
    constexpr qint64 checkLength = 2;
    const qint64 room = stream.mostFrameSize > 0 ? std::min(stream.mostFrameSize, SoundBytes::most) : SoundBytes::most;
    const qint64 from = std::max(begin, end - room);
    const QByteArray tail = bytes.at(from, end - from).toByteArray();
    for (qsizetype at = tail.lastIndexOf('\xff'); at >= 0; at = at > 0 ? tail.lastIndexOf('\xff', at - 1) : -1) {
        const QByteArrayView frame = QByteArrayView(tail).sliced(at);
        // Enough behind it, as no frame is as short as the longest header.
        const std::optional<FrameHeader> header = readHeader(frame);
        if (header && checkOf<quint16>(frame.chopped(checkLength), 0x8005) ==
                          quint16(bigEndian(frame, frame.size() - checkLength, int(checkLength))))
            return !isLast(*header, stream);
    }
    return true;
}

} // namespace velmora
