#pragma once

#include "filetypes/mp3/engine/common_fields.h"
#include "filetypes/mp3/engine/song_field.h"
#include "filetypes/mp3/engine/sound_layout.h"

#include <QList>
#include <QStringList>

#include <memory>
#include <optional>

namespace velmora {

/// The tag system that programs expect in files of a format.
[[nodiscard]] SongGroup mainSystem(SoundFormat format);

/// The same, or of a file that has no such tag the first of the other systems that it has.
[[nodiscard]] SongGroup usedSystem(const SongTags &tags, SoundFormat format);

/// What a field says, whatever the system that it stands in.
struct FieldMeaning {
    CommonField common = CommonField::None; ///< `None`: a text with a name of its own
    QString item = {};                      ///< that name in capitals, or the kind of a picture

    friend bool operator==(const FieldMeaning &, const FieldMeaning &) = default;
};

/// Nothing for a field that only its own system has. Only group, key and item are looked at. A field of the group
/// `Common` means what its key and item say.
[[nodiscard]] std::optional<FieldMeaning> meaningOf(const SongField &field);

/// The same for a field of these tags: of what has but one picture, of no kind, that is the front cover.
[[nodiscard]] std::optional<FieldMeaning> meaningIn(const SongTags &tags, const SongField &field);

/// "title" and so on, "text" for one with a name of its own: the key of a field of the group `Common`.
[[nodiscard]] QString meaningKey(const FieldMeaning &meaning);

/// What a file says of one thing.
struct MeantField {
    FieldMeaning meaning;
    QStringList values; ///< numbers with what they are out of, "3/12"; genres by their names
    QList<std::shared_ptr<const SongPicture>> pictures = {};
};

/// What the tags say in one system, in the order in which they say it. `charset` as in `valueIn`.
[[nodiscard]] QList<MeantField> meantFields(const SongTags &tags, SongGroup system, const QString &charset);

/// The same as fields of the group `Common`, one for each picture and each thing.
[[nodiscard]] QList<SongField> commonFields(const SongTags &tags, SongGroup system, const QString &charset);

} // namespace velmora
