#include "cli/command.h"
#include "cli/json_writer.h"
#include "cli/output_target.h"
#include "cli/part_program.h"
#include "core/content_compare.h"
#include "core/output_buffer.h"
#include "filetypes/image/engine/image_difference.h"
#include "filetypes/image/engine/picture_file.h"
#include "platform/memory_size.h"

#include <QFileInfo>

#include <algorithm>

// The part of velmora-cli that decodes pictures, which takes Qt Gui and all that it loads.

namespace velmora::cli {

namespace {

/// Two pictures, and what comparing them came to.
struct Comparison {
    Sides<QString> paths;
    DifferenceOptions options;
    Sides<Picture> pictures;
    DifferenceMap map;
    bool sameBytes = false;
};

/// The number of an option; nothing where it is none between the bounds.
std::optional<int> numberOf(const Arguments &arguments, const char *option, int without, int least, int most)
{
    const std::optional<QString> text = arguments.value(option);
    if (!text)
        return without;
    bool ok = false;
    const int number = text->toInt(&ok);
    return ok && number >= least && number <= most ? std::optional(number) : std::nullopt;
}

QString faultText(const Picture &picture)
{
    switch (picture.fault) {
    case PictureFault::NotOpened:
        return QStringLiteral("cannot be read");
    case PictureFault::NoPicture:
        return QStringLiteral("is no picture, or of an unknown format");
    case PictureFault::Damaged:
        return QStringLiteral("is damaged or cut off: %1").arg(picture.detail);
    case PictureFault::TooLarge:
        return QStringLiteral("is too large for the memory of this computer");
    case PictureFault::None:
        break;
    }
    return {};
}

bool writeSummary(QIODevice &device, const Comparison &comparison)
{
    const DifferenceMap &map = comparison.map;
    QByteArray line =
        QStringLiteral(
            "Pixels: %1 | Different: %2 | Left only: %3 | Right only: %4 | Regions: %5 | Largest deviation: %6")
            .arg(map.positions())
            .arg(map.different)
            .arg(map.leftOnly)
            .arg(map.rightOnly)
            .arg(map.regions.size())
            .arg(map.largestDeviation)
            .toLatin1();
    const int frames = std::max(comparison.pictures.left.facts.frames, comparison.pictures.right.facts.frames);
    if (comparison.sameBytes)
        line += " | Identical files";
    else if (map.differences() == 0 && map.largestDeviation == 0)
        line += frames > 1 ? " | Identical pixels in this frame, one of " + QByteArray::number(frames)
                           : QByteArray(" | Identical pixels");
    line += '\n';
    return device.write(line) == line.size();
}

void writePicture(JsonWriter &json, std::string_view key, const QString &path, const PictureFacts &facts)
{
    json.key(key);
    json.beginObject();
    json.text("path", path);
    json.text("format", QString::fromLatin1(facts.format));
    json.number("width", facts.size.width());
    json.number("height", facts.size.height());
    json.number("depth", facts.depth);
    json.boolean("alpha", facts.hasAlpha);
    json.text("profile", facts.profile);
    json.number("frames", facts.frames);
    json.number("bytes", facts.bytes);
    json.endObject();
}

bool writeJson(QIODevice &device, const Comparison &comparison)
{
    OutputBuffer output(device);
    JsonWriter json(output);
    const DifferenceMap &map = comparison.map;
    json.beginObject();
    writePicture(json, "left", comparison.paths.left, comparison.pictures.left.facts);
    writePicture(json, "right", comparison.paths.right, comparison.pictures.right.facts);
    json.number("tolerance", comparison.options.tolerance);
    json.boolean("sameBytes", comparison.sameBytes);
    json.number("pixels", map.positions());
    json.number("different", map.different);
    json.number("antiAliased", map.antiAliased);
    json.number("leftOnly", map.leftOnly);
    json.number("rightOnly", map.rightOnly);
    json.number("largestDeviation", map.largestDeviation);
    json.key("regions");
    json.beginList();
    for (const QRect &part : map.regions) {
        json.beginObject();
        json.number("x", part.x());
        json.number("y", part.y());
        json.number("width", part.width());
        json.number("height", part.height());
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
    if (format == QLatin1String("png"))
        return comparison.map.image.save(&device, "png");
    return writeSummary(device, comparison);
}

QString load(Comparison &comparison, int frame)
{
    const qint64 memory = availableMemory() / 3; // for each picture and the map
    for (const Side side : bothSides) {
        comparison.pictures[side] = loadPicture(comparison.paths[side], frame, memory);
        if (!comparison.pictures[side].isLoaded())
            return QStringLiteral("%1: %2").arg(comparison.paths[side], faultText(comparison.pictures[side]));
    }
    const auto absolute = [](const QString &path) { return QFileInfo(path).absoluteFilePath(); };
    comparison.sameBytes = ContentComparer(FileAccess::native(), {})
                               .sameByDigest(absolute(comparison.paths.left), absolute(comparison.paths.right));
    Progress progress;
    comparison.map = differenceMap(comparison.pictures.left.image, comparison.pictures.right.image, comparison.options,
                                   {}, progress);
    return comparison.map.image.isNull() ? QStringLiteral("out of memory") : QString();
}

int compare(const Arguments &arguments, const Streams &streams)
{
    if (arguments.paths().size() != 2)
        return fail(streams, QStringLiteral("two paths are needed, %1 given").arg(arguments.paths().size()));
    constexpr int largestChannel = 255;
    constexpr int mostFrames = 1'000'000;
    const std::optional<int> tolerance = numberOf(arguments, "tolerance", 0, 0, largestChannel);
    const std::optional<int> frame = numberOf(arguments, "frame", 1, 1, mostFrames);
    if (!tolerance || !frame)
        return fail(streams,
                    QStringLiteral("--%1 takes no such number").arg(QLatin1String(tolerance ? "frame" : "tolerance")));
    Comparison comparison;
    comparison.paths = {arguments.paths()[0], arguments.paths()[1]};
    comparison.options = {*tolerance, arguments.has("ignore-antialiasing")};
    if (const QString error = load(comparison, *frame - 1); !error.isEmpty())
        return fail(streams, error);
    for (const Side side : bothSides) {
        if (comparison.pictures[side].isCutOff)
            complain(streams, QStringLiteral("warning: %1: is cut off, so that its last pixels are missing")
                                  .arg(comparison.paths[side]));
    }
    const QString format = arguments.value("format").value_or(QString());
    return writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{writeAs(format, device, comparison), comparison.map.differences() > 0};
    });
}

} // namespace

} // namespace velmora::cli

int main(int argc, char *argv[])
{
    return velmora::cli::partMain(argc, argv, velmora::cli::imageCommand(), velmora::cli::compare);
}
