#include "filetypes/mp3/damage_words.h"

#include "core/visible_name.h"
#include "session/translate.h"

#include <QLocale>

namespace velmora {

namespace {

QString fieldDamageText(TagFault fault)
{
    switch (fault) {
    case TagFault::ApeName:
        return Velmora::tr(
            "The APE tag of %1 is damaged: fields with names that are not allowed are not read, and saving "
            "leaves them out (%2, the first is \"%3\").");
    case TagFault::ApeValue:
        return Velmora::tr("The APE tag of %1 is damaged: values lead out of it and are read as far as they are there "
                           "(%2, the first is \"%3\").");
    case TagFault::ApeTwice:
        return Velmora::tr("The APE tag of %1 is damaged: of fields with the same name the last is read, and saving "
                           "leaves the others out (%2, the first is \"%3\").");
    case TagFault::ApeFlags:
        return Velmora::tr("The APE tag of %1 has fields with marks that were never laid down, and saving leaves these "
                           "out (%2, the first is \"%3\").");
    default:
        return Velmora::tr("The APE tag of %1 has texts in an old encoding, which such tags must not have; the tags "
                           "of this file cannot be saved (%2, the first is \"%3\").");
    }
}

QString wholeDamageText(TagFault fault)
{
    switch (fault) {
    case TagFault::Id3v2Rest:
        return Velmora::tr("The ID3v2 tag of %1 is damaged: its last %2 bytes cannot be read, and saving leaves "
                           "them out.");
    case TagFault::Id3v1Unread:
        return Velmora::tr("An ID3v1 tag of %1 is not read: it is cut off, or is not the last thing in the file.");
    case TagFault::LyricsUnread:
        return Velmora::tr("The lyrics behind the sound of %1 (Lyrics3) are damaged: they are cut off, or their length "
                           "is wrong.");
    case TagFault::ApeUnread:
        return Velmora::tr("An APE tag of %1 is not read: it is before the sound, or before other tags.");
    case TagFault::ApeCutOff:
        return Velmora::tr(
            "The APE tag of %1 is damaged: it has a beginning and no end. It is not read, and the tags of "
            "this file cannot be saved.");
    case TagFault::ApeLength:
        return Velmora::tr("The APE tag of %1 is damaged: the length that it gives, %2 bytes, does not lead to its "
                           "beginning. It is not read, and the tags of this file cannot be saved.");
    case TagFault::ApeBeginning:
        return Velmora::tr(
            "The APE tag of %1 is damaged: its beginning is missing, or does not agree with its end. The "
            "tags of this file cannot be saved.");
    case TagFault::ApeCount:
        return Velmora::tr("The APE tag of %1 is damaged: it says that it has %2 fields, and has fewer.");
    default:
        return Velmora::tr("The APE tag of %1 is damaged: %2 bytes in it belong to no field and cannot be read, and "
                           "saving leaves them out.");
    }
}

} // namespace

QString damageText(const TagDamage &damage, const QString &file)
{
    const QString number = QLocale().toString(damage.number);
    if (damage.fault >= TagFault::ApeName)
        return fieldDamageText(damage.fault).arg(file, number, visibleName(damage.name));
    const QString text = wholeDamageText(damage.fault);
    return text.contains(QLatin1String("%2")) ? text.arg(file, number) : text.arg(file);
}

} // namespace velmora
