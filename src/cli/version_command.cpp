#include "cli/choices.h"
#include "cli/command.h"
#include "cli/keyed_output.h"
#include "cli/output_target.h"
#include "core/output_buffer.h"
#include "core/sides.h"
#include "filetypes/version/engine/program_file.h"
#include "filetypes/version/engine/version_compare.h"

#include <QIODevice>

#include <array>

namespace velmora::cli {

namespace {

constexpr const char *versionDetails =
    "Compare what two programs or libraries say of themselves, and what else tells builds apart:\n"
    "version resource, headers, imports, sections, signer. Windows (PE) and ELF files, on every system.\n"
    "Signatures are not verified.\n";

constexpr std::array examples{
    Example{"See which of two libraries is newer:", "velmora-cli version old/qt6core.dll new/qt6core.dll"},
};

struct Comparison {
    QStringList paths;
    Sides<ProgramFacts> facts;
    VersionVerdict verdict = VersionVerdict::SameFile;
    QList<VersionRow> rows;
    PairCounts counts;
};

/// In the order of `VersionVerdict`.
constexpr std::array verdictWords{"Same file",
                                  "Same program but for time stamps, checksum or signature",
                                  "Left is newer",
                                  "Right is newer",
                                  "Same version, other contents",
                                  "Other contents, no version on both sides"};

QString versionOf(const ProgramFacts &facts)
{
    return facts.fileVersion ? versionText(*facts.fileVersion) : QStringLiteral("none");
}

bool writeSummary(QIODevice &device, const Comparison &comparison)
{
    const QByteArray line = QStringLiteral("%1 | Left: %2 | Right: %3\n")
                                .arg(QLatin1String(verdictWords[std::size_t(comparison.verdict)]),
                                     versionOf(comparison.facts.left), versionOf(comparison.facts.right))
                                .toLatin1();
    return device.write(line) == line.size() && writeCounts(device, comparison.counts);
}

bool writeList(QIODevice &device, const Comparison &comparison)
{
    QList<KeyedRow> rows;
    for (const VersionRow &row : comparison.rows) {
        const QString name = QLatin1String(programFactName(row.fact));
        rows.append({row.item.isEmpty() ? name : name + u' ' + row.item, row.status, {}, {}, {}});
    }
    return writeKeys(device, rows);
}

void writeOffset(JsonWriter &json, std::string_view key, qint64 offset)
{
    json.key(key);
    if (offset >= 0)
        json.number(offset);
    else
        json.null();
}

bool writeJson(QIODevice &device, const Comparison &comparison)
{
    OutputBuffer output(device);
    JsonWriter json(output);
    json.beginObject();
    json.text("left", comparison.paths[0]);
    json.text("right", comparison.paths[1]);
    json.text("verdict", QLatin1String(versionVerdictName(comparison.verdict)));
    json.key("facts");
    json.beginList();
    for (const VersionRow &row : comparison.rows) {
        json.beginObject();
        json.text("fact", QLatin1String(programFactName(row.fact)));
        json.text("item", row.item);
        writeValues(json, row.status, row.values.left, row.values.right);
        writeOffset(json, "leftOffset", row.offsets.left);
        writeOffset(json, "rightOffset", row.offsets.right);
        json.endObject();
    }
    json.endList();
    json.endObject();
    return output.finish();
}

using Writer = bool (*)(QIODevice &device, const Comparison &comparison);

constexpr std::array formats{
    ChoiceOf<Writer>{{"summary", "what the files are to each other, and the numbers of facts (the default)"},
                     writeSummary},
    ChoiceOf<Writer>{{"list", "one line for each fact: = same, < left only, > right only, ! changed"}, writeList},
    ChoiceOf<Writer>{{"json", "every fact with both values and where they stand"}, writeJson},
};

QString faultText(const ProgramReading &reading)
{
    if (reading.fault == ProgramFault::CannotOpen)
        return reading.detail;
    return reading.fault == ProgramFault::Damaged ? QStringLiteral("the headers are damaged or cut off")
                                                  : QStringLiteral("is neither a program nor a library");
}

int runVersion(const Arguments &arguments, const Streams &streams)
{
    Comparison comparison;
    comparison.paths = arguments.paths();
    if (comparison.paths.size() != 2)
        return fail(streams, QStringLiteral("two paths are needed, %1 given").arg(comparison.paths.size()));
    for (const Side side : bothSides) {
        const QString &path = comparison.paths[side == Side::Left ? 0 : 1];
        ProgramReading reading = loadProgram(path);
        if (!reading.ok())
            return fail(streams, QStringLiteral("%1: %2").arg(path, faultText(reading)));
        if (!reading.facts.damaged.isEmpty())
            complain(streams, QStringLiteral("warning: %1: some tables are damaged or cut off").arg(path));
        comparison.facts[side] = std::move(reading.facts);
    }
    comparison.verdict = judgeVersions(comparison.facts.left, comparison.facts.right);
    comparison.rows = compareVersions(comparison.facts.left, comparison.facts.right);
    for (const VersionRow &row : comparison.rows)
        comparison.counts.add(row.status);
    return writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{chosen(formats, arguments, "format").value(device, comparison),
                       comparison.verdict != VersionVerdict::SameFile};
    });
}

} // namespace

Command versionCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"version",
            "[OPTION]... LEFT RIGHT",
            "compare the version information of two programs or libraries",
            versionDetails,
            formatChoices,
            {},
            examples,
            runVersion};
}

} // namespace velmora::cli
