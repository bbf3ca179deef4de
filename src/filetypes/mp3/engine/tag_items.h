#pragma once

#include "filetypes/mp3/engine/song_field.h"

#include <flacfile.h>
#include <flacpicture.h>
#include <mp4tag.h>
#include <xiphcomment.h>

namespace TagLib {
namespace APE {
class Tag;
}
namespace RIFF::Info {
class Tag;
}
} // namespace TagLib

namespace velmora {

// What the tags that are made of items, and not of frames, say; added to `fields`.
void readApe(const TagLib::APE::Tag &tag, QList<SongField> &fields);
void readVorbis(TagLib::Ogg::XiphComment &comment, QList<SongField> &fields);
void readPictures(const TagLib::List<TagLib::FLAC::Picture *> &pictures, QList<SongField> &fields);
void readInfo(const TagLib::RIFF::Info::Tag &tag, QList<SongField> &fields);
void readMp4(const TagLib::MP4::Tag &tag, QList<SongField> &fields);

/// The fields of one picture and one item each.
[[nodiscard]] SongField pictureField(const TagLib::FLAC::Picture &picture);
[[nodiscard]] SongField coverField(const TagLib::MP4::CoverArt &cover);
[[nodiscard]] SongField mp4Field(const QString &key, const TagLib::MP4::Item &item);

/// How an item of MP4 is to be read, which the library knows by its name only.
enum class Mp4Kind : quint8 { Text, Pair, Flag, Byte, Number, LongNumber, Int };
[[nodiscard]] Mp4Kind mp4KindOf(const QString &key);

/// What a value that need not be text is shown and compared as: itself, where it is printable ASCII and short, else its
/// length and SHA-256.
[[nodiscard]] QString dataText(const QByteArray &bytes);

/// Makes a picture the value of a field, and its kind the item.
void takePicture(SongField &field, SongPicture picture);

} // namespace velmora
