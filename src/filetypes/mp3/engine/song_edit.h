#pragma once

#include "core/cancel_flag.h"
#include "filetypes/mp3/engine/song_file.h"

#include <QList>
#include <QString>

namespace velmora {

/// Whether files of a format can have tags of a system that they have not yet.
[[nodiscard]] bool canHold(SoundFormat format, SongGroup group);

/// `to` with all fields of one thing as they are in `from`; without it where `from` has none.
[[nodiscard]] SongTags withCopied(const SongTags &from, SongTags to, const SongField &thing);

/// `to` with the tags of every system that `format` can hold as they are in `from`.
[[nodiscard]] SongTags withAllCopied(const SongTags &from, SongTags to, SoundFormat format);

enum class TagSaveFault : quint8 {
    None,
    CannotRead,   ///< `detail`: the system's own words
    CannotWrite,  ///< the same
    Changed,      ///< the file is not the one that was read
    NotPossible,  ///< its tags cannot be written again without harm
    SoundChanged, ///< writing would have changed the sound
    WouldLose     ///< `lost` would not be in the file as they ought to, or what of it is damaged would go
};

struct TagSave {
    TagSaveFault fault = TagSaveFault::None;
    QString detail;
    QList<SongField> lost;
    bool losesUnread = false; ///< what could not be read of damaged tags would go
    Song song;                ///< as it was read again, where it was saved
    [[nodiscard]] bool ok() const noexcept { return fault == TagSaveFault::None; }
};

/// What becomes of a file whose format cannot hold a field as it ought to be, or whose damaged tags hold more than was
/// read.
enum class Loss : quint8 { Refused, Accepted };

/// Writes `tags` into the file that `song` was read from. They are written into a copy, which is read again; only when
/// it has the same sound and the tags that it ought to have, it takes the file's place, in one step. On any fault the
/// file is as it was. ID3v2 is written in version 2.3, or 2.4 where the tags say so.
[[nodiscard]] TagSave saveTags(const QString &path, const Song &song, const SongTags &tags, Loss loss,
                               const CancelFlag &cancel = {});

} // namespace velmora
