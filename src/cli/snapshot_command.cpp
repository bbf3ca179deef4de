#include "cli/choices.h"
#include "cli/command.h"
#include "cli/folder_request.h"
#include "cli/json_writer.h"
#include "cli/output_target.h"
#include "cli/snapshot_words.h"
#include "core/iso_times.h"
#include "core/output_buffer.h"
#include "core/visible_name.h"
#include "filetypes/checksum/engine/checksum_list.h"
#include "folder/engine/folder_snapshot_sides.h"
#include "vfs/local_folder.h"

#include <QFileInfo>
#include <QIODevice>

#include <algorithm>
#include <array>

namespace velmora::cli {

namespace {

constexpr const char *snapshotDetails =
    "create writes what files FOLDER has, with sizes and times, as a snapshot (.kvsnapshot). compare compares two\n"
    "snapshots or folders, or one with the other. verify compares the files that SNAPSHOT names with those in its\n"
    "folder, or in FOLDER; where the snapshot has checksums these decide, and the times do not matter.\n";

constexpr std::array snapshotOptions{
    OptionSpec{"digests", nullptr, "read the files of folders, too, and keep or compare their SHA-256 (slower)"},
};

constexpr std::array examples{
    Example{"Keep the state of a folder, and see later what has become of it:",
            "velmora-cli snapshot create --digests --output photos.kvsnapshot photos\n"
            "velmora-cli snapshot compare --format list photos.kvsnapshot photos"},
    Example{"Look whether a copy is still whole:", "velmora-cli snapshot verify photos.kvsnapshot /media/copy/photos"},
};

enum class Format : quint8 { Summary, List, Json, Sha256Sum };

constexpr std::array formats{
    ChoiceOf<Format>{{"summary", "one line with the numbers of files; of create the snapshot (the default)"},
                     Format::Summary},
    ChoiceOf<Format>{{"list", "one line for each file: = same, < left only, > right only, ! changed"}, Format::List},
    ChoiceOf<Format>{{"json", "every file with what both sides know of it; of create the snapshot"}, Format::Json},
    ChoiceOf<Format>{{"sha256sum", "of create a list as sha256sum writes it, of verify what sha256sum --check says"},
                     Format::Sha256Sum},
};

/// What was compared.
struct Comparison {
    Sides<QString> paths;
    FolderSnapshotComparison found;
    bool verifies = false; ///< the right side is to be what the left one says
};

/// Whether a file is not what the snapshot says of it, for `verify`.
bool hasFailed(const FolderSnapshotRow &row)
{
    return row.entries.left != FolderSnapshotRow::none && row.status != PairStatus::Same &&
           row.remark != FolderSnapshotRemark::TimeOnly;
}

void writeLine(OutputBuffer &output, const QString &line)
{
    const QByteArray bytes = line.toUtf8();
    output << std::string_view(bytes.constData(), std::size_t(bytes.size())) << '\n';
}

void writeSummary(OutputBuffer &output, const Comparison &comparison)
{
    const FolderSnapshotComparison &found = comparison.found;
    writeLine(output, QStringLiteral("Total: %1 files | Same: %2 | Changed: %3 | Left only: %4 | Right only: %5 | "
                                     "Moved: %6 | Contents alone: %7")
                          .arg(found.counts.all())
                          .arg(found.counts.same)
                          .arg(found.counts.changed)
                          .arg(found.counts.leftOnly)
                          .arg(found.counts.rightOnly)
                          .arg(found.moved)
                          .arg(found.contentOnly));
}

/// What stands behind the name in a list.
QString remarkText(const FolderSnapshotComparison &found, qsizetype row)
{
    switch (found.rows[std::size_t(row)].remark) {
    case FolderSnapshotRemark::None:
        break;
    case FolderSnapshotRemark::Moved:
        return (found.rows[std::size_t(row)].status == PairStatus::LeftOnly ? QStringLiteral("  moved to ")
                                                                            : QStringLiteral("  moved from ")) +
               visibleName(found.partner(row)->path);
    case FolderSnapshotRemark::ContentOnly:
        return QStringLiteral("  contents alone");
    case FolderSnapshotRemark::TimeOnly:
        return QStringLiteral("  time alone");
    }
    return {};
}

void writeList(OutputBuffer &output, const Comparison &comparison)
{
    static constexpr std::array signs{u'=', u'!', u'<', u'>'};
    const FolderSnapshotComparison &found = comparison.found;
    for (std::size_t i = 0; i < found.rows.size(); ++i) {
        const auto row = qsizetype(i);
        writeLine(output, QChar(signs[std::size_t(found.rows[i].status)]) + QLatin1String(" ") +
                              visibleName(found.path(row)) + remarkText(found, row));
    }
}

/// As `sha256sum --check` has it.
void writeVerdicts(OutputBuffer &output, const Comparison &comparison)
{
    const FolderSnapshotComparison &found = comparison.found;
    for (std::size_t i = 0; i < found.rows.size(); ++i) {
        const FolderSnapshotRow &row = found.rows[i];
        if (row.entries.left == FolderSnapshotRow::none)
            continue;
        const char *verdict = !hasFailed(row)                      ? ": OK"
                              : row.status == PairStatus::LeftOnly ? ": FAILED open or read"
                                                                   : ": FAILED";
        writeLine(output, visibleName(found.path(qsizetype(i))) + QLatin1String(verdict));
    }
}

void writeJsonEntry(JsonWriter &json, std::string_view key, const FolderSnapshotEntry *entry, IsoTimes &times)
{
    json.key(key);
    if (!entry) {
        json.null();
        return;
    }
    json.beginObject();
    json.number("size", entry->size);
    if (entry->modifiedMs)
        json.text("modified", QString::fromLatin1(times.text(*entry->modifiedMs)));
    if (!entry->digest.isEmpty())
        json.text("sha256", QString::fromLatin1(entry->digest.toHex()));
    json.endObject();
}

void writeJson(OutputBuffer &output, const Comparison &comparison)
{
    static constexpr std::array<qint64, 4> statusNumbers{0, 3, 1, 2}; // those of folder comparisons
    static constexpr std::array remarks{"", "moved", "contentOnly", "timeOnly"};
    const FolderSnapshotComparison &found = comparison.found;
    IsoTimes times;
    JsonWriter json(output);
    json.beginObject();
    json.text("left", comparison.paths.left);
    json.text("right", comparison.paths.right);
    json.key("items");
    json.beginList();
    for (std::size_t i = 0; i < found.rows.size(); ++i) {
        const auto row = qsizetype(i);
        json.beginObject();
        json.text("path", found.path(row));
        json.number("status", statusNumbers[std::size_t(found.rows[i].status)]);
        writeJsonEntry(json, "left", found.entry(row, Side::Left), times);
        writeJsonEntry(json, "right", found.entry(row, Side::Right), times);
        if (found.rows[i].remark != FolderSnapshotRemark::None)
            json.text("remark", QLatin1String(remarks[std::size_t(found.rows[i].remark)]));
        if (const FolderSnapshotEntry *partner = found.partner(row))
            json.text("other", partner->path);
        json.endObject();
    }
    json.endList();
    json.endObject();
}

void write(OutputBuffer &output, const Comparison &comparison, Format format)
{
    static constexpr std::array writers{writeSummary, writeList, writeJson, writeVerdicts};
    writers[std::size_t(format)](output, comparison);
}

/// A list of checksums; files that cannot be read have no line.
bool writeChecksums(QIODevice &device, const FolderSnapshot &snapshot)
{
    OutputBuffer output(device);
    for (const FolderSnapshotEntry &entry : snapshot.entries) {
        if (entry.digest.isEmpty())
            continue;
        const QByteArray line = checksumLine(ChecksumForm::Gnu, {entry.path, ChecksumAlgorithm::Sha256, entry.digest});
        output << std::string_view(line.constData(), std::size_t(line.size()));
    }
    return output.finish();
}

FolderSnapshotDigests digestsFor(bool wanted)
{
    return wanted ? FolderSnapshotDigests::Sha256 : FolderSnapshotDigests::None;
}

int runCreate(const Arguments &arguments, const Streams &streams)
{
    const Format format = chosen(formats, arguments, "format").value;
    if (arguments.paths().size() != 2)
        return fail(streams, QStringLiteral("create needs one folder, %1 given").arg(arguments.paths().size() - 1));
    if (format == Format::List)
        return fail(streams, QStringLiteral("create has no such format"));
    const QString &folder = arguments.paths()[1];
    if (!QFileInfo(folder).isDir())
        return fail(streams, QStringLiteral("%1: is no folder").arg(folder));
    Progress silent;
    const bool isList = format == Format::Sha256Sum;
    const FolderSnapshotScan scan =
        scanFolderSnapshot(localFolder(folder), digestsFor(isList || arguments.has("digests")), {}, silent);
    const bool isIncomplete = complainAbout(streams, scan.problems);
    const int status = writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{isList ? writeChecksums(device, scan.snapshot) : writeFolderSnapshot(device, scan.snapshot, {})};
    });
    return isIncomplete ? Trouble : status;
}

/// Compares, writes and returns the exit status.
int runOn(Comparison comparison, FolderSnapshotDigests digests, const Arguments &arguments, const Streams &streams)
{
    Progress silent;
    Sides<FolderSnapshotSide> sides = readFolderSnapshotSides(comparison.paths, digests, {}, silent);
    bool isIncomplete = false;
    for (const Side side : bothSides) {
        const FolderSnapshotSide &one = sides[side];
        const QString &path = comparison.paths[side];
        if (one.isMissing)
            return fail(streams, QStringLiteral("%1: is neither a folder nor a snapshot").arg(path));
        if (!one.reading.ok())
            return fail(streams, QStringLiteral("%1: %2").arg(path, snapshotFaultText(one.reading)));
        if (one.reading.repeated > 0)
            complain(streams, QStringLiteral("warning: %1: %2 paths are there more than once; the last one counts")
                                  .arg(path)
                                  .arg(one.reading.repeated));
        isIncomplete |= complainAbout(streams, one.problems);
    }
    comparison.found =
        compareFolderSnapshots({std::move(sides.left.reading.snapshot), std::move(sides.right.reading.snapshot)});
    const auto &rows = comparison.found.rows;
    const bool differ = comparison.verifies ? std::any_of(rows.begin(), rows.end(), hasFailed)
                                            : comparison.found.counts.differences() > 0;
    const int status = writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        OutputBuffer output(device);
        write(output, comparison, chosen(formats, arguments, "format").value);
        return Written{output.finish(), differ};
    });
    return isIncomplete ? Trouble : status;
}

int runCompare(const Arguments &arguments, const Streams &streams)
{
    const QStringList paths = arguments.paths().mid(1);
    if (paths.size() != 2)
        return fail(streams, QStringLiteral("compare needs two paths, %1 given").arg(paths.size()));
    if (chosen(formats, arguments, "format").value == Format::Sha256Sum)
        return fail(streams, QStringLiteral("compare has no such format"));
    return runOn({{paths[0], paths[1]}, {}, false}, digestsFor(arguments.has("digests")), arguments, streams);
}

int runVerify(const Arguments &arguments, const Streams &streams)
{
    const QStringList paths = arguments.paths().mid(1);
    if (paths.isEmpty() || paths.size() > 2)
        return fail(streams, QStringLiteral("verify needs a snapshot and maybe a folder, %1 given").arg(paths.size()));
    QString folder = paths.value(1);
    if (folder.isEmpty()) {
        Progress silent;
        const FolderSnapshotReading reading = loadFolderSnapshot(paths[0], {}, silent);
        if (!reading.ok())
            return fail(streams, QStringLiteral("%1: %2").arg(paths[0], snapshotFaultText(reading)));
        folder = reading.snapshot.root;
    }
    return runOn({{paths[0], folder}, {}, true}, FolderSnapshotDigests::Sha256, arguments, streams);
}

int runSnapshot(const Arguments &arguments, const Streams &streams)
{
    const QString action = arguments.paths().value(0);
    if (action == QLatin1String("create"))
        return runCreate(arguments, streams);
    if (action == QLatin1String("compare"))
        return runCompare(arguments, streams);
    if (action == QLatin1String("verify"))
        return runVerify(arguments, streams);
    return fail(streams, QStringLiteral("create, compare or verify is needed before the paths"));
}

} // namespace

Command snapshotCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"snapshot",
            "create [OPTION]... FOLDER | compare [OPTION]... LEFT RIGHT | verify [OPTION]... SNAPSHOT [FOLDER]",
            "keep the state of a folder, compare it later",
            snapshotDetails,
            formatChoices,
            snapshotOptions,
            examples,
            runSnapshot};
}

} // namespace velmora::cli
