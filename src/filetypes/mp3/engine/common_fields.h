#pragma once

#include "core/sides.h"
#include "filetypes/mp3/engine/song_field.h"

#include <QStringList>

namespace velmora {

/// What fields of different tag systems mean alike, in the order in which they are shown.
enum class CommonField : quint8 {
    Title,
    Artist,
    Album,
    AlbumArtist,
    Year,
    Track,
    Disc,
    Genre,
    Composer,
    Comment,
    Lyrics,
    Copyright,
    Publisher,
    Encoder,
    Tempo,
    Compilation,
    Picture,
    None ///< nothing that several systems have
};

inline constexpr int commonFieldCount = int(CommonField::None);

/// "title" and so on: the name in the output of programs, which stays.
[[nodiscard]] const char *commonName(CommonField field);

/// The other way; `None` for any other name.
[[nodiscard]] CommonField commonFieldNamed(const QString &name);

/// The key that a tag system has for it; empty where it has none.
[[nodiscard]] QString commonKey(SongGroup group, CommonField field);

/// A genre by its name where it is given by its number in ID3v1's list.
[[nodiscard]] QString genreText(const QString &value);

/// What a field of a tag means.
[[nodiscard]] CommonField commonField(SongGroup group, const QString &key);

/// The name of a tag system as its users know it: "ID3v2", "APE".
[[nodiscard]] QString systemName(SongGroup group);

/// Whether two systems of one file both say something of a field, and not the same. A text that ID3v1 has cut off is no
/// other one, nor one with question marks for what it cannot hold. `charset` as in `valueIn`.
[[nodiscard]] bool contradict(const SongTags &tags, CommonField field, const Sides<SongGroup> &systems,
                              const QString &charset);

/// Where the tags of one file say different things, a field for each common field; its value has a line "ID3v2: ..."
/// for each system. What contradicts is as for `contradict`.
[[nodiscard]] QList<SongField> contradictions(const SongTags &tags, const QString &charset);

} // namespace velmora
