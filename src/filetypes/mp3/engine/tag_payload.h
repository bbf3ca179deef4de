#pragma once

#include <QString>

#include <variant>

#include <apeitem.h>
#include <mp4coverart.h>
#include <mp4item.h>
#include <tbytevector.h>
#include <tstring.h>
#include <tstringlist.h>

namespace velmora {

/// A frame of ID3v2 as version 2.4 writes it.
struct FrameBytes {
    TagLib::ByteVector bytes;
};

/// A picture of FLAC or a Vorbis comment in the form of FLAC's block.
struct PictureBlock {
    TagLib::ByteVector bytes;
};

/// A text of ID3v1 or a number of it, or the value of a Vorbis comment.
struct PlainText {
    TagLib::String text;
};

/// What a field is written from.
struct TagPayload {
    std::variant<FrameBytes, PictureBlock, PlainText, TagLib::APE::Item, TagLib::MP4::Item, TagLib::MP4::CoverArt> data;
};

[[nodiscard]] inline QString textOf(const TagLib::String &text)
{
    const std::string utf8 = text.to8Bit(true);
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

[[nodiscard]] inline QByteArray bytesOf(const TagLib::ByteVector &bytes)
{
    return {bytes.data(), qsizetype(bytes.size())};
}

} // namespace velmora
