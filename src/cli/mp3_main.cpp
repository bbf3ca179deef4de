#include "cli/command.h"
#include "cli/json_writer.h"
#include "cli/keyed_output.h"
#include "cli/output_target.h"
#include "cli/part_program.h"
#include "core/output_buffer.h"
#include "core/text_encoding.h"
#include "filetypes/mp3/engine/song_compare.h"

#include <QIODevice>

#include <array>

// The part of velmora-cli that reads tags, which takes TagLib.

namespace velmora::cli {

namespace {

struct Comparison {
    QStringList paths;
    Sides<Song> songs;
    SongVerdict verdict = SongVerdict::SameFile;
    QList<SongRow> rows;
    PairCounts counts;
};

/// In the order of `SongVerdict`.
constexpr std::array verdictWords{"Same file",
                                  "Same sound, same tags, arranged otherwise",
                                  "Same sound, other tags",
                                  "Same samples, encoded otherwise",
                                  "Other sound, same tags",
                                  "Other sound, other tags"};

/// In the order of `TagFault`; a number follows where there is one.
constexpr std::array damageWords{"its ID3v2 tag is damaged, bytes that cannot be read",
                                 "an ID3v1 tag is not read: it is cut off, or is not the last thing in the file",
                                 "its Lyrics3 are cut off, or their length is wrong",
                                 "an APE tag is not read: it is before the sound, or before other tags",
                                 "its APE tag is damaged and not read: it has a beginning and no end",
                                 "its APE tag is damaged and not read: its length does not lead to its beginning",
                                 "its APE tag is damaged: its beginning is missing, or does not agree with its end",
                                 "its APE tag is damaged: it has fewer fields than it says",
                                 "its APE tag is damaged, bytes that belong to no field",
                                 "its APE tag is damaged, fields with names that are not allowed",
                                 "its APE tag is damaged, values that lead out of it",
                                 "its APE tag is damaged, fields with the name of another one",
                                 "its APE tag has fields with marks that were never laid down",
                                 "its APE tag has texts that are not in UTF-8"};

bool writeSummary(QIODevice &device, const Comparison &comparison)
{
    const QByteArray line = QByteArray(verdictWords[std::size_t(comparison.verdict)]) + '\n';
    return device.write(line) == line.size() && writeCounts(device, comparison.counts);
}

bool writeList(QIODevice &device, const Comparison &comparison)
{
    QList<KeyedRow> rows;
    for (const SongRow &row : comparison.rows) {
        QString name = QLatin1String(songGroupName(row.field.group)) + u' ' + row.field.key;
        if (!row.field.item.isEmpty())
            name += u' ' + row.field.item;
        rows.append({name, row.status, {}, {}, {}});
    }
    return writeKeys(device, rows);
}

bool writeJson(QIODevice &device, const Comparison &comparison)
{
    OutputBuffer output(device);
    JsonWriter json(output);
    json.beginObject();
    json.text("left", comparison.paths[0]);
    json.text("right", comparison.paths[1]);
    json.text("verdict", QLatin1String(songVerdictName(comparison.verdict)));
    json.boolean("sameSound", comparison.songs.left.soundHash == comparison.songs.right.soundHash);
    json.key("fields");
    json.beginList();
    for (const SongRow &row : comparison.rows) {
        json.beginObject();
        json.text("group", QLatin1String(songGroupName(row.field.group)));
        json.text("key", row.field.key);
        json.text("item", row.field.item);
        writeValues(json, row.status, row.values.left, row.values.right);
        json.endObject();
    }
    json.endList();
    json.endObject();
    return output.finish();
}

bool writeAs(const QString &format, QIODevice &device, const Comparison &comparison)
{
    if (format == QLatin1String("json"))
        return writeJson(device, comparison);
    return format == QLatin1String("list") ? writeList(device, comparison) : writeSummary(device, comparison);
}

QString faultText(const SongReading &reading)
{
    switch (reading.fault) {
    case SoundFault::CannotOpen:
        return reading.detail;
    case SoundFault::NoSound:
        return QStringLiteral("is no music of a format that is known");
    case SoundFault::TooLarge:
        return QStringLiteral("is of 2 GiB or more, or has tags larger than any that are read");
    case SoundFault::Damaged:
    case SoundFault::None:
        break;
    }
    return QStringLiteral("holds no sound that can be followed: it is damaged or cut off");
}

void warn(const Streams &streams, const QString &path, const Song &song)
{
    for (const TagDamage &damage : song.tagDamage) {
        QString text =
            QStringLiteral("warning: %1: %2").arg(path, QLatin1String(damageWords[std::size_t(damage.fault)]));
        if (damage.number > 0)
            text += QStringLiteral(": %1").arg(damage.number);
        complain(streams, damage.name.isEmpty() ? text : QStringLiteral("%1, first %2").arg(text, damage.name));
    }
    if (song.isCutOff)
        complain(streams, QStringLiteral("warning: %1: is cut off").arg(path));
    if (song.damagedPlaces > 0)
        complain(streams, QStringLiteral("warning: %1: damaged in %2 place(s)").arg(path).arg(song.damagedPlaces));
}

int compare(const Arguments &arguments, const Streams &streams)
{
    Comparison comparison;
    comparison.paths = arguments.paths();
    if (comparison.paths.size() != 2)
        return fail(streams, QStringLiteral("two paths are needed, %1 given").arg(comparison.paths.size()));
    const QString charset = arguments.value("old-text").value_or(QString());
    if (!charset.isEmpty() && (!TextEncoding::isKnownName(charset) || TextEncoding::fromName(charset).isAutomatic()))
        return fail(streams, QStringLiteral("unknown encoding \"%1\"").arg(charset));
    for (const Side side : bothSides) {
        const QString &path = comparison.paths[side == Side::Left ? 0 : 1];
        SongReading reading = loadSong(path);
        if (!reading.ok())
            return fail(streams, QStringLiteral("%1: %2").arg(path, faultText(reading)));
        warn(streams, path, reading.song);
        comparison.songs[side] = std::move(reading.song);
    }
    comparison.verdict = judgeSongs(comparison.songs.left, comparison.songs.right);
    comparison.rows = compareSongs(comparison.songs.left, comparison.songs.right, charset);
    for (const SongRow &row : comparison.rows)
        comparison.counts.add(row.status);
    const QString format = arguments.value("format").value_or(QString());
    return writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{writeAs(format, device, comparison), comparison.verdict != SongVerdict::SameFile};
    });
}

} // namespace

} // namespace velmora::cli

int main(int argc, char *argv[])
{
    return velmora::cli::partMain(argc, argv, velmora::cli::mp3Command(), velmora::cli::compare);
}
