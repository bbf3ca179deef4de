#pragma once

#include "filetypes/mp3/engine/song_compare.h"
#include "filetypes/mp3/engine/song_edit.h"

namespace velmora {

/// What a field is called: "ID3v2: Title". A name of its own for each thing, by which its row is found again.
[[nodiscard]] QString fieldText(const SongField &field);

/// Where a field stands, with the name that the format has for it: "ID3v2, TIT2".
[[nodiscard]] QString placeText(const SongRow &row);

/// The value of a side as people read it: times, sizes and pictures in words.
[[nodiscard]] QString valueText(const SongRow &row, Side side);

/// The kind of a picture, as "Front cover".
[[nodiscard]] QString pictureKindText(int kind);

/// What two songs are to each other, in a sentence.
[[nodiscard]] QString verdictText(SongVerdict verdict);

/// Where the tags of a file contradict each other, and what of its sound is damaged, in a sentence each.
[[nodiscard]] QStringList remarkTexts(const Song &song, const QString &path, const QString &charset);

/// Why a file was not read, in a sentence.
[[nodiscard]] QString faultText(const SongReading &reading, const QString &path);

/// Why a file was not saved, in a sentence.
[[nodiscard]] QString saveFaultText(const TagSave &save, const QString &path);

/// Asks whether a file is to be saved without what its format cannot hold.
[[nodiscard]] QString lossText(const TagSave &save, const QString &path);

} // namespace velmora
