#include "cli/choices.h"
#include "cli/command.h"
#include "cli/json_writer.h"
#include "cli/output_target.h"
#include "core/output_buffer.h"
#include "core/progress.h"
#include "core/visible_name.h"
#include "folder/engine/disk_usage_scan.h"
#include "folder/engine/usage_record.h"

#include <QDir>
#include <QFileInfo>
#include <QIODevice>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace velmora::cli {

namespace {

constexpr const char *usageDetails =
    "Measure how the space in FOLDER is divided among the folders in it, the largest first. Links are not\n"
    "followed, and a file with several names takes its room on the medium once.\n";

constexpr std::array usageOptions{
    OptionSpec{"depth", "LEVELS", "go no further down; what is below does not count (default: no limit)"},
    OptionSpec{"files", nullptr, "list files, not only folders"},
    OptionSpec{"hidden", nullptr, "count hidden files and folders"},
    OptionSpec{"since", "FILE",
               "tell by how much each has grown since: a folder snapshot, or what --format json wrote earlier"},
};

constexpr std::array examples{
    Example{"See where the space in the home folder went:", "velmora-cli usage --hidden ~ | head -20"},
    Example{"See a month later what has grown most:",
            "velmora-cli usage --format json --output usage.json /srv\n"
            "velmora-cli usage --since usage.json /srv | sort -k4 -rn | head -20"},
};

enum class Format : quint8 { Summary, Json };

constexpr std::array formats{
    ChoiceOf<Format>{
        {"summary", "a line for each folder: bytes, share, files, growth if asked for, and name (the default)"},
        Format::Summary},
    ChoiceOf<Format>{{"json", "the tree with all figures, and the largest files, as JSON"}, Format::Json},
};

void appendPadded(QByteArray &line, const QByteArray &text, int width)
{
    line.append(std::max<qsizetype>(0, width - text.size()), ' ');
    line += text;
}

QByteArray growthText(qint64 bytes)
{
    return bytes > 0 ? '+' + QByteArray::number(bytes) : QByteArray::number(bytes);
}

/// What was measured, by which request, and by how much it has grown: a number for each node, or none.
struct Measured {
    DiskUsageRequest request;
    DiskUsage usage;
    std::vector<qint64> growth = {};
};

void writeLines(OutputBuffer &output, const Measured &measured)
{
    const UsageTree &tree = measured.usage.tree;
    constexpr int sizeWidth = 15;
    constexpr int shareWidth = 7;
    constexpr int countWidth = 9;
    const QByteArray fileMark(measured.growth.empty() ? "" : "-"); // so that columns can be counted
    QByteArray &line = output.bytes();
    for (qint32 node = 0; node < tree.size(); ++node) {
        const UsageTree::Node &here = tree.node(node);
        appendPadded(line, QByteArray::number(here.size), sizeWidth);
        appendPadded(line, shareText(tree.share(node)).toLatin1(), shareWidth);
        line += '%';
        appendPadded(line, here.isFolder ? QByteArray::number(here.files) : fileMark, countWidth);
        if (!measured.growth.empty())
            appendPadded(line, growthText(measured.growth[std::size_t(node)]), sizeWidth);
        line.append(2 + 2 * qsizetype(here.depth), ' ');
        line += visibleName(tree.name(node)).toUtf8();
        line += here.isFolder ? "/\n" : "\n";
        output.passOn();
    }
}

void writeNode(JsonWriter &json, const Measured &measured, qint32 node)
{
    const UsageTree &tree = measured.usage.tree;
    const UsageTree::Node &here = tree.node(node);
    json.beginObject();
    json.text("name", tree.name(node).toString());
    json.number("depth", here.depth);
    json.boolean("folder", here.isFolder);
    json.number("size", here.size);
    json.number("onDisk", here.allocated);
    json.text("percent", shareText(tree.share(node)));
    if (here.isFolder) {
        json.number("files", here.files);
        json.number("folders", here.folders);
    }
    if (here.countsElsewhere)
        json.boolean("countsElsewhere", true);
    if (!measured.growth.empty())
        json.number("growth", measured.growth[std::size_t(node)]);
    json.endObject();
}

void writeJson(OutputBuffer &output, const Measured &measured)
{
    const DiskUsage &usage = measured.usage;
    JsonWriter json(output);
    json.beginObject();
    json.text("folder", usage.tree.rootPath());
    json.number("depth", measured.request.maxDepth);
    json.boolean("files", measured.request.listsFiles);
    json.boolean("hidden", measured.request.withHidden);
    json.number("links", usage.links);
    json.number("sharedFiles", usage.sharedFiles);
    json.number("milliseconds", usage.milliseconds);
    json.key("unreadable");
    json.beginList();
    for (const QString &path : usage.unreadable)
        json.text(path);
    json.endList();
    json.key("largest");
    json.beginList();
    for (const LargeFile &file : usage.largest) {
        json.beginObject();
        json.text("path", file.path);
        json.number("size", file.size);
        json.endObject();
    }
    json.endList();
    json.key("nodes");
    json.beginList();
    for (qint32 node = 0; node < usage.tree.size(); ++node)
        writeNode(json, measured, node);
    json.endList();
    json.endObject();
}

/// Reads the arguments; returns what is wrong with them, empty when nothing is.
QString takeRequest(const Arguments &arguments, DiskUsageRequest &request)
{
    if (arguments.paths().size() != 1)
        return QStringLiteral("one folder is needed, %1 given").arg(arguments.paths().size());
    const QString &given = arguments.paths().first();
    if (!QFileInfo(given).isDir())
        return QStringLiteral("%1: is no folder").arg(given);
    request.folder = QDir::cleanPath(QDir(QDir::fromNativeSeparators(given)).absolutePath());
    request.listsFiles = arguments.has("files");
    request.withHidden = arguments.has("hidden");
    if (const std::optional<QString> depth = arguments.value("depth")) {
        bool isNumber = false;
        request.maxDepth = depth->toInt(&isNumber);
        if (!isNumber || request.maxDepth < 0)
            return QStringLiteral("\"%1\" is no number of levels").arg(*depth);
    }
    return {};
}

/// Why nothing can be said to have grown since `record`; empty when it can: only what was looked at in the same way.
QString problemOf(const UsageRecord &record, const DiskUsageRequest &request)
{
    switch (record.fault) {
    case UsageRecord::Fault::CannotOpen:
        return record.error.isEmpty() ? QStringLiteral("cannot be opened") : record.error;
    case UsageRecord::Fault::Unknown:
        return QStringLiteral("is neither a folder snapshot nor written by usage --format json");
    case UsageRecord::Fault::None:
        break;
    }
    if (record.maxDepth != request.maxDepth)
        return record.maxDepth == 0 ? QStringLiteral("has all levels: leave out --depth")
                                    : QStringLiteral("was made with --depth %1").arg(record.maxDepth);
    if (record.withHidden != request.withHidden)
        return record.withHidden ? QStringLiteral("was made with --hidden")
                                 : QStringLiteral("has no hidden files: leave out --hidden");
    if (request.listsFiles && !record.listsFiles)
        return QStringLiteral("was made without --files");
    return {};
}

int runUsage(const Arguments &arguments, const Streams &streams)
{
    Measured measured;
    DiskUsageRequest &request = measured.request;
    if (const QString error = takeRequest(arguments, request); !error.isEmpty())
        return fail(streams, error);
    Progress progress;
    UsageRecord earlier;
    const std::optional<QString> since = arguments.value("since");
    if (since) {
        earlier = loadUsageRecord(*since, {}, progress);
        if (const QString problem = problemOf(earlier, request); !problem.isEmpty())
            return fail(streams, QStringLiteral("%1: %2").arg(visibleName(*since), problem));
    }
    DiskUsage &usage = measured.usage;
    usage = scanDiskUsage(request, {}, progress);
    if (since)
        measured.growth = usageGrowth(usage.tree, earlier.tree);
    for (const QString &path : std::as_const(usage.unreadable))
        complain(streams, QStringLiteral("%1: cannot be read").arg(visibleName(path)));
    const int status = writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        OutputBuffer output(device);
        if (chosen(formats, arguments, "format").value == Format::Json)
            writeJson(output, measured);
        else
            writeLines(output, measured);
        return Written{output.finish(), false};
    });
    return usage.unreadable.isEmpty() ? status : int(Trouble);
}

} // namespace

Command usageCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"usage",
            "[OPTION]... FOLDER",
            "measure where the space in a folder went",
            usageDetails,
            formatChoices,
            usageOptions,
            examples,
            runUsage,
            "0 when all of it was read, 2 when something was not"};
}

} // namespace velmora::cli
