#include "cli/choices.h"
#include "cli/command.h"
#include "cli/keyed_output.h"
#include "cli/output_target.h"
#include "core/output_buffer.h"
#include "core/visible_name.h"
#include "filetypes/registry/engine/reg_writer.h"
#include "filetypes/registry/engine/registry_live.h"
#include "filetypes/registry/engine/registry_noise.h"
#include "filetypes/registry/engine/registry_patch.h"
#include "filetypes/registry/engine/registry_text.h"

#include <QIODevice>

#include <array>

namespace velmora::cli {

namespace {

constexpr const char *registryDetails =
    "Compare the keys and values of two .reg files. On Windows each may be a key of the registry, too, as\n"
    "HKCU\\Software, with 32: or 64: before it for one of its views. Nothing is written to the registry.\n";

constexpr auto noiseChoices = [] {
    return std::array{Choice{"recentLists", "lists of what was used last"},
                      Choice{"windowPlaces", "places and views of windows"},
                      Choice{"counters", "counters and times of use"}, Choice{"caches", "caches"}};
}();

constexpr std::array registryOptions{
    OptionSpec{"noise", "PROFILE", "leave out what changes all the time; may be given several times:", noiseChoices},
    OptionSpec{"noise-mask", "MASK",
               "leave out what matches, a key's path, a backslash and a value's name: * any run of\n"
               "letters, ? any one; may be given several times"},
    OptionSpec{"encoding", "NAME", "the code page of files of version 4, which is found out otherwise"},
};

constexpr std::array examples{
    Example{"See what an installation has changed:", "velmora-cli registry --format list before.reg after.reg"},
    Example{"Write what takes that back:", "velmora-cli registry --format patch -- after.reg before.reg > undo.reg"},
};

struct Comparison {
    QStringList places;
    RegistryComparison result;
};

QString nameOf(const Comparison &comparison, const RegistryRow &row)
{
    const QString &path = comparison.result.path(row);
    const QString name = comparison.result.name(row);
    return row.isKey() ? u'[' + path + u']' : path + u'\\' + (name.isEmpty() ? QStringLiteral("@") : name);
}

bool writeSummary(QIODevice &device, const Comparison &comparison)
{
    if (!writeCounts(device, comparison.result.counts))
        return false;
    const QByteArray line = comparison.result.noise == 0
                                ? QByteArray()
                                : "Noise: " + QByteArray::number(comparison.result.noise) + " items\n";
    return device.write(line) == line.size();
}

bool writeList(QIODevice &device, const Comparison &comparison)
{
    OutputBuffer output(device);
    for (const RegistryRow &row : comparison.result.rows) {
        static constexpr std::string_view signs = "=!<>";
        const QByteArray key = visibleName(nameOf(comparison, row)).toUtf8();
        output << (row.isNoise ? '~' : signs[std::size_t(row.status)]) << ' '
               << std::string_view(key.constData(), std::size_t(key.size())) << '\n';
    }
    return output.finish();
}

void writeSide(JsonWriter &json, std::string_view key, const RegistryValue *value)
{
    json.key(key);
    if (!value) {
        json.null();
        return;
    }
    json.beginObject();
    json.text("type", registryTypeName(value->type));
    json.text("value", valueText(*value));
    json.boolean("deletes", value->isDeletion);
    json.endObject();
}

bool writeJson(QIODevice &device, const Comparison &comparison)
{
    OutputBuffer output(device);
    JsonWriter json(output);
    json.beginObject();
    json.text("left", comparison.places[0]);
    json.text("right", comparison.places[1]);
    json.key("items");
    json.beginList();
    for (const RegistryRow &row : comparison.result.rows) {
        json.beginObject();
        json.text("key", comparison.result.path(row));
        writeText(json, "name", comparison.result.name(row), !row.isKey());
        json.number("status", statusNumber(row.status));
        json.boolean("noise", row.isNoise);
        writeSide(json, "left", comparison.result.value(row, Side::Left));
        writeSide(json, "right", comparison.result.value(row, Side::Right));
        json.endObject();
    }
    json.endList();
    json.endObject();
    return output.finish();
}

bool writePatch(QIODevice &device, const Comparison &comparison)
{
    const QByteArray file = registryFile(registryPatch(comparison.result, Side::Left));
    return device.write(file) == file.size();
}

using Writer = bool (*)(QIODevice &device, const Comparison &comparison);

constexpr std::array formats{
    ChoiceOf<Writer>{{"summary", "one line with the numbers of keys and values (the default)"}, writeSummary},
    ChoiceOf<Writer>{{"list", "one line for each: = same, < left only, > right only, ! changed, ~ noise"}, writeList},
    ChoiceOf<Writer>{{"json", "every value with its type on both sides"}, writeJson},
    ChoiceOf<Writer>{{"patch", "a .reg file that makes LEFT into RIGHT, without noise"}, writePatch},
};

QString faultText(const RegistryReading &reading)
{
    return reading.fault == RegistryFault::NotRegistry ? QStringLiteral("is no file of registry entries")
                                                       : reading.detail;
}

RegistryReading readPlace(const QString &place, const TextEncoding &encoding)
{
    const std::optional<LiveKey> key = LiveRegistry::system() ? liveKeyOf(place) : std::nullopt;
    Progress none;
    return key ? readLiveKey(*LiveRegistry::system(), *key, {}, none) : loadRegistry(place, encoding);
}

RegistryNoise noiseOf(const Arguments &arguments)
{
    QList<NoiseProfile> profiles = defaultNoiseProfiles();
    const QStringList chosenNames = arguments.values("noise");
    for (NoiseProfile &profile : profiles)
        profile.isOn = chosenNames.contains(QLatin1String(noiseName(profile.kind)));
    profiles.append({NoiseKind::Own, true, arguments.values("noise-mask")});
    return RegistryNoise(profiles);
}

int runRegistry(const Arguments &arguments, const Streams &streams)
{
    Comparison comparison;
    comparison.places = arguments.paths();
    if (comparison.places.size() != 2)
        return fail(streams, QStringLiteral("two paths are needed, %1 given").arg(comparison.places.size()));
    const QString encoding = arguments.value("encoding").value_or(QString());
    if (!TextEncoding::isKnownName(encoding))
        return fail(streams, QStringLiteral("unknown encoding \"%1\"").arg(encoding));
    Sides<RegistryTree> trees;
    for (const Side side : bothSides) {
        const QString &place = comparison.places[side == Side::Left ? 0 : 1];
        RegistryReading reading = readPlace(place, TextEncoding::fromName(encoding));
        if (!reading.ok())
            return fail(streams, QStringLiteral("%1: %2").arg(place, faultText(reading)));
        if (reading.badLines > 0 && reading.firstBadLine == 0)
            complain(streams,
                     QStringLiteral("warning: %1: %2 keys could not be read").arg(place).arg(reading.badLines));
        else if (reading.badLines > 0)
            complain(streams, QStringLiteral("warning: %1: %2 lines are no entries, the first is line %3")
                                  .arg(place)
                                  .arg(reading.badLines)
                                  .arg(reading.firstBadLine));
        if (reading.mayBeCutOff)
            complain(streams,
                     QStringLiteral("warning: %1: does not end with an empty line, as exports do; it may be cut off")
                         .arg(place));
        trees[side] = std::move(reading.tree);
    }
    comparison.result = compareRegistry(std::move(trees.left), std::move(trees.right), noiseOf(arguments));
    return writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{chosen(formats, arguments, "format").value(device, comparison),
                       comparison.result.counts.differences() > 0};
    });
}

} // namespace

Command registryCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"registry",
            "[OPTION]... LEFT RIGHT",
            "compare the keys and values of two .reg files",
            registryDetails,
            formatChoices,
            registryOptions,
            examples,
            runRegistry};
}

} // namespace velmora::cli
