#include "filetypes/mp3/engine/song_facts.h"

#include "filetypes/mp3/engine/tag_file.h"
#include "filetypes/mp3/engine/tag_payload.h"

#include <algorithm>
#include <array>

#include <audioproperties.h>
#include <flacproperties.h>
#include <mp4properties.h>
#include <xiphcomment.h>

namespace velmora {

namespace {

void add(Song &song, SongGroup group, const char *key, const QString &value)
{
    if (value.isEmpty())
        return;
    SongField field;
    field.group = group;
    field.key = QLatin1String(key);
    field.value = value;
    song.facts.append(field);
}

void addNumber(Song &song, const char *key, qint64 value)
{
    add(song, SongGroup::Sound, key, QString::number(value));
}

void addText(Song &song, const char *key, const QString &value)
{
    add(song, SongGroup::Sound, key, value);
}

QString mpegFormat(const MpegHeader &header)
{
    static constexpr std::array versions{"1", "2", "2.5"};
    static constexpr std::array layers{"I", "II", "III"};
    return QStringLiteral("MPEG %1 Layer %2")
        .arg(QLatin1String(versions[std::size_t(header.version)]),
             QLatin1String(layers[std::size_t(header.layer - 1)]));
}

QString rateMode(const MpegFrames &frames)
{
    const auto rate = frames.info ? frames.info->rate : MpegStreamInfo::Rate::Unknown;
    if (rate == MpegStreamInfo::Rate::Average)
        return QStringLiteral("ABR");
    if (rate == MpegStreamInfo::Rate::Variable)
        return QStringLiteral("VBR");
    return frames.hasOneRate ? QStringLiteral("CBR") : QStringLiteral("VBR");
}

void addMpegFacts(Song &song, const MpegFrames &frames)
{
    static constexpr std::array modes{"stereo", "joint stereo", "dual channel", "mono"};
    constexpr int millisecond = 1000;
    const MpegHeader &header = frames.first;
    const bool hasGaps = frames.info && frames.info->delay >= 0;
    const qint64 gaps = hasGaps ? frames.info->delay + frames.info->padding : 0;
    const qint64 samples = std::max<qint64>(0, frames.samples - gaps);
    song.milliseconds = samples * millisecond / header.sampleRate;
    addText(song, factKey::format, mpegFormat(header));
    addNumber(song, factKey::length, song.milliseconds);
    if (frames.samples > 0)
        addNumber(song, factKey::bitRate,
                  (frames.soundBytes * 8 * header.sampleRate / frames.samples + millisecond / 2) / millisecond);
    addText(song, factKey::rateMode, rateMode(frames));
    addNumber(song, factKey::sampleRate, header.sampleRate);
    addNumber(song, factKey::channels, header.channelMode == 3 ? 1 : 2);
    addText(song, factKey::channelMode, QLatin1String(modes[std::size_t(header.channelMode)]));
    if (frames.info) {
        addText(song, factKey::encoder, frames.info->encoder);
        if (hasGaps)
            addText(song, factKey::gaps, QStringLiteral("%1 + %2").arg(frames.info->delay).arg(frames.info->padding));
    }
    addNumber(song, factKey::frames, frames.frames);
    if (frames.info && frames.info->frames >= 0)
        addNumber(song, factKey::declaredFrames, frames.info->frames);
}

QString formatName(SoundFormat format, const TagLib::AudioProperties *properties)
{
    static constexpr std::array names{"MPEG",      "FLAC", "Ogg Vorbis", "Ogg Opus", "Ogg FLAC",
                                      "Ogg Speex", "MP4",  "WAV",        "AIFF"};
    if (const auto *mp4 = dynamic_cast<const TagLib::MP4::Properties *>(properties)) {
        if (mp4->codec() == TagLib::MP4::Properties::AAC)
            return QStringLiteral("MP4, AAC");
        if (mp4->codec() == TagLib::MP4::Properties::ALAC)
            return QStringLiteral("MP4, ALAC");
    }
    return QLatin1String(names[std::size_t(format)]);
}

void addWaveFacts(Song &song, const WaveForm &wave)
{
    constexpr qint64 thousand = 1000;
    const QString name = formatName(song.format, nullptr);
    addText(song, factKey::format, wave.isPcm ? name + QStringLiteral(", PCM") : name);
    song.milliseconds = wave.milliseconds;
    addNumber(song, factKey::length, wave.milliseconds);
    addNumber(song, factKey::bitRate, wave.bytesPerSecond * 8 / thousand);
    addNumber(song, factKey::sampleRate, wave.sampleRate);
    addNumber(song, factKey::channels, wave.channels);
    addNumber(song, factKey::sampleBits, wave.sampleBits);
}

void addOtherFacts(Song &song, const TagFile &file)
{
    const TagLib::AudioProperties *properties = file.properties();
    addText(song, factKey::format, formatName(song.format, properties));
    if (properties) {
        song.milliseconds = properties->lengthInMilliseconds();
        addNumber(song, factKey::length, song.milliseconds);
        addNumber(song, factKey::bitRate, properties->bitrate());
        addNumber(song, factKey::sampleRate, properties->sampleRate());
        addNumber(song, factKey::channels, properties->channels());
    }
    if (const auto *flac = dynamic_cast<const TagLib::FLAC::Properties *>(properties))
        addNumber(song, factKey::sampleBits, flac->bitsPerSample());
    else if (const auto *mp4 = dynamic_cast<const TagLib::MP4::Properties *>(properties))
        addNumber(song, factKey::sampleBits, mp4->bitsPerSample());
    if (const TagLib::Ogg::XiphComment *comment = file.vorbis())
        addText(song, factKey::encoder, textOf(comment->vendorID()));
}

} // namespace

void addFacts(Song &song, const SoundLayout &layout, const TagFile &file)
{
    if (layout.mpeg)
        addMpegFacts(song, *layout.mpeg);
    else if (layout.wave)
        addWaveFacts(song, *layout.wave);
    else
        addOtherFacts(song, file);
    addNumber(song, factKey::soundSize, layout.soundSize());
    if (song.format == SoundFormat::Flac)
        addText(song, factKey::storedHash, QLatin1String(layout.samplesHash.toHex()));
    addText(song, factKey::soundHash, QLatin1String(song.soundHash.toHex()));
}

void addFileFacts(Song &song, qint64 size)
{
    add(song, SongGroup::File, factKey::id3v2Version, song.tags.id3v2Version);
    add(song, SongGroup::File, factKey::fileSize, QString::number(size));
    add(song, SongGroup::File, factKey::fileHash, QLatin1String(song.fileHash.toHex()));
}

} // namespace velmora
