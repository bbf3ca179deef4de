#pragma once

#include "filetypes/mp3/engine/song_field.h"

#include <QList>

namespace TagLib {
namespace ID3v2 {
class Frame;
class Tag;
} // namespace ID3v2
} // namespace TagLib

namespace velmora {

class TagFile;

/// Everything that the tags of a file say.
[[nodiscard]] SongTags readTags(const TagFile &file);

/// The field of one frame, which is changed into one of version 2.4.
[[nodiscard]] SongField id3v2Field(TagLib::ID3v2::Frame &frame);

/// The fields of its frames, one for each and in their order.
[[nodiscard]] QList<SongField> id3v2Fields(const TagLib::ID3v2::Tag &tag);

} // namespace velmora
