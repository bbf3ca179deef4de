#include "filetypes/mp3/engine/field_meaning.h"
#include "filetypes/mp3/engine/song_compare.h"
#include "filetypes/mp3/engine/song_edit.h"
#include "filetypes/mp3/engine/tag_conversion.h"
#include "filetypes/registry/engine/reg_writer.h"
#include "filetypes/registry/engine/registry_file.h"
#include "filetypes/registry/engine/registry_noise.h"
#include "filetypes/registry/engine/registry_patch.h"
#include "filetypes/version/engine/file_version.h"
#include "filetypes/version/engine/program_file.h"
#include "filetypes/version/engine/version_compare.h"
#include "fuzz/targets.h"

#include <QBuffer>

#include <algorithm>

namespace velmora::fuzz {

namespace {

class BytesFile final : public OpenFile {
public:
    explicit BytesFile(QByteArray bytes) : m_bytes(std::move(bytes)) {}
    FilePiece readAt(qint64 offset, char *buffer, qint64 length) override
    {
        require(offset >= 0 && length >= 0, "what is read is a range");
        const QByteArray piece = m_bytes.mid(offset, length);
        std::copy(piece.begin(), piece.end(), buffer);
        return {piece.size(), false};
    }
    std::optional<qint64> size() const override { return m_bytes.size(); }
    void expect(qint64, qint64) override {}
    std::optional<FileIdentity> identity() const override { return std::nullopt; }

private:
    QByteArray m_bytes;
};

} // namespace

void program(const QByteArray &input)
{
    BytesFile file(input);
    const QString version = readFileVersion(file);
    require(version.isEmpty() || version.count(u'.') == 3, "a version is one or none");
    const ProgramReading reading = readProgram(input);
    require(reading.ok() || reading.facts.values.isEmpty(), "where there is a fault nothing is read");
    for (const FactValue &value : reading.facts.values)
        require(value.offset >= -1 && value.offset <= input.size(), "every fact stands in the file");
    if (!reading.ok())
        return;
    require(judgeVersions(reading.facts, reading.facts) == VersionVerdict::SameFile, "a file is the same as itself");
    for (const VersionRow &row : compareVersions(reading.facts, reading.facts))
        require(row.status == PairStatus::Same, "a fact is the same as itself");
}

void registry(const QByteArray &input)
{
    const RegistryReading reading = readRegistry(input);
    require(reading.ok() || reading.tree.keys.empty(), "where there is a fault nothing is read");
    const QByteArray written = registryFile(reading.tree);
    const RegistryTree again = readRegistry(written).tree;
    require(registryFile(again) == written, "entries are read as they were written");
    const RegistryComparison comparison = compareRegistry(reading.tree, again, {});
    require(comparison.counts.differences() == 0, "and are the same as themselves");
    require(registryPatch(comparison, Side::Left).keys.empty(), "what is the same needs no patch");
}

void song(const QByteArray &input)
{
    QBuffer buffer;
    buffer.setData(input);
    buffer.open(QIODevice::ReadOnly);
    const SongReading reading = readSong(buffer);
    require(reading.ok() || reading.song.tags.fields.isEmpty(), "where there is a fault nothing is read");
    if (!reading.ok())
        return;
    require(judgeSongs(reading.song, reading.song) == SongVerdict::SameFile, "a song is the same as itself");
    for (const SongRow &row : compareSongs(reading.song, reading.song, QStringLiteral("GBK")))
        require(row.status == PairStatus::Same, "a field is the same as itself");
    const SongTags copied = withAllCopied(reading.song.tags, {}, reading.song.format);
    require(areSame(withAllCopied(copied, reading.song.tags, reading.song.format), reading.song.tags),
            "what was copied comes back");
    const SystemTags from{reading.song.tags, usedSystem(reading.song.tags, reading.song.format)};
    for (const SongGroup system : {SongGroup::Id3v2, SongGroup::Vorbis, SongGroup::Mp4}) {
        const SongTags made = withAllConverted(from, {{}, system}, QStringLiteral("GBK"));
        for (const SongField &field : made.fields)
            require(field.group == system && meaningOf(field), "what is converted means something in its system");
        const SongTags again = withAllConverted({made, system}, {{}, system}, {});
        require(areSame(again, made), "and means the same there");
    }
}

} // namespace velmora::fuzz
