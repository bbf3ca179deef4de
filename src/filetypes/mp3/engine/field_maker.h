#pragma once

#include "filetypes/mp3/engine/field_meaning.h"

#include <QList>

namespace velmora {

/// The fields by which a tag system (ID3v2, Vorbis comments, MP4) says something; none where it has no place for that.
[[nodiscard]] QList<SongField> madeFields(SongGroup system, const MeantField &meant);

} // namespace velmora
