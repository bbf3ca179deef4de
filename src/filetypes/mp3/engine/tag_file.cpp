#include "filetypes/mp3/engine/tag_file.h"

#include "filetypes/mp3/engine/chapter_guard.h"
#include "filetypes/mp3/engine/tag_stream.h"

#include <aifffile.h>
#include <apetag.h>
#include <flacfile.h>
#include <id3v1tag.h>
#include <id3v2tag.h>
#include <infotag.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <oggflacfile.h>
#include <opusfile.h>
#include <rifffile.h>
#include <speexfile.h>
#include <vorbisfile.h>
#include <wavfile.h>

namespace velmora {

namespace {

/// Texts of the list "INFO" byte for byte, as nothing tells their encoding.
class InfoBytes final : public TagLib::RIFF::Info::StringHandler {
public:
    InfoBytes() = default;
    virtual ~InfoBytes() = default; // which the library's own is not
    Q_DISABLE_COPY_MOVE(InfoBytes)
    TagLib::String parse(const TagLib::ByteVector &data) const override { return {data, TagLib::String::Latin1}; }
    TagLib::ByteVector render(const TagLib::String &text) const override { return text.data(TagLib::String::Latin1); }
};

/// The chunks of a file as the library finds them, which reads the frames within with a factory of its own.
class ChunkFile final : public TagLib::RIFF::File {
public:
    ChunkFile(TagLib::IOStream *stream, bool isAiff) : TagLib::RIFF::File(stream, isAiff ? BigEndian : LittleEndian) {}

    [[nodiscard]] TagLib::Tag *tag() const override { return nullptr; }
    [[nodiscard]] TagLib::AudioProperties *audioProperties() const override { return nullptr; }
    bool save() override { return false; }

    /// Throws `TagRefusal` where a tag has more than tags may.
    void checkTags(GuardedFrames &frames)
    {
        for (unsigned int k = 0; k < chunkCount(); ++k) {
            const TagLib::ByteVector name = chunkName(k);
            if (name == "ID3 " || name == "id3 ")
                const TagLib::ID3v2::Tag read(this, long(chunkOffset(k)), &frames);
        }
    }
};

template <typename File>
std::unique_ptr<TagLib::File> openChunks(TagLib::IOStream *stream, GuardedFrames &frames, bool isAiff)
{
    static const InfoBytes infoBytes;
    TagLib::RIFF::Info::Tag::setStringHandler(&infoBytes);
    ChunkFile(stream, isAiff).checkTags(frames);
    stream->seek(0);                              // where the library takes the file to begin
    return std::make_unique<File>(stream, false); // what it says of the sound is found by our own walk
}

std::unique_ptr<TagLib::File> openFile(SoundFormat format, TagLib::IOStream *stream, GuardedFrames *frames,
                                       bool withProperties)
{
    switch (format) {
    case SoundFormat::Mpeg: // what it says of the sound is found by our own walk
        return std::make_unique<TagLib::MPEG::File>(stream, frames, false);
    case SoundFormat::Flac:
        return std::make_unique<TagLib::FLAC::File>(stream, frames, withProperties);
    case SoundFormat::OggVorbis:
        return std::make_unique<TagLib::Ogg::Vorbis::File>(stream, withProperties);
    case SoundFormat::OggOpus:
        return std::make_unique<TagLib::Ogg::Opus::File>(stream, withProperties);
    case SoundFormat::OggFlac:
        return std::make_unique<TagLib::Ogg::FLAC::File>(stream, withProperties);
    case SoundFormat::OggSpeex:
        return std::make_unique<TagLib::Ogg::Speex::File>(stream, withProperties);
    case SoundFormat::Wav:
        return openChunks<TagLib::RIFF::WAV::File>(stream, *frames, false);
    case SoundFormat::Aiff:
        return openChunks<TagLib::RIFF::AIFF::File>(stream, *frames, true);
    case SoundFormat::Mp4:
        break;
    }
    return std::make_unique<TagLib::MP4::File>(stream, withProperties);
}

} // namespace

bool GuardedFrames::updateFrame(FrameInside::Header *header) const
{
    if (header->compression()) {
        m_compressed += header->frameSize();
        if (header->frameID() == "CHAP" || header->frameID() == "CTOC") // would hide what is within
            throw TagRefusal();
    }
    if (++m_frames > mostTagParts || m_compressed > mostCompressedBytes)
        throw TagRefusal();
    return FrameFactory::updateFrame(header);
}

TagFile::TagFile(SoundFormat format, TagLib::IOStream &stream, bool withProperties)
    : m_format(format), m_file(openFile(format, &stream, &m_frames, withProperties))
{}

TagFile::~TagFile() = default;

bool TagFile::isValid() const
{
    return m_file->isValid() && m_file->tag();
}

TagLib::ID3v2::Tag *TagFile::id3v2(bool make) const
{
    if (auto *mpeg = dynamic_cast<TagLib::MPEG::File *>(m_file.get()))
        return make || mpeg->hasID3v2Tag() ? mpeg->ID3v2Tag(make) : nullptr;
    if (auto *wave = dynamic_cast<TagLib::RIFF::WAV::File *>(m_file.get()))
        return make || wave->hasID3v2Tag() ? wave->ID3v2Tag() : nullptr;
    if (auto *aiff = dynamic_cast<TagLib::RIFF::AIFF::File *>(m_file.get()))
        return make || aiff->hasID3v2Tag() ? aiff->tag() : nullptr;
    auto *file = flac();
    return file && file->hasID3v2Tag() ? file->ID3v2Tag() : nullptr;
}

TagLib::ID3v1::Tag *TagFile::id3v1(bool make) const
{
    if (auto *mpeg = dynamic_cast<TagLib::MPEG::File *>(m_file.get()))
        return make || mpeg->hasID3v1Tag() ? mpeg->ID3v1Tag(make) : nullptr;
    auto *file = flac();
    return file && file->hasID3v1Tag() ? file->ID3v1Tag() : nullptr;
}

TagLib::APE::Tag *TagFile::ape(bool make) const
{
    auto *mpeg = dynamic_cast<TagLib::MPEG::File *>(m_file.get());
    return mpeg && (make || mpeg->hasAPETag()) ? mpeg->APETag(make) : nullptr;
}

TagLib::Ogg::XiphComment *TagFile::vorbis(bool make) const
{
    if (auto *file = flac())
        return make || file->hasXiphComment() ? file->xiphComment(make) : nullptr;
    return dynamic_cast<TagLib::Ogg::XiphComment *>(m_file->tag());
}

TagLib::MP4::Tag *TagFile::mp4() const
{
    return dynamic_cast<TagLib::MP4::Tag *>(m_file->tag());
}

TagLib::RIFF::Info::Tag *TagFile::info(bool make) const
{
    auto *wave = dynamic_cast<TagLib::RIFF::WAV::File *>(m_file.get());
    return wave && (make || wave->hasInfoTag()) ? wave->InfoTag() : nullptr;
}

TagLib::FLAC::File *TagFile::flac() const
{
    return dynamic_cast<TagLib::FLAC::File *>(m_file.get());
}

bool TagFile::save(int id3v2Minor)
{
    const auto version = id3v2Minor == 3 ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4;
    if (auto *wave = dynamic_cast<TagLib::RIFF::WAV::File *>(m_file.get()))
        return wave->save(TagLib::RIFF::WAV::File::AllTags, TagLib::File::StripNone, version);
    if (auto *aiff = dynamic_cast<TagLib::RIFF::AIFF::File *>(m_file.get()))
        return aiff->save(version);
    if (auto *mpeg = dynamic_cast<TagLib::MPEG::File *>(m_file.get()))
        return mpeg->save(TagLib::MPEG::File::AllTags, TagLib::File::StripNone, version, TagLib::File::DoNotDuplicate);
    return m_file->save();
}

} // namespace velmora
