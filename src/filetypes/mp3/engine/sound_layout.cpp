#include "filetypes/mp3/engine/sound_layout.h"

#include "core/message_digest.h"
#include "filetypes/mp3/engine/flac_frames.h"
#include "filetypes/mp3/engine/mp4_boxes.h"
#include "filetypes/mp3/engine/ogg_pages.h"
#include "filetypes/mp3/engine/riff_chunks.h"
#include "filetypes/mp3/engine/tag_borders.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace velmora {

namespace {

SoundLayout failed(SoundFormat format, SoundFault fault)
{
    SoundLayout layout;
    layout.format = format;
    layout.fault = fault;
    return layout;
}

/// The number of comments in a block of Vorbis comments: the name of the encoder stands before it.
quint64 commentCount(SoundBytes &bytes, qint64 at)
{
    const quint64 vendor = littleEndian(bytes.at(at, 4), 0, 4);
    return littleEndian(bytes.at(at + 4 + qint64(vendor), 4), 0, 4);
}

FlacStream streamOf(QByteArrayView info)
{
    constexpr quint64 sampleBits = 36;
    const auto least = int(bigEndian(info, 0, 2));
    FlacStream stream;
    stream.blockSize = least == int(bigEndian(info, 2, 2)) ? least : 0;
    stream.mostFrameSize = qint64(bigEndian(info, 7, 3));
    stream.samples = qint64(bigEndian(info, 10, 8) & ((quint64(1) << sampleBits) - 1));
    return stream;
}

SoundLayout findFlac(SoundBytes &bytes, qint64 begin, const CancelFlag &cancel)
{
    enum Block : quint8 { StreamInfo = 0, Comments = 4 };
    constexpr qint64 md5At = 18;
    constexpr int md5Length = 16;
    constexpr int mostBlocks = 4096;
    SoundLayout layout;
    layout.format = SoundFormat::Flac;
    FlacStream stream;
    qint64 at = begin + 4;
    bool isLast = false;
    for (int count = 0; !isLast && !cancel.isCancelled(); ++count) {
        const quint64 head = bigEndian(bytes.at(at, 4), 0, 4);
        const auto kind = quint8(head >> 24 & 0x7f);
        const auto length = qint64(head & 0xffffff);
        if (at + 4 + length > bytes.size() || (count == 0) != (kind == StreamInfo))
            return failed(SoundFormat::Flac, SoundFault::Damaged);
        if (count == mostBlocks || at - begin > mostTagBytes ||
            (kind == Comments && commentCount(bytes, at + 4) > mostTagParts))
            return failed(SoundFormat::Flac, SoundFault::TooLarge);
        if (kind == StreamInfo) {
            stream = streamOf(bytes.at(at + 4, length));
            const QByteArray md5 = bytes.at(at + 4 + md5At, md5Length).toByteArray();
            if (md5 != QByteArray(md5Length, '\0'))
                layout.samplesHash = md5;
        }
        isLast = (head >> 31) != 0;
        at += 4 + length;
    }
    const qint64 end = std::max(at, tagsBehind(bytes));
    layout.sound = {{at, end - at}};
    layout.isCutOff = flacIsCutOff(bytes, at, end, stream);
    return layout;
}

SoundLayout findMpeg(SoundBytes &bytes, qint64 begin, const CancelFlag &cancel)
{
    const qint64 end = tagsBehind(bytes);
    SoundLayout layout;
    layout.mpeg = findMpegFrames(bytes, begin, end, cancel);
    if (!layout.mpeg)
        return failed(SoundFormat::Mpeg, begin > 0 || end < bytes.size() ? SoundFault::Damaged : SoundFault::NoSound);
    layout.sound = {layout.mpeg->range};
    layout.damagedPlaces = layout.mpeg->damagedPlaces;
    const std::optional<MpegStreamInfo> &info = layout.mpeg->info;
    layout.isCutOff = layout.mpeg->isCutOff || (info && info->frames > layout.mpeg->frames);
    return layout;
}

} // namespace

qint64 SoundLayout::soundSize() const
{
    qint64 size = 0;
    for (const SoundRange &range : sound)
        size += range.length;
    return size;
}

SoundLayout findSound(SoundBytes &bytes, const CancelFlag &cancel)
{
    if (bytes.size() > std::numeric_limits<qint32>::max())
        return failed(SoundFormat::Mpeg, SoundFault::TooLarge);
    const qint64 begin = tagsBefore(bytes);
    if (begin > mostTagBytes || tagsAreOversized(bytes))
        return failed(SoundFormat::Mpeg, SoundFault::TooLarge);
    const QByteArray head = bytes.at(begin, 12).toByteArray();
    if (head.startsWith("fLaC"))
        return findFlac(bytes, begin, cancel);
    if (begin == 0 && head.startsWith("OggS"))
        return findOgg(bytes, cancel);
    if (begin == 0 && head.sliced(std::min<qsizetype>(4, head.size())).startsWith("ftyp"))
        return findMp4(bytes, cancel);
    const QByteArray form = head.mid(8);
    if (begin == 0 && head.startsWith("RIFF") && form == "WAVE")
        return findRiff(bytes, false, cancel);
    if (begin == 0 && head.startsWith("FORM") && (form == "AIFF" || form == "AIFC"))
        return findRiff(bytes, true, cancel);
    return findMpeg(bytes, begin, cancel);
}

QByteArray hashOfSound(SoundBytes &bytes, const SoundLayout &layout, const CancelFlag &cancel)
{
    MessageDigest digest(MessageDigest::Kind::Sha256);
    for (const SoundRange &range : layout.sound) {
        for (qint64 done = 0; done < range.length;) {
            const QByteArrayView piece = bytes.at(range.at + done, range.length - done);
            if (piece.isEmpty() || cancel.isCancelled())
                return {};
            digest.update(piece);
            done += piece.size();
        }
    }
    digest.update(layout.arrangement);
    return digest.value();
}

} // namespace velmora
