#include "filetypes/mp3/engine/riff_chunks.h"

#include "core/message_digest.h"

#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

constexpr qint64 chunkHeader = 8;

/// The number with 80 bits that AIFF has for its sampling rate (IEEE 754, extended); 0 for one that is none.
int extendedNumber(QByteArrayView bytes)
{
    constexpr int bias = 16383;
    constexpr int mantissaBits = 63;
    const int exponent = int(bigEndian(bytes, 0, 2) & 0x7fff) - bias - mantissaBits;
    const double number = std::ldexp(double(bigEndian(bytes, 2, 8)), exponent);
    constexpr double most = 1e9;
    return number >= 1 && number <= most ? int(std::lround(number)) : 0;
}

class ChunkWalk {
public:
    ChunkWalk(SoundBytes &bytes, SoundLayout &layout, bool isAiff) : m_bytes(bytes), m_layout(layout), m_isAiff(isAiff)
    {
        m_layout.format = isAiff ? SoundFormat::Aiff : SoundFormat::Wav;
        m_layout.wave = WaveForm();
    }

    void run(const CancelFlag &cancel)
    {
        constexpr qint64 fileHeader = 12;
        qint64 at = fileHeader;
        for (int count = 0; at + chunkHeader <= m_bytes.size() && m_layout.ok() && !cancel.isCancelled(); ++count) {
            const QByteArray name = m_bytes.at(at, 4).toByteArray();
            if (!isName(name)) {
                ++m_layout.damagedPlaces;
                break;
            }
            if (count == mostTagParts)
                m_layout.fault = SoundFault::TooLarge;
            at = take(name, at + chunkHeader, qint64(number(at + 4, 4)));
        }
        finish(cancel);
    }

private:
    [[nodiscard]] quint64 number(qint64 at, int length)
    {
        const QByteArrayView bytes = m_bytes.at(at, length);
        return m_isAiff ? bigEndian(bytes, 0, length) : littleEndian(bytes, 0, length);
    }

    static bool isName(QByteArrayView name)
    {
        return name.size() == 4 &&
               std::all_of(name.begin(), name.end(), [](char letter) { return letter >= ' ' && letter <= '~'; });
    }

    /// Takes a chunk and returns where the next one begins. Some writers leave out the byte that makes the length even.
    qint64 take(const QByteArray &name, qint64 at, qint64 length)
    {
        if (length > m_bytes.size() - at) {
            m_layout.isCutOff = true;
            length = m_bytes.size() - at;
        }
        const qint64 end = at + length;
        if (name == (m_isAiff ? "SSND" : "data"))
            takeSound(at, length);
        else if (name == (m_isAiff ? "COMM" : "fmt "))
            takeForm(at, length);
        else if (isTagChunk(name) && (length > mostTagBytes || (name == "LIST" && listLength(at, end) > mostTagParts)))
            m_layout.fault = SoundFault::TooLarge;
        const bool isPadded = end % 2 == 1 && (m_bytes.at(end, 1) == QByteArrayView("\0", 1) ||
                                               isName(m_bytes.at(end + 1, 4).toByteArray()));
        return end + (isPadded ? 1 : 0);
    }

    [[nodiscard]] bool isTagChunk(const QByteArray &name) const
    {
        return name.compare("ID3 ", Qt::CaseInsensitive) == 0 || (!m_isAiff && name == "LIST");
    }

    /// The number of texts in a list "INFO".
    int listLength(qint64 at, qint64 end)
    {
        int count = 0;
        for (at += 4; at + chunkHeader <= end && count <= mostTagParts; ++count) {
            const auto length = qint64(number(at + 4, 4));
            at += chunkHeader + length + length % 2;
        }
        return count;
    }

    void takeSound(qint64 at, qint64 length)
    {
        constexpr qint64 offsetAndBlock = 8; // which AIFF has before its samples
        const qint64 head = m_isAiff ? std::min(length, offsetAndBlock) : 0;
        m_layout.sound.append({at + head, length - head});
    }

    void takeForm(qint64 at, qint64 length)
    {
        constexpr qint64 most = 1024; // of what is not sound, but tells what it is
        const QByteArray form = m_bytes.at(at, std::min(length, most)).toByteArray();
        m_layout.arrangement = form;
        WaveForm &wave = *m_layout.wave;
        if (m_isAiff) {
            wave.channels = int(bigEndian(form, 0, 2));
            wave.sampleBits = int(bigEndian(form, 6, 2));
            wave.sampleRate = extendedNumber(form.mid(8));
            const QByteArray coding = form.mid(18, 4);
            wave.isPcm = coding.isEmpty() || coding == "NONE" || coding == "sowt";
            m_hasHighFirst = coding != "sowt";
            m_frames = qint64(bigEndian(form, 2, 4));
            return;
        }
        constexpr quint64 pcm = 1;
        constexpr quint64 extensible = 0xfffe; // the true coding stands behind
        constexpr qsizetype trueCoding = 24;
        const quint64 coding = littleEndian(form, 0, 2);
        wave.isPcm = (coding == extensible ? littleEndian(form, trueCoding, 2) : coding) == pcm;
        wave.channels = int(littleEndian(form, 2, 2));
        wave.sampleRate = int(std::min<quint64>(littleEndian(form, 4, 4), 0x7fffffff));
        wave.bytesPerSecond = qint64(littleEndian(form, 8, 4));
        wave.sampleBits = int(littleEndian(form, 14, 2));
    }

    void finish(const CancelFlag &cancel)
    {
        if (!m_layout.ok())
            return;
        WaveForm &wave = *m_layout.wave;
        if (m_layout.sound.isEmpty() || wave.sampleRate == 0) {
            m_layout.fault = SoundFault::Damaged;
            return;
        }
        constexpr qint64 thousand = 1000;
        const qint64 size = m_layout.soundSize();
        if (m_isAiff) {
            wave.milliseconds = m_frames * thousand / wave.sampleRate;
            wave.bytesPerSecond = wave.milliseconds > 0 ? size * thousand / wave.milliseconds : 0;
        } else if (wave.bytesPerSecond > 0) {
            wave.milliseconds = size * thousand / wave.bytesPerSecond;
        }
        takeSamplesHash(cancel);
    }

    /// FLAC notes the MD5 of samples of 16 bits and more as WAV has them, the lowest byte first.
    void takeSamplesHash(const CancelFlag &cancel)
    {
        constexpr qint64 wholeSamples = SoundBytes::most - SoundBytes::most % 12; // of any width
        const int bits = m_layout.wave->sampleBits;
        if (!m_layout.wave->isPcm || (bits != 16 && bits != 24 && bits != 32))
            return;
        MessageDigest digest(MessageDigest::Kind::Md5);
        for (const SoundRange &range : m_layout.sound) {
            for (qint64 done = 0; done < range.length;) {
                const QByteArrayView piece = m_bytes.at(range.at + done, std::min(range.length - done, wholeSamples));
                if (piece.isEmpty() || cancel.isCancelled())
                    return;
                digest.update(m_hasHighFirst ? turned(piece, bits / 8) : piece);
                done += piece.size();
            }
        }
        m_layout.samplesHash = digest.value();
    }

    /// Each sample with its bytes in the other order. Until the next call.
    QByteArrayView turned(QByteArrayView samples, qsizetype width)
    {
        m_turned = samples.toByteArray();
        for (qsizetype at = 0; at + width <= m_turned.size(); at += width)
            std::reverse(m_turned.begin() + at, m_turned.begin() + at + width);
        return m_turned;
    }

    SoundBytes &m_bytes;
    SoundLayout &m_layout;
    bool m_isAiff;
    qint64 m_frames = 0;
    bool m_hasHighFirst = false; ///< the samples
    QByteArray m_turned;
};

} // namespace

SoundLayout findRiff(SoundBytes &bytes, bool isAiff, const CancelFlag &cancel)
{
    SoundLayout layout;
    ChunkWalk(bytes, layout, isAiff).run(cancel);
    return layout;
}

} // namespace velmora
