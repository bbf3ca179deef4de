#pragma once

#include "filetypes/mp3/engine/sound_bytes.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

namespace velmora {

/// What is wrong with the tags of an MPEG file.
enum class TagFault : quint8 {
    Id3v2Rest,    ///< `number` bytes at the end of the ID3v2 tag belong to no frame
    Id3v1Unread,  ///< an ID3v1 tag is cut off, or is not the last thing in the file
    LyricsUnread, ///< Lyrics3 that are cut off, or whose length does not lead to their beginning
    ApeUnread,    ///< an APE tag is where none is read: before the sound, or before other tags
    ApeCutOff,    ///< the beginning of an APE tag without its end
    ApeLength,    ///< its length of `number` bytes does not lead to its beginning
    ApeBeginning, ///< its beginning is missing, or says other things than its end
    ApeCount,     ///< it says that it has `number` fields, and has fewer
    ApeRest,      ///< `number` bytes of it belong to no field

    // Of `number` of its fields, `name` the first of them.
    ApeName,    ///< a name of one letter, of more than 255, or of others than ASCII has
    ApeValue,   ///< the value leads out of the tag
    ApeTwice,   ///< another field has the same name
    ApeFlags,   ///< marks that were never laid down
    ApeOldText, ///< a text that is not in UTF-8
};

struct TagDamage {
    TagFault fault = TagFault::Id3v2Rest;
    qint64 number = 0;
    QString name;
};

/// Whether the library that writes tags would harm what it does not understand.
[[nodiscard]] bool forbidsSaving(TagFault fault);

/// Whether saving leaves out what is in the file.
[[nodiscard]] bool losesBySaving(TagFault fault);

/// What is found in the tags of an MPEG file beside what the library reads.
struct TagFindings {
    QList<TagDamage> damage;
    QHash<QString, QByteArray> oldTexts; ///< of APE by their names in capital letters, several texts in lines
    bool hasUnreadableApe = false;       ///< what the library takes for its fields is none
    bool isTooLarge = false;             ///< made to exhaust the memory
};

/// `sound`: where the sound lies.
[[nodiscard]] TagFindings examineTags(SoundBytes &bytes, const SoundRange &sound);

} // namespace velmora
