#pragma once

#include "filetypes/mp3/engine/song_field.h"

namespace velmora {

class TagFile;

/// Changes the tags of an open file from what was read from it into `after`. Fields that are the same in both are not
/// touched.
void writeChanges(TagFile &file, const SongTags &before, const SongTags &after);

} // namespace velmora
