#include "filetypes/mp3/engine/song_field.h"

#include "core/text_file.h"

#include <algorithm>
#include <array>

namespace velmora {

const char *songGroupName(SongGroup group)
{
    static constexpr std::array<const char *, songGroupCount> names{
        "sound", "contradiction", "common", "id3v2", "id3v1", "ape", "vorbis", "mp4", "info", "file"};
    return names[std::size_t(group)];
}

QString valueIn(const SongField &field, const QString &charset)
{
    if (charset.isEmpty() || field.oldBytes.isEmpty())
        return field.value;
    const DecodedText decoded = decodeText(field.oldBytes, TextEncoding::fromName(charset));
    const std::string_view utf8 = decoded.lines.bytes();
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

bool SongTags::has(SongGroup group) const
{
    return std::any_of(fields.begin(), fields.end(), [group](const SongField &field) { return field.group == group; });
}

} // namespace velmora
