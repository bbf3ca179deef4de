#pragma once

#include <QByteArray>
#include <QtEndian>

#include <algorithm>

namespace velmora::test {

inline QByteArray bigNumber(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

inline QByteArray synchSafe(qsizetype number)
{
    QByteArray bytes;
    for (int shift = 21; shift >= 0; shift -= 7)
        bytes += char(number >> shift & 0x7f);
    return bytes;
}

/// A frame of MPEG 1 layer III in joint stereo at 44,100 Hz; `index`: 9 for 128 kbit/s, 11 for 192.
inline QByteArray madeFrame(int index = 9, char fill = 0x11)
{
    const int rate = index == 9 ? 128 : 192;
    return QByteArray("\xff\xfb") + char(index << 4) + char(0x40) + QByteArray(144 * rate * 1000 / 44100 - 4, fill);
}

/// The first frame as encoders write it, with so many frames said to follow.
inline QByteArray madeInfoFrame(quint32 frames)
{
    QByteArray frame = madeFrame(9, '\0');
    const QByteArray info = QByteArray("Info") + bigNumber(3) + bigNumber(frames) + bigNumber(frames * 417) +
                            "LAME3.100" + '\x02' + QByteArray(11, '\0') + QByteArray("\x24\x04\x51", 3);
    return frame.replace(36, info.size(), info);
}

inline QByteArray madeSound(int frames = 10)
{
    QByteArray sound = madeInfoFrame(quint32(frames));
    for (int k = 0; k < frames; ++k)
        sound += madeFrame(9, char('a' + k % 16));
    return sound;
}

/// A frame of ID3v2; sizes below 128 are the same in versions 2.3 and 2.4.
inline QByteArray id3Frame(const char *name, const QByteArray &contents, quint8 format = 0)
{
    return QByteArray(name) + bigNumber(quint32(contents.size())) + '\0' + char(format) + contents;
}

inline QByteArray id3Text(const char *name, const QByteArray &text)
{
    return id3Frame(name, '\0' + text);
}

inline QByteArray id3v2(int minor, const QByteArray &frames)
{
    return QByteArray("ID3") + char(minor) + QByteArray(2, '\0') + synchSafe(frames.size()) + frames;
}

inline QByteArray id3v1(const QByteArray &title, const QByteArray &artist)
{
    return "TAG" + title.leftJustified(30, '\0') + artist.leftJustified(30, '\0') + QByteArray(30, '\0') + "1999" +
           QByteArray(28, '\0') + QByteArray(1, '\0') + '\x07' + '\x11';
}

inline QByteArray littleNumber(quint32 number)
{
    QByteArray bytes = bigNumber(number);
    std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

inline QByteArray apeTag(const QByteArray &key, const QByteArray &value, quint32 items = 1)
{
    const QByteArray item = littleNumber(quint32(value.size())) + littleNumber(0) + key + '\0' + value;
    return item + "APETAGEX" + littleNumber(2000) + littleNumber(quint32(item.size() + 32)) + littleNumber(items) +
           QByteArray(12, '\0');
}

/// The check that FLAC has for headers and frames, bit by bit.
inline quint32 flacCheck(const QByteArray &bytes, quint32 polynomial, int width)
{
    quint32 check = 0;
    for (const char byte : bytes) {
        for (int bit = 7; bit >= 0; --bit) {
            const quint32 out = (check >> (width - 1) & 1) ^ (quint32(quint8(byte)) >> bit & 1);
            check = ((check << 1) ^ (out != 0 ? polynomial : 0)) & ((1U << width) - 1);
        }
    }
    return check;
}

/// The first frame of FLAC, of 4096 samples that nobody could decode.
inline QByteArray flacFrame(const QByteArray &contents)
{
    QByteArray frame = QByteArray("\xff\xf8\xc9\x18\0", 5);
    frame += char(flacCheck(frame, 0x07, 8));
    frame += contents + QByteArray(12, 'f');
    return frame + bigNumber(flacCheck(frame, 0x8005, 16)).right(2);
}

/// A FLAC file with one Vorbis comment that says how many frames it has, of which the first is there.
inline QByteArray madeFlac(const QByteArray &comment, const QByteArray &sound = "sound", char md5 = 'm', int frames = 1)
{
    const QByteArray stream = QByteArray("\x10\x00\x10\x00", 4) + QByteArray(6, '\0') +
                              QByteArray("\x0a\xc4\x42\xf0", 4) + bigNumber(quint32(frames * 4096)) +
                              QByteArray(16, md5);
    const QByteArray comments =
        littleNumber(4) + "made" + littleNumber(1) + littleNumber(quint32(comment.size())) + comment;
    return "fLaC" + bigNumber(quint32(stream.size())) + stream + bigNumber(0x84000000 | quint32(comments.size())) +
           comments + flacFrame(sound);
}

inline QByteArray mp4Box(const char *name, const QByteArray &contents)
{
    return bigNumber(quint32(contents.size() + 8)) + name + contents;
}

/// An MP4 file whose only chunk is where it says.
inline QByteArray madeMp4(const QByteArray &padding = {}, int offsetError = 0)
{
    const QByteArray brand = mp4Box("ftyp", "M4A " + QByteArray(4, '\0'));
    const auto movie = [&](quint32 chunk) {
        return mp4Box("moov",
                      mp4Box("trak",
                             mp4Box("mdia", mp4Box("minf", mp4Box("stbl", mp4Box("stco", bigNumber(0) + bigNumber(1) +
                                                                                             bigNumber(chunk))))))) +
               mp4Box("free", padding);
    };
    const auto before = quint32(brand.size() + movie(0).size() + 8);
    return brand + movie(before + quint32(offsetError)) + mp4Box("mdat", "the sound");
}

/// A WAV file of 16 bits in stereo at 44,100 Hz; `more`: chunks behind its samples.
inline QByteArray madeWave(const QByteArray &samples, const QByteArray &more = {})
{
    const QByteArray chunks = "WAVEfmt " + littleNumber(16) + QByteArray("\1\0\2\0", 4) + littleNumber(44100) +
                              littleNumber(176400) + QByteArray("\4\0\x10\0", 4) + "data" +
                              littleNumber(quint32(samples.size())) + samples + more;
    return "RIFF" + littleNumber(quint32(chunks.size())) + chunks;
}

/// An AIFF file of 16 bits in stereo at 44,100 Hz.
inline QByteArray madeAiff(const QByteArray &samples)
{
    const QByteArray chunks = "AIFFCOMM" + bigNumber(18) + QByteArray("\0\2", 2) +
                              bigNumber(quint32(samples.size() / 4)) +
                              QByteArray("\0\x10\x40\x0e\xac\x44\0\0\0\0\0\0", 12) + "SSND" +
                              bigNumber(quint32(samples.size() + 8)) + QByteArray(8, '\0') + samples;
    return "FORM" + bigNumber(quint32(chunks.size())) + chunks;
}

/// A page of Ogg with one packet of fewer than 255 bytes, or the first or last part of one.
inline QByteArray oggPage(quint32 number, const QByteArray &packet, bool isLast = false)
{
    return QByteArray("OggS") + '\0' + (isLast ? '\4' : '\0') + QByteArray(8, '\0') + littleNumber(7) +
           littleNumber(number) + QByteArray(4, '\0') + '\x01' + char(packet.size()) + packet;
}

} // namespace velmora::test
