#pragma once

#include "filetypes/mp3/engine/song_file.h"

namespace velmora {

class TagFile;

/// Adds what is known of the sound.
void addFacts(Song &song, const SoundLayout &layout, const TagFile &file);

/// Adds what is known of the file; its hash is there already.
void addFileFacts(Song &song, qint64 size);

} // namespace velmora
