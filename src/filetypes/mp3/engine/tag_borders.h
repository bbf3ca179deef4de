#pragma once

#include "filetypes/mp3/engine/sound_bytes.h"

#include <QList>

namespace velmora {

/// Where what follows the ID3v2 tags at the beginning of a file begins; 0 without one. A tag that says it is longer
/// than the file leads to its end.
[[nodiscard]] qint64 tagsBefore(SoundBytes &bytes);

/// A tag at the end of a file.
struct TagBehind {
    enum class Kind : quint8 { Id3v1, Ape, Lyrics3 };
    Kind kind = Kind::Id3v1;
    qint64 begin = 0;
    qint64 end = 0;
    bool isWhole = true; ///< of APE and Lyrics3: their length leads to their beginning; else their ends alone count
};

/// The tags at the end of a file (ID3v1 with its extension, APE, Lyrics3), the last one first.
[[nodiscard]] QList<TagBehind> tagListBehind(SoundBytes &bytes);

/// Where these begin; the size of the file without any.
[[nodiscard]] qint64 tagsBehind(SoundBytes &bytes);

/// Whether an APE tag at the end says that it has more, or takes more, than tags may.
[[nodiscard]] bool tagsAreOversized(SoundBytes &bytes);

} // namespace velmora
