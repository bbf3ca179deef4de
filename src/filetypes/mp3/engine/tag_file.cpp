#include "filetypes/mp3/engine/tag_file.h"

#include "filetypes/mp3/engine/chapter_guard.h"
#include "filetypes/mp3/engine/tag_stream.h"

#include <apetag.h>
#include <flacfile.h>
#include <id3v1tag.h>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <oggflacfile.h>
#include <opusfile.h>
#include <speexfile.h>
#include <vorbisfile.h>

namespace velmora {

namespace {

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

TagLib::FLAC::File *TagFile::flac() const
{
    return dynamic_cast<TagLib::FLAC::File *>(m_file.get());
}

bool TagFile::save(int id3v2Minor)
{
    if (auto *mpeg = dynamic_cast<TagLib::MPEG::File *>(m_file.get())) {
        const auto version = id3v2Minor == 3 ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4;
        return mpeg->save(TagLib::MPEG::File::AllTags, TagLib::File::StripNone, version, TagLib::File::DoNotDuplicate);
    }
    return m_file->save();
}

} // namespace velmora
