#include "filetypes/mp3/mp3_words.h"

#include "core/visible_name.h"
#include "filetypes/mp3/damage_words.h"
#include "filetypes/mp3/engine/common_fields.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QLocale>

#include <algorithm>
#include <array>

namespace velmora {

namespace {

struct Word {
    const char *key;
    const char *text;
};

constexpr std::array factWords{
    Word{factKey::format, QT_TRANSLATE_NOOP("Velmora", "Format")},
    Word{factKey::length, QT_TRANSLATE_NOOP("Velmora", "Length")},
    Word{factKey::bitRate, QT_TRANSLATE_NOOP("Velmora", "Bit rate")},
    Word{factKey::rateMode, QT_TRANSLATE_NOOP("Velmora", "Bit rate mode")},
    Word{factKey::sampleRate, QT_TRANSLATE_NOOP("Velmora", "Sample rate")},
    Word{factKey::channels, QT_TRANSLATE_NOOP("Velmora", "Channels")},
    Word{factKey::channelMode, QT_TRANSLATE_NOOP("Velmora", "Channel mode")},
    Word{factKey::sampleBits, QT_TRANSLATE_NOOP("Velmora", "Bits per sample")},
    Word{factKey::encoder, QT_TRANSLATE_NOOP("Velmora", "Encoder")},
    Word{factKey::gaps, QT_TRANSLATE_NOOP("Velmora", "Silent samples before and behind")},
    Word{factKey::frames, QT_TRANSLATE_NOOP("Velmora", "Frames")},
    Word{factKey::declaredFrames, QT_TRANSLATE_NOOP("Velmora", "Frames, as the encoder says")},
    Word{factKey::soundSize, QT_TRANSLATE_NOOP("Velmora", "Sound, bytes")},
    Word{factKey::storedHash, QT_TRANSLATE_NOOP("Velmora", "MD5 of the samples, stored")},
    Word{factKey::soundHash, QT_TRANSLATE_NOOP("Velmora", "SHA-256 of the sound")},
    Word{factKey::id3v2Version, QT_TRANSLATE_NOOP("Velmora", "Version of ID3v2")},
    Word{factKey::fileSize, QT_TRANSLATE_NOOP("Velmora", "File size, bytes")},
    Word{factKey::fileHash, QT_TRANSLATE_NOOP("Velmora", "SHA-256 of the file")},
};

/// In the order of `CommonField`.
constexpr std::array<const char *, commonFieldCount> commonWords{
    QT_TRANSLATE_NOOP("Velmora", "Title"),     QT_TRANSLATE_NOOP("Velmora", "Artist"),
    QT_TRANSLATE_NOOP("Velmora", "Album"),     QT_TRANSLATE_NOOP("Velmora", "Album artist"),
    QT_TRANSLATE_NOOP("Velmora", "Year"),      QT_TRANSLATE_NOOP("Velmora", "Track"),
    QT_TRANSLATE_NOOP("Velmora", "Disc"),      QT_TRANSLATE_NOOP("Velmora", "Genre"),
    QT_TRANSLATE_NOOP("Velmora", "Composer"),  QT_TRANSLATE_NOOP("Velmora", "Comment"),
    QT_TRANSLATE_NOOP("Velmora", "Lyrics"),    QT_TRANSLATE_NOOP("Velmora", "Copyright"),
    QT_TRANSLATE_NOOP("Velmora", "Publisher"), QT_TRANSLATE_NOOP("Velmora", "Encoder"),
    QT_TRANSLATE_NOOP("Velmora", "Tempo"),     QT_TRANSLATE_NOOP("Velmora", "Part of a compilation"),
    QT_TRANSLATE_NOOP("Velmora", "Picture")};

constexpr std::array channelModes{
    Word{"stereo", QT_TRANSLATE_NOOP("Velmora", "Stereo")},
    Word{"joint stereo", QT_TRANSLATE_NOOP("Velmora", "Joint stereo")},
    Word{"dual channel", QT_TRANSLATE_NOOP("Velmora", "Two channels")},
    Word{"mono", QT_TRANSLATE_NOOP("Velmora", "Mono")},
};

constexpr std::array rateModes{
    Word{"CBR", QT_TRANSLATE_NOOP("Velmora", "Constant (CBR)")},
    Word{"ABR", QT_TRANSLATE_NOOP("Velmora", "Average (ABR)")},
    Word{"VBR", QT_TRANSLATE_NOOP("Velmora", "Variable (VBR)")},
};

template <std::size_t size>
QString wordFor(const QString &key, const std::array<Word, size> &words)
{
    const auto found =
        std::find_if(words.begin(), words.end(), [&](const Word &word) { return key == QLatin1String(word.key); });
    return found == words.end() ? key : Velmora::tr(found->text);
}

QString commonText(CommonField field)
{
    return Velmora::tr(commonWords[std::size_t(field)]);
}

/// The name of a field that only one system has, or that has no word here, is the one in the format.
QString tagText(const SongField &field)
{
    const CommonField common = commonField(field.group, field.key);
    const QString name = common == CommonField::None ? field.key : commonText(common);
    QString item = field.picture || common == CommonField::Picture ? pictureKindText(field.item.toInt()) : field.item;
    if (field.group == SongGroup::Ape || field.group == SongGroup::Mp4)
        item = field.item.isEmpty() || common == CommonField::Picture ? QString() : item;
    while (item.endsWith(u':'))
        item.chop(1);
    return item.isEmpty() ? name : Velmora::tr("%1 (%2)").arg(name, item);
}

/// The name of what both files say in different systems.
QString sharedText(const SongField &field)
{
    const CommonField common = commonFieldNamed(field.key);
    if (common == CommonField::None)
        return field.item;
    return common == CommonField::Picture
               ? Velmora::tr("%1 (%2)").arg(commonText(common), pictureKindText(field.item.toInt()))
               : commonText(common);
}

QString timeText(qint64 milliseconds)
{
    constexpr qint64 second = 1000;
    constexpr qint64 minute = 60 * second;
    return QStringLiteral("%1:%2.%3")
        .arg(milliseconds / minute)
        .arg(milliseconds % minute / second, 2, 10, QLatin1Char('0'))
        .arg(milliseconds % second, 3, 10, QLatin1Char('0'));
}

QString pictureText(const SongPicture &picture, const QString &value)
{
    const QString size = QLocale().formattedDataSize(picture.bytes.size());
    QString text = QStringLiteral("%1, %2").arg(picture.mime, size);
    if (!picture.description.isEmpty())
        text += QStringLiteral(", ") + picture.description;
    return text + u'\n' + value.section(QStringLiteral(", "), -1).section(u'\n', 0, 0);
}

QString factText(const SongField &field, const QString &value)
{
    const auto is = [&](const char *key) { return field.key == QLatin1String(key); };
    const auto number = [&] { return QLocale().toString(value.toLongLong()); };
    if (is(factKey::length))
        return timeText(value.toLongLong());
    if (is(factKey::bitRate))
        return Velmora::tr("%1 kbit/s").arg(number());
    if (is(factKey::sampleRate))
        return Velmora::tr("%1 Hz").arg(number());
    if (is(factKey::channelMode))
        return wordFor(value, channelModes);
    if (is(factKey::rateMode))
        return wordFor(value, rateModes);
    const bool isCount =
        is(factKey::frames) || is(factKey::declaredFrames) || is(factKey::soundSize) || is(factKey::fileSize);
    return isCount ? number() : value;
}

QString lostText(const QList<SongField> &lost)
{
    QStringList names;
    for (const SongField &field : lost)
        names.append(visibleName(fieldText(field)));
    names.removeDuplicates();
    return names.join(Velmora::tr(", "));
}

} // namespace

QString pictureKindText(int kind)
{
    // In the numbers of ID3v2; the rarer ones are not told apart.
    switch (kind) {
    case 1:
    case 2:
        return Velmora::tr("File icon");
    case 3:
        return Velmora::tr("Front cover");
    case 4:
        return Velmora::tr("Back cover");
    case 5:
        return Velmora::tr("Booklet page");
    case 6:
        return Velmora::tr("Medium");
    case 7:
    case 8:
        return Velmora::tr("Artist");
    default:
        return kind == 0 ? Velmora::tr("Other kind") : Velmora::tr("Kind %1").arg(kind);
    }
}

QString fieldText(const SongField &field)
{
    if (isTag(field.group))
        return QStringLiteral("%1: %2").arg(systemName(field.group), visibleName(tagText(field)));
    if (field.group == SongGroup::Common)
        return Velmora::tr("Tag: %1").arg(visibleName(sharedText(field)));
    if (field.group == SongGroup::Contradiction)
        return Velmora::tr("Contradiction: %1").arg(commonText(commonFieldNamed(field.key)));
    return wordFor(field.key, factWords);
}

QString placeText(const SongRow &row)
{
    const SongField &field = row.field;
    if (field.group == SongGroup::Common)
        return Velmora::tr("%1 on the left, %2 on the right")
            .arg(systemName(row.systems.left), systemName(row.systems.right));
    if (isTag(field.group))
        return QStringLiteral("%1, %2").arg(systemName(field.group), visibleName(field.key));
    if (field.group == SongGroup::Contradiction)
        return Velmora::tr("Tags of one file that say different things");
    return field.group == SongGroup::Sound ? Velmora::tr("Sound") : Velmora::tr("File");
}

QString valueText(const SongRow &row, Side side)
{
    if (row.pictures[side])
        return pictureText(*row.pictures[side], row.values[side]);
    const bool isFact = row.field.group == SongGroup::Sound || row.field.group == SongGroup::File;
    return isFact && !row.values[side].isEmpty() ? factText(row.field, row.values[side]) : row.values[side];
}

QString verdictText(SongVerdict verdict)
{
    switch (verdict) {
    case SongVerdict::SameFile:
        return Velmora::tr("Both are the same file, byte for byte.");
    case SongVerdict::SameContents:
        return Velmora::tr("The same sound with the same tags; they are only arranged otherwise in the files.");
    case SongVerdict::SameSound:
        return Velmora::tr("The same sound, with other tags.");
    case SongVerdict::SameSamples:
        return Velmora::tr("The same sound, encoded otherwise without loss.");
    case SongVerdict::SameTags:
        return Velmora::tr("Other sound, with the same tags.");
    case SongVerdict::Different:
        break;
    }
    return Velmora::tr("Other sound, and other tags.");
}

QStringList remarkTexts(const Song &song, const QString &path, const QString &charset)
{
    QStringList remarks;
    QStringList fields;
    for (const SongField &field : contradictions(song.tags, charset))
        fields.append(commonText(commonFieldNamed(field.key)));
    if (!fields.isEmpty())
        remarks.append(Velmora::tr("The tags of %1 contradict each other: %2.")
                           .arg(shownPath(path), fields.join(Velmora::tr(", "))));
    for (const TagDamage &damage : song.tagDamage)
        remarks.append(damageText(damage, shownPath(path)));
    if (song.isCutOff)
        remarks.append(Velmora::tr("The sound of %1 is cut off.").arg(shownPath(path)));
    if (song.damagedPlaces > 0)
        remarks.append(
            Velmora::tr("The sound of %1 is damaged, places: %2.").arg(shownPath(path)).arg(song.damagedPlaces));
    return remarks;
}

QString faultText(const SongReading &reading, const QString &path)
{
    switch (reading.fault) {
    case SoundFault::CannotOpen:
        return Velmora::tr("Cannot open: %1").arg(shownPath(path));
    case SoundFault::NoSound:
        return Velmora::tr("No music of a format that is known: %1").arg(shownPath(path));
    case SoundFault::Damaged:
        return Velmora::tr("No sound can be found, as the file is damaged or cut off: %1").arg(shownPath(path));
    case SoundFault::TooLarge:
        return Velmora::tr("Of 2 GiB or more, or with tags larger than any that are read: %1").arg(shownPath(path));
    case SoundFault::None:
        break;
    }
    return {};
}

QString saveFaultText(const TagSave &save, const QString &path)
{
    switch (save.fault) {
    case TagSaveFault::Changed:
        return Velmora::tr("Not saved, as another program has changed it since it was read: %1").arg(shownPath(path));
    case TagSaveFault::NotPossible:
        return Velmora::tr("Not saved, as it has tags that cannot be written again: %1").arg(shownPath(path));
    case TagSaveFault::SoundChanged:
        return Velmora::tr("Not saved, as that would change the sound: %1").arg(shownPath(path));
    default:
        return Velmora::tr("Cannot save: %1").arg(shownPath(path));
    }
}

QString lossText(const TagSave &save, const QString &path)
{
    QStringList losses;
    if (!save.lost.isEmpty())
        losses.append(Velmora::tr("%1 cannot hold these fields as they ought to be:\n%2")
                          .arg(shownPath(path), lostText(save.lost)));
    if (save.losesUnread)
        losses.append(
            Velmora::tr("The tags of %1 are damaged. What cannot be read of them will no longer be in the file.")
                .arg(shownPath(path)));
    losses.append(Velmora::tr("Save it all the same?"));
    return losses.join(QStringLiteral("\n\n"));
}

} // namespace velmora
