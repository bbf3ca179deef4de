#include "cli/command.h"
#include "cli/json_text.h"
#include "cli/output_target.h"
#include "core/output_buffer.h"
#include "platform/environment_names.h"
#include "system/engine/snapshot_capture.h"
#include "system/engine/snapshot_compare.h"
#include "system/engine/snapshot_file.h"

#include <QIODevice>

#include <algorithm>
#include <array>

namespace velmora::cli {

namespace {

constexpr std::array systemOptions{
    OptionSpec{"format", "FORMAT",
               "summary  one line with the numbers of items (the default)\n"
               "list     one line for each item: = same, < left only, > right only, ! changed\n"
               "json     every item with both values"},
    OptionSpec{"output", "FILE", "write to FILE, which is replaced in one step, instead of standard output"},
    OptionSpec{"kind", "KIND", "what the files hold, whatever they are called: env, service or startup"},
    OptionSpec{"current", nullptr, "compare LEFT, an environment, with the environment of this process"},
};

constexpr const char *systemDetails =
    "Compare two snapshots of environment variables (.kvenv), services (.kvsvc) or startup items\n"
    "(.kvstartup), as the desktop program saves them.\n";

/// What files can hold.
struct Kind {
    const char *name;
    const char *suffix;
    SnapshotForm form;
};

constexpr std::array kinds{
    Kind{"env", ".kvenv", SnapshotForm::TextObject},
    Kind{"service", ".kvsvc", SnapshotForm::ServiceArray},
    Kind{"startup", ".kvstartup", SnapshotForm::TextObject},
};

struct Request {
    const Kind *kind = nullptr;
    QString left;
    QString right; ///< empty for the environment of this process
};

/// What is compared, and how it compares.
struct Comparison {
    Request request;
    QList<SnapshotRow> rows;
    SnapshotCounts counts;
};

template <typename Matches>
const Kind *findKind(Matches matches)
{
    const auto kind = std::find_if(kinds.begin(), kinds.end(), matches);
    return kind != kinds.end() ? &*kind : nullptr;
}

const Kind *kindOfFile(const QString &path)
{
    return findKind(
        [&path](const Kind &kind) { return path.endsWith(QLatin1String(kind.suffix), Qt::CaseInsensitive); });
}

/// Reads the arguments; returns what is wrong with them, empty when nothing is.
QString takeRequest(const Arguments &arguments, Request &request)
{
    const bool current = arguments.has("current");
    const qsizetype wanted = current ? 1 : 2;
    if (arguments.paths().size() != wanted)
        return QStringLiteral("%1 needed, %2 given")
            .arg(current ? QStringLiteral("one path is") : QStringLiteral("two paths are"))
            .arg(arguments.paths().size());
    request.left = arguments.paths()[0];
    request.right = arguments.paths().value(1);
    if (const std::optional<QString> name = arguments.value("kind")) {
        request.kind = findKind([&name](const Kind &kind) { return *name == QLatin1String(kind.name); });
        if (!request.kind)
            return QStringLiteral("unknown kind \"%1\"").arg(*name);
    } else {
        request.kind = kindOfFile(request.left);
        if (!request.kind)
            return QStringLiteral("%1: the name does not tell the kind of snapshot; --kind does").arg(request.left);
        if (!current && kindOfFile(request.right) && kindOfFile(request.right) != request.kind)
            return QStringLiteral("%1 and %2 are snapshots of different kinds").arg(request.left, request.right);
    }
    if (current && request.kind != &kinds.front())
        return QStringLiteral("only environments can be compared with --current");
    return {};
}

QString faultText(const SnapshotReading &reading)
{
    switch (reading.fault) {
    case SnapshotFault::CannotOpen:
        return reading.detail;
    case SnapshotFault::TooLarge:
        return QStringLiteral("is larger than any snapshot");
    case SnapshotFault::NotJson:
        return QStringLiteral("is no JSON: ") + reading.detail;
    case SnapshotFault::WrongRoot:
        return QStringLiteral("is no snapshot of this kind");
    case SnapshotFault::NotText:
        return QStringLiteral("\"%1\" is no text").arg(reading.detail);
    case SnapshotFault::NoName:
        return QStringLiteral("has a service without a name");
    case SnapshotFault::None:
        break;
    }
    return {};
}

bool writeSummary(QIODevice &device, const Comparison &comparison)
{
    const SnapshotCounts &counts = comparison.counts;
    const QByteArray line =
        QStringLiteral("Total: %1 items | Same: %2 | Changed: %3 | Left only: %4 | Right only: %5\n")
            .arg(comparison.rows.size())
            .arg(counts.same)
            .arg(counts.changed)
            .arg(counts.leftOnly)
            .arg(counts.rightOnly)
            .toLatin1();
    return device.write(line) == line.size();
}

/// The numbers of statuses that folder comparisons have.
int statusNumber(SnapshotStatus status)
{
    static constexpr std::array numbers{0, 3, 1, 2};
    return numbers[std::size_t(status)];
}

bool writeList(QIODevice &device, const Comparison &comparison)
{
    OutputBuffer output(device);
    for (const SnapshotRow &row : comparison.rows) {
        static constexpr std::string_view signs = "=!<>";
        const QByteArray key = row.key.toUtf8();
        output << signs[std::size_t(row.status)] << ' ' << std::string_view(key.constData(), std::size_t(key.size()))
               << '\n';
    }
    return output.finish();
}

void writeText(OutputBuffer &output, std::string_view name, const QString &text, bool isThere)
{
    output << ",\"" << name << "\":";
    if (isThere)
        writeJsonString(output, text);
    else
        output << "null";
}

bool writeJson(QIODevice &device, const Comparison &comparison)
{
    OutputBuffer output(device);
    const Request &request = comparison.request;
    output << "{\n\"kind\":\"" << request.kind->name << "\"";
    writeText(output, "left", request.left, true);
    writeText(output, "right", request.right, !request.right.isEmpty());
    output << ",\n\"items\":[";
    std::string_view separator = "\n";
    for (const SnapshotRow &row : comparison.rows) {
        output << separator << "{\"key\":";
        writeJsonString(output, row.key);
        output << ",\"status\":" << qint64(statusNumber(row.status));
        writeText(output, "left", row.left, row.status != SnapshotStatus::RightOnly);
        writeText(output, "right", row.right, row.status != SnapshotStatus::LeftOnly);
        output << '}';
        separator = ",\n";
    }
    output << "\n]\n}\n";
    return output.finish();
}

struct Format {
    const char *name;
    bool (*write)(QIODevice &device, const Comparison &comparison);
};

// The first one is the default.
constexpr std::array formats{
    Format{"summary", writeSummary},
    Format{"list", writeList},
    Format{"json", writeJson},
};

const Format *findFormat(const Arguments &arguments)
{
    const QString name = arguments.value("format").value_or(QLatin1String(formats.front().name));
    const auto isNamed = [&name](const Format &format) { return name == QLatin1String(format.name); };
    const auto format = std::find_if(formats.begin(), formats.end(), isNamed);
    return format != formats.end() ? &*format : nullptr;
}

/// Environments pair their names as this system does, wherever the files come from.
KeyMatch matchOf(const Kind &kind)
{
    return &kind == &kinds.front() && environmentNamesIgnoreCase() ? KeyMatch::IgnoringCase : KeyMatch::Exact;
}

int runSystem(const Arguments &arguments, const Streams &streams)
{
    const Format *const format = findFormat(arguments);
    if (!format)
        return fail(streams, QStringLiteral("unknown format \"%1\"").arg(*arguments.value("format")));
    Comparison comparison;
    Request &request = comparison.request;
    if (const QString error = takeRequest(arguments, request); !error.isEmpty())
        return fail(streams, error);

    std::array<Snapshot, 2> snapshots;
    for (std::size_t side = 0; side < snapshots.size(); ++side) {
        const QString &path = side == 0 ? request.left : request.right;
        if (path.isEmpty() && arguments.has("current")) {
            snapshots[side] = captureEnvironment();
            continue;
        }
        const SnapshotReading reading = loadSnapshot(path, request.kind->form);
        if (!reading.ok())
            return fail(streams, QStringLiteral("%1: %2").arg(path, faultText(reading)));
        if (reading.repeated > 0)
            complain(streams, QStringLiteral("warning: %1: %2 names are there more than once; the last one counts")
                                  .arg(path)
                                  .arg(reading.repeated));
        snapshots[side] = reading.snapshot;
    }
    comparison.rows = compareSnapshots(snapshots[0], snapshots[1], matchOf(*request.kind));
    comparison.counts = countRows(comparison.rows);
    return writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{format->write(device, comparison), comparison.counts.differences() > 0};
    });
}

} // namespace

const Command &systemCommand()
{
    static constexpr Command command{"system",
                                     "[OPTION]... LEFT [RIGHT]",
                                     "compare two snapshots of variables, services or startup items",
                                     systemDetails,
                                     systemOptions,
                                     runSystem};
    return command;
}

} // namespace velmora::cli
