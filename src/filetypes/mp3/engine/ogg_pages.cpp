#include "filetypes/mp3/engine/ogg_pages.h"

#include <QHash>

#include <algorithm>
#include <optional>
#include <utility>

namespace velmora {

namespace {

constexpr qint64 pageHeaderLength = 27;
constexpr qint64 mostStreams = 64; // one for each piece of a chain of songs

/// One of the streams that the pages of a file belong to.
struct Stream {
    qint64 packets = 0;    ///< complete ones
    qint64 tagPackets = 1; ///< those behind the first that hold tags
    qint64 tagBytes = 0;
};

std::optional<SoundFormat> formatOf(QByteArrayView firstPacket)
{
    if (firstPacket.startsWith("\x01vorbis"))
        return SoundFormat::OggVorbis;
    if (firstPacket.startsWith("OpusHead"))
        return SoundFormat::OggOpus;
    if (firstPacket.startsWith("\x7f"
                               "FLAC"))
        return SoundFormat::OggFlac;
    if (firstPacket.startsWith("Speex   "))
        return SoundFormat::OggSpeex;
    return std::nullopt;
}

class PageWalk {
public:
    PageWalk(SoundBytes &bytes, SoundLayout &layout) : m_bytes(bytes), m_layout(layout) {}

    void run(const CancelFlag &cancel)
    {
        qint64 at = 0;
        while (at < m_bytes.size() && m_layout.ok() && !cancel.isCancelled()) {
            const qint64 length = takePage(at);
            if (length > 0) {
                at += length;
                continue;
            }
            at = nextPage(at + 1);
            if (at < m_bytes.size())
                ++m_layout.damagedPlaces;
        }
        if (!m_hasFormat && m_layout.ok())
            m_layout.fault = SoundFault::Damaged;
    }

private:
    qint64 nextPage(qint64 at)
    {
        constexpr qint64 step = 4096;
        while (at < m_bytes.size()) {
            const QByteArrayView piece = m_bytes.at(at, step + 3);
            const qsizetype hit = piece.indexOf("OggS");
            if (hit >= 0)
                return at + hit;
            at += step;
        }
        return m_bytes.size();
    }

    /// The length of the page there, 0 where there is none.
    qint64 takePage(qint64 at)
    {
        const QByteArray header = m_bytes.at(at, pageHeaderLength + 255).toByteArray();
        if (header.size() < pageHeaderLength || !header.startsWith("OggS") || header[4] != 0)
            return 0;
        const qint64 segments = quint8(header[pageHeaderLength - 1]);
        const qint64 bodyAt = pageHeaderLength + segments;
        if (header.size() < bodyAt)
            return 0;
        const auto serial = quint32(littleEndian(header, 14, 4));
        if (!m_streams.contains(serial) && m_streams.size() == mostStreams) {
            m_layout.fault = SoundFault::TooLarge;
            return 0;
        }
        qint64 length = 0;
        for (qint64 k = 0; k < segments; ++k)
            length += quint8(header[pageHeaderLength + k]);
        constexpr quint8 lastOfStream = 4;
        m_layout.isCutOff = at + bodyAt + length > m_bytes.size() || (quint8(header[5]) & lastOfStream) == 0;
        takePackets(m_streams[serial], at + bodyAt, QByteArrayView(header).sliced(pageHeaderLength, segments));
        return bodyAt + length;
    }

    /// A packet ends with the first segment of fewer than 255 bytes.
    void takePackets(Stream &stream, qint64 at, QByteArrayView segments)
    {
        qint64 begin = at;
        for (const char segment : segments) {
            at += quint8(segment);
            if (quint8(segment) == 255)
                continue;
            takePiece(stream, begin, at);
            ++stream.packets;
            begin = at;
        }
        takePiece(stream, begin, at);
    }

    void takePiece(Stream &stream, qint64 begin, qint64 end)
    {
        end = std::min(end, m_bytes.size());
        if (begin >= end)
            return;
        if (stream.packets == 0)
            learn(stream, m_bytes.at(begin, std::min<qint64>(end - begin, 16)));
        if (stream.packets > 0 && stream.packets <= stream.tagPackets) {
            stream.tagBytes += end - begin;
            if (stream.tagBytes > mostTagBytes)
                m_layout.fault = SoundFault::TooLarge;
            return;
        }
        if (!m_layout.sound.isEmpty() && m_layout.sound.last().at + m_layout.sound.last().length == begin)
            m_layout.sound.last().length += end - begin;
        else
            m_layout.sound.append({begin, end - begin});
    }

    void learn(Stream &stream, QByteArrayView firstPacket)
    {
        const std::optional<SoundFormat> format = formatOf(firstPacket);
        if (!format)
            return;
        // FLAC says there how many packets of its metadata follow; 0 leaves it open.
        if (*format == SoundFormat::OggFlac)
            stream.tagPackets = std::max<qint64>(1, qint64(bigEndian(firstPacket, 7, 2)));
        if (!std::exchange(m_hasFormat, true))
            m_layout.format = *format;
    }

    SoundBytes &m_bytes;
    SoundLayout &m_layout;
    QHash<quint32, Stream> m_streams;
    bool m_hasFormat = false;
};

} // namespace

SoundLayout findOgg(SoundBytes &bytes, const CancelFlag &cancel)
{
    SoundLayout layout;
    layout.format = SoundFormat::OggVorbis;
    PageWalk(bytes, layout).run(cancel);
    return layout;
}

} // namespace velmora
