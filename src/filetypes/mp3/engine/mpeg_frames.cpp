#include "filetypes/mp3/engine/mpeg_frames.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr qint64 headerLength = 4;
/// Chance makes two frames of other data often enough that a third is asked for.
constexpr int framesInRow = 3;
/// Of what is looked through for the first byte of a frame.
constexpr qint64 pieceLength = 4096;

class FrameWalk {
public:
    FrameWalk(SoundBytes &bytes, qint64 end) : m_bytes(bytes), m_end(end) {}

    std::optional<MpegFrames> run(qint64 begin, const CancelFlag &cancel)
    {
        const qint64 first = findRow(begin, std::min(m_end, begin + SoundBytes::most), std::nullopt);
        if (first < 0)
            return std::nullopt;
        m_found.first = *headerAt(first);
        m_found.range.at = first;
        qint64 at = first;
        while (at >= 0 && at < m_end) {
            if (cancel.isCancelled())
                return std::nullopt;
            at = step(at);
        }
        return m_found;
    }

private:
    std::optional<MpegHeader> headerAt(qint64 at)
    {
        return at + headerLength <= m_end ? readMpegHeader(m_bytes.at(at, headerLength)) : std::nullopt;
    }

    /// Whether frames that agree follow each other from `at` on.
    bool isRow(qint64 at, std::optional<MpegHeader> like)
    {
        for (int k = 0; k < framesInRow; ++k) {
            if (k > 0 && at == m_end)
                return true;
            const std::optional<MpegHeader> header = headerAt(at);
            if (!header || (like && !like->agreesWith(*header)))
                return false;
            like = header;
            at += header->size();
            if (at > m_end)
                return k > 0;
        }
        return true;
    }

    /// The first place of such a row; -1 when there is none that begins before `limit`.
    qint64 findRow(qint64 from, qint64 limit, const std::optional<MpegHeader> &like)
    {
        while (from < limit) {
            const QByteArrayView piece = m_bytes.at(from, std::min(limit - from, pieceLength));
            const qsizetype hit = piece.indexOf('\xff');
            if (hit < 0) {
                if (piece.isEmpty())
                    return -1;
                from += piece.size();
                continue;
            }
            from += hit;
            if (isRow(from, like))
                return from;
            ++from;
        }
        return -1;
    }

    /// Takes the frame at `at`, or passes over what is none; returns where to go on, -1 at the end.
    qint64 step(qint64 at)
    {
        const std::optional<MpegHeader> header = headerAt(at);
        if (!header || !header->agreesWith(m_found.first)) {
            const qint64 next = findRow(at + 1, m_end, m_found.first);
            if (next >= 0)
                ++m_found.damagedPlaces;
            return next;
        }
        const qint64 next = at + header->size();
        take(at, *header);
        m_found.isCutOff = next > m_end;
        m_found.range.length = std::max<qint64>(0, std::min(next, m_end) - m_found.range.at);
        return next;
    }

    void take(qint64 at, const MpegHeader &header)
    {
        if (m_found.frames == 0 && !m_found.info) {
            m_found.info = readMpegStreamInfo(m_bytes.at(at, std::min<qint64>(header.size(), m_end - at)), header);
            if (m_found.info) {
                m_found.range.at += header.size();
                return;
            }
        }
        if (m_found.frames > 0 && header.bitRate != m_lastRate)
            m_found.hasOneRate = false;
        m_lastRate = header.bitRate;
        ++m_found.frames;
        m_found.samples += header.samples();
        m_found.soundBytes += std::min<qint64>(header.size(), m_end - at);
    }

    SoundBytes &m_bytes;
    qint64 m_end;
    MpegFrames m_found;
    int m_lastRate = 0;
};

} // namespace

std::optional<MpegFrames> findMpegFrames(SoundBytes &bytes, qint64 begin, qint64 end, const CancelFlag &cancel)
{
    return FrameWalk(bytes, std::min(end, bytes.size())).run(begin, cancel);
}

} // namespace velmora
