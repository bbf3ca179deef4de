#include "filetypes/mp3/engine/song_file.h"

#include "core/message_digest.h"
#include "filetypes/mp3/engine/song_facts.h"
#include "filetypes/mp3/engine/tag_damage.h"
#include "filetypes/mp3/engine/tag_file.h"
#include "filetypes/mp3/engine/tag_reader.h"
#include "filetypes/mp3/engine/tag_stream.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <system_error>

namespace velmora {

namespace {

QByteArray hashOfAll(SoundBytes &bytes, const CancelFlag &cancel)
{
    MessageDigest digest(MessageDigest::Kind::Sha256);
    for (qint64 at = 0; at < bytes.size() && !cancel.isCancelled();) {
        const QByteArrayView piece = bytes.at(at, SoundBytes::most);
        if (piece.isEmpty())
            return {};
        digest.update(piece);
        at += piece.size();
    }
    return digest.value();
}

SongReading failed(SoundFault fault, const QString &detail = {})
{
    SongReading reading;
    reading.fault = fault;
    reading.detail = detail;
    return reading;
}

/// Puts right what the library takes for fields of APE.
void takeFindings(SongTags &tags, const TagFindings &findings)
{
    if (findings.hasUnreadableApe)
        tags.fields.removeIf([](const SongField &field) { return field.group == SongGroup::Ape; });
    for (SongField &field : tags.fields) {
        const auto old = findings.oldTexts.find(field.key);
        if (field.group != SongGroup::Ape || old == findings.oldTexts.end())
            continue;
        field.value = QString::fromLatin1(*old);
        field.oldBytes = *old;
    }
}

} // namespace

QString Song::fact(const char *key) const
{
    const auto found = std::find_if(facts.begin(), facts.end(),
                                    [key](const SongField &field) { return field.key == QLatin1String(key); });
    return found == facts.end() ? QString() : found->value;
}

SongReading readSong(QIODevice &device, const CancelFlag &cancel)
{
    SoundBytes bytes(device);
    const SoundLayout layout = findSound(bytes, cancel);
    if (!layout.ok())
        return failed(layout.fault);
    SongReading reading;
    Song &song = reading.song;
    song.format = layout.format;
    song.samplesHash = layout.samplesHash;
    song.damagedPlaces = layout.damagedPlaces;
    song.isCutOff = layout.isCutOff;
    TagFindings findings;
    if (layout.format == SoundFormat::Mpeg)
        findings = examineTags(bytes, layout.sound.first());
    if (findings.isTooLarge)
        return failed(SoundFault::TooLarge);
    song.tagDamage = findings.damage;
    song.soundHash = hashOfSound(bytes, layout, cancel);
    song.fileHash = hashOfAll(bytes, cancel);
    if (song.soundHash.isEmpty() || song.fileHash.isEmpty())
        return failed(SoundFault::CannotOpen, device.errorString());
    try {
        TagStream stream(device);
        const TagFile file(layout.format, stream, true);
        if (!file.isValid())
            return failed(SoundFault::Damaged);
        song.tags = readTags(file);
        takeFindings(song.tags, findings);
        addFacts(song, layout, file);
    } catch (const TagRefusal &) {
        return failed(SoundFault::TooLarge);
    }
    addFileFacts(song, bytes.size());
    return reading;
}

SongReading loadSong(const QString &path, const CancelFlag &cancel)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return failed(SoundFault::CannotOpen,
                      QString::fromStdString(std::make_error_code(std::errc::invalid_argument).message()));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return failed(SoundFault::CannotOpen, file.errorString());
    return readSong(file, cancel);
}

} // namespace velmora
