#pragma once

#include "core/keyed_rows.h"
#include "core/sides.h"
#include "filetypes/mp3/engine/song_file.h"

#include <memory>

namespace velmora {

/// One field of either song.
struct SongRow {
    SongField field; ///< without what depends on the side
    PairStatus status = PairStatus::Same;
    Sides<QString> values = {}; ///< empty where the side has none
    Sides<std::shared_ptr<const SongPicture>> pictures = {};
    /// Of a field of the group `Common` the systems that it stands in.
    Sides<SongGroup> systems = {SongGroup::Common, SongGroup::Common};
};

/// What two songs are to each other; the first that holds.
enum class SongVerdict : quint8 {
    SameFile,
    SameContents, ///< the same sound and tags, arranged otherwise
    SameSound,    ///< other tags
    SameSamples,  ///< encoded otherwise without loss: by the MD5 that FLAC notes of its samples
    SameTags,     ///< other sound
    Different
};

/// "sameFile" and so on: the name in the output of programs, which stays.
[[nodiscard]] const char *songVerdictName(SongVerdict verdict);

[[nodiscard]] SongVerdict judgeSongs(const Song &left, const Song &right);

/// The fields of both songs by their groups, in these what has a common meaning first. What a song has several of is
/// paired in the order in which it has them. `charset` as in `valueIn`.
[[nodiscard]] QList<SongRow> compareSongs(const Song &left, const Song &right, const QString &charset = {});

/// Whether both have the same fields.
[[nodiscard]] bool areSame(const SongTags &left, const SongTags &right);

} // namespace velmora
