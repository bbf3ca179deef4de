#pragma once

#include "filetypes/mp3/engine/song_field.h"

namespace velmora {

/// Tags, and the system in them that is meant.
struct SystemTags {
    const SongTags &tags;
    SongGroup system;
};

/// The tags of `to` with what `thing`, a field of either or of the group `Common`, means said in its system as it is in
/// that of `from`; not said where `from` does not. A thing that only its own system has, or that the system of `to` has
/// no place for, changes nothing. `charset` as in `valueIn`: texts are written as they are read with it.
[[nodiscard]] SongTags withConverted(const SystemTags &from, const SystemTags &to, const SongField &thing,
                                     const QString &charset);

/// The same with everything that both systems can say, but for the encoder, which tells how the sound of a file was
/// made. What only the system of `to` can say stays.
[[nodiscard]] SongTags withAllConverted(const SystemTags &from, const SystemTags &to, const QString &charset);

} // namespace velmora
