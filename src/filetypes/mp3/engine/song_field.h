#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

namespace velmora {

/// What a field of a song belongs to, in the order in which groups are shown.
enum class SongGroup : quint8 {
    Sound,
    Contradiction, ///< where tags of one file say different things; `key` as in `commonName`
    Common,        ///< what files with different tag systems both can say; `key` as in `meaningKey`
    Id3v2,
    Id3v1,
    Ape,
    Vorbis,
    Mp4,
    Info, ///< the list "INFO" of WAV
    File
};

inline constexpr int songGroupCount = int(SongGroup::File) + 1;

/// "sound", "id3v2" and so on: the name in the output of programs, which stays.
[[nodiscard]] const char *songGroupName(SongGroup group);

/// Whether it is one of the tag systems.
[[nodiscard]] constexpr bool isTag(SongGroup group)
{
    return group >= SongGroup::Id3v2 && group <= SongGroup::Info;
}

/// A picture in a tag, as it stands there.
struct SongPicture {
    int kind = 0; ///< as ID3v2 numbers them in "APIC": 3 is the front cover
    QString mime;
    QString description;
    QByteArray bytes;
};

/// A field as the library for tags has it, for writing it elsewhere.
struct TagPayload;

/// One field of a song.
///
/// Fields with the same group, key and item are one thing, of which there may be several values.
struct SongField {
    SongGroup group = SongGroup::Sound;
    QString
        key; ///< of tags as the format has it ("TIT2", "©nam"), of APE in capitals; else a name that stays ("bitRate")
    QString item = {};        ///< what tells fields of one key apart: a description, a language, a kind of picture
    QString value = {};       ///< several values one a line; of a picture its type, size and SHA-256
    QByteArray oldBytes = {}; ///< the value where it is in a one-byte encoding that nothing tells, and not ASCII
    std::shared_ptr<const SongPicture> picture = {};
    std::shared_ptr<const TagPayload> payload = {}; ///< of tags only

    [[nodiscard]] bool isSameThing(const SongField &other) const
    {
        return group == other.group && key == other.key && item == other.item;
    }
};

/// The value with its old bytes read in the encoding of `charset`, a name for `TextEncoding::fromName`; as it is with
/// an empty one, where they count for Latin-1.
[[nodiscard]] QString valueIn(const SongField &field, const QString &charset);

/// All tags of a file.
struct SongTags {
    QList<SongField> fields;     ///< in the order of the file within each group
    QString id3v2Version;        ///< "2.3"; empty without such a tag
    bool holdsEncrypted = false; ///< frames that nobody can write again as they were

    [[nodiscard]] bool has(SongGroup group) const;
};

} // namespace velmora
