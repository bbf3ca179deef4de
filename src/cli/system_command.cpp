#include "cli/choices.h"
#include "cli/command.h"
#include "cli/keyed_output.h"
#include "cli/output_target.h"
#include "core/output_buffer.h"
#include "platform/environment_names.h"
#include "system/engine/snapshot_capture.h"
#include "system/engine/snapshot_file.h"

#include <QIODevice>

#include <algorithm>
#include <array>

namespace velmora::cli {

namespace {

constexpr const char *systemDetails =
    "Compare two snapshots of environment variables (.kvenv), services (.kvsvc) or startup items\n"
    "(.kvstartup), as the desktop program saves them.\n";

/// What files can hold.
struct Kind {
    const char *suffix;
    SnapshotForm form;
};

constexpr std::array kinds{
    ChoiceOf<Kind>{{"env", "environment variables"}, {".kvenv", SnapshotForm::TextObject}},
    ChoiceOf<Kind>{{"service", "services"}, {".kvsvc", SnapshotForm::ServiceArray}},
    ChoiceOf<Kind>{{"startup", "startup items"}, {".kvstartup", SnapshotForm::TextObject}},
};
constexpr auto kindChoices = choicesOf(kinds);
using KindRow = ChoiceOf<Kind>;

constexpr std::array systemOptions{
    OptionSpec{"kind", "KIND", "what the files hold, whatever they are called:", kindChoices},
    OptionSpec{"current", nullptr, "compare LEFT, an environment, with the environment of this process"},
};

constexpr std::array examples{
    Example{"See what has changed in the environment since it was kept:",
            "velmora-cli system --format list --current old.kvenv"},
};

struct Request {
    const KindRow *kind = nullptr;
    QString left;
    QString right; ///< empty for the environment of this process
};

/// What is compared, and how it compares.
struct Comparison {
    Request request;
    QList<KeyedRow> rows;
    PairCounts counts;
};

/// Null for a file whose name does not tell.
const KindRow *kindOfFile(const QString &path)
{
    const auto *kind = std::find_if(kinds.begin(), kinds.end(), [&path](const KindRow &row) {
        return path.endsWith(QLatin1String(row.value.suffix), Qt::CaseInsensitive);
    });
    return kind != kinds.end() ? &*kind : nullptr;
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
    if (arguments.has("kind")) {
        request.kind = &chosen(kinds, arguments, "kind");
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
    return writeCounts(device, comparison.counts);
}

bool writeList(QIODevice &device, const Comparison &comparison)
{
    return writeKeys(device, comparison.rows);
}

bool writeJson(QIODevice &device, const Comparison &comparison)
{
    OutputBuffer output(device);
    JsonWriter json(output);
    const Request &request = comparison.request;
    json.beginObject();
    json.text("kind", QLatin1String(request.kind->choice.name));
    json.text("left", request.left);
    writeText(json, "right", request.right, !request.right.isEmpty());
    json.key("items");
    json.beginList();
    for (const KeyedRow &row : comparison.rows) {
        json.beginObject();
        json.text("key", row.key);
        writeValues(json, row.status, row.left, row.right);
        json.endObject();
    }
    json.endList();
    json.endObject();
    return output.finish();
}

using Writer = bool (*)(QIODevice &device, const Comparison &comparison);

constexpr std::array formats{
    ChoiceOf<Writer>{{"summary", "one line with the numbers of items (the default)"}, writeSummary},
    ChoiceOf<Writer>{{"list", "one line for each item: = same, < left only, > right only, ! changed"}, writeList},
    ChoiceOf<Writer>{{"json", "every item with both values"}, writeJson},
};

/// Environments pair their names as this system does, wherever the files come from.
KeyMatch matchOf(const KindRow &kind)
{
    return &kind == &kinds.front() && environmentNamesIgnoreCase() ? KeyMatch::IgnoringCase : KeyMatch::Exact;
}

int runSystem(const Arguments &arguments, const Streams &streams)
{
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
        const SnapshotReading reading = loadSnapshot(path, request.kind->value.form);
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
        return Written{chosen(formats, arguments, "format").value(device, comparison),
                       comparison.counts.differences() > 0};
    });
}

} // namespace

Command systemCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"system",
            "[OPTION]... LEFT [RIGHT]",
            "compare two snapshots of variables, services or startup items",
            systemDetails,
            formatChoices,
            systemOptions,
            examples,
            runSystem};
}

} // namespace velmora::cli
