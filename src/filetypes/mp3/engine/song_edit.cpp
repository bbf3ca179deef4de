#include "filetypes/mp3/engine/song_edit.h"

#include "core/message_digest.h"
#include "core/safe_file.h"
#include "filetypes/mp3/engine/field_meaning.h"
#include "filetypes/mp3/engine/tag_file.h"
#include "filetypes/mp3/engine/tag_stream.h"
#include "filetypes/mp3/engine/tag_writer.h"

#include <QFile>
#include <QTemporaryFile>

#include <algorithm>
#include <utility>

namespace velmora {

namespace {

TagSave failed(TagSaveFault fault, const QString &detail = {})
{
    TagSave save;
    save.fault = fault;
    save.detail = detail;
    return save;
}

/// Copies what is left to read and returns its SHA-256; empty when that failed.
QByteArray copyAll(QIODevice &from, QIODevice &to, const CancelFlag &cancel)
{
    constexpr qint64 pieceLength = qint64(1) << 20;
    MessageDigest digest(MessageDigest::Kind::Sha256);
    while (!cancel.isCancelled()) {
        const QByteArray piece = from.read(pieceLength);
        if (piece.isEmpty())
            return digest.value();
        digest.update(piece);
        if (to.write(piece) != piece.size())
            return {};
    }
    return {};
}

void takeFields(QList<SongField> &fields, const SongField &thing)
{
    fields.removeIf([&](const SongField &field) { return field.isSameThing(thing); });
}

/// Puts fields where those of their system begin or are.
void putFields(QList<SongField> &fields, const QList<SongField> &more)
{
    for (const SongField &field : more) {
        const auto behind = std::find_if(fields.begin(), fields.end(),
                                         [&](const SongField &other) { return other.group > field.group; });
        fields.insert(behind, field);
    }
}

/// What of `wanted` is not in `there` with its value.
QList<SongField> missing(const SongTags &wanted, const SongTags &there)
{
    QList<SongField> rest = there.fields;
    QList<SongField> lost;
    for (const SongField &field : wanted.fields) {
        const auto same = std::find_if(rest.begin(), rest.end(), [&](const SongField &other) {
            return other.isSameThing(field) && other.value == field.value;
        });
        if (same == rest.end())
            lost.append(field);
        else
            rest.erase(same);
    }
    return lost;
}

template <typename Test>
bool hasDamage(const Song &song, Test test)
{
    return std::any_of(song.tagDamage.begin(), song.tagDamage.end(),
                       [&](const TagDamage &damage) { return test(damage.fault); });
}

bool writeInto(QFileDevice &copy, const Song &song, const SongTags &tags)
{
    TagEditStream stream(copy);
    TagFile file(song.format, stream, false);
    if (!file.isValid())
        return false;
    writeChanges(file, song.tags, tags);
    const bool isSaved = file.save(tags.id3v2Version == QLatin1String("2.4") ? 4 : 3);
    return isSaved && !stream.hasFailed() && copy.flush();
}

/// Puts the copy in the place of the file, if it still is what was read again.
TagSave replace(const QString &path, QFile &copy, SongReading reading, const CancelFlag &cancel)
{
    const SaveResult saved = saveFile(
        path, [&](QIODevice &device) { return copy.seek(0) && copyAll(copy, device, cancel) == reading.song.fileHash; },
        cancel);
    if (!saved.ok())
        return failed(TagSaveFault::CannotWrite, saved.error);
    TagSave save;
    save.song = std::move(reading.song);
    return save;
}

} // namespace

bool canHold(SoundFormat format, SongGroup group)
{
    switch (group) {
    case SongGroup::Id3v1:
    case SongGroup::Ape:
        return format == SoundFormat::Mpeg;
    case SongGroup::Info:
        return format == SoundFormat::Wav;
    case SongGroup::Id3v2:
    case SongGroup::Mp4:
    case SongGroup::Vorbis:
        return mainSystem(format) == group;
    default:
        return false;
    }
}

SongTags withCopied(const SongTags &from, SongTags to, const SongField &thing)
{
    takeFields(to.fields, thing);
    QList<SongField> copied;
    std::copy_if(from.fields.begin(), from.fields.end(), std::back_inserter(copied),
                 [&](const SongField &field) { return field.isSameThing(thing); });
    putFields(to.fields, copied);
    if (thing.group == SongGroup::Id3v2 && to.id3v2Version.isEmpty())
        to.id3v2Version = from.id3v2Version;
    return to;
}

SongTags withAllCopied(const SongTags &from, SongTags to, SoundFormat format)
{
    const auto isHeld = [format](const SongField &field) { return canHold(format, field.group); };
    to.fields.removeIf(isHeld);
    QList<SongField> copied;
    std::copy_if(from.fields.begin(), from.fields.end(), std::back_inserter(copied), isHeld);
    putFields(to.fields, copied);
    if (to.id3v2Version.isEmpty())
        to.id3v2Version = from.id3v2Version;
    return to;
}

TagSave saveTags(const QString &path, const Song &song, const SongTags &tags, Loss loss, const CancelFlag &cancel)
{
    if (song.tags.holdsEncrypted || hasDamage(song, forbidsSaving))
        return failed(TagSaveFault::NotPossible);
    QFile original(path);
    if (!original.open(QIODevice::ReadOnly))
        return failed(TagSaveFault::CannotRead, original.errorString());
    QTemporaryFile copy;
    if (!copy.open())
        return failed(TagSaveFault::CannotWrite, copy.errorString());
    const QByteArray hash = copyAll(original, copy, cancel);
    if (hash.isEmpty())
        return failed(TagSaveFault::CannotWrite, copy.errorString());
    if (hash != song.fileHash)
        return failed(TagSaveFault::Changed);
    original.close();
    try {
        if (!writeInto(copy, song, tags))
            return failed(TagSaveFault::CannotWrite, copy.errorString());
    } catch (const TagRefusal &) {
        return failed(TagSaveFault::NotPossible);
    }
    SongReading reading = readSong(copy, cancel);
    if (!reading.ok() || reading.song.soundHash != song.soundHash)
        return failed(TagSaveFault::SoundChanged);
    const QList<SongField> lost = missing(tags, reading.song.tags);
    const bool losesUnread = hasDamage(song, losesBySaving);
    if ((!lost.isEmpty() || losesUnread) && loss == Loss::Refused) {
        TagSave save = failed(TagSaveFault::WouldLose);
        save.lost = lost;
        save.losesUnread = losesUnread;
        return save;
    }
    return replace(path, copy, std::move(reading), cancel);
}

} // namespace velmora
