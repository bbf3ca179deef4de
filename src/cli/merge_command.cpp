#include "cli/choices.h"
#include "cli/command.h"
#include "cli/json_writer.h"
#include "cli/merge_input.h"
#include "cli/output_target.h"
#include "core/output_buffer.h"
#include "core/text_encode.h"
#include "merge/engine/chunk_merge.h"
#include "merge/engine/merge_writer.h"

#include <QBuffer>
#include <QIODevice>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace velmora::cli {

namespace {

// As `git merge-file` and its callers have it: a number of conflicts, or what is none.
constexpr int mostConflicts = 127;
constexpr int mergeTrouble = 255;

constexpr std::array styles{
    ChoiceOf<MarkerStyle>{{"merge", "both versions, without what they have in common (the default)"},
                          MarkerStyle::Merge},
    ChoiceOf<MarkerStyle>{{"diff3", "both versions with the base between them"}, MarkerStyle::Diff3},
    ChoiceOf<MarkerStyle>{{"zdiff3", "the same without the lines that both begin or end with"}, MarkerStyle::Zdiff3},
};
constexpr auto styleChoices = choicesOf(styles);

const std::array mergeOptions{
    OptionSpec{"style", "NAME", "how conflicts are written:", styleChoices},
    OptionSpec{"label-left", "NAME", "the name of LEFT at conflicts; the path without this"},
    OptionSpec{"label-base", "NAME", "the name of BASE"},
    OptionSpec{"label-right", "NAME", "the name of RIGHT"},
    OptionSpec{"marker-size", "NUMBER", "how many characters mark a conflict; 7 without this"},
    OptionSpec{"line-by-line", nullptr,
               "settle changes of LEFT and RIGHT that touch line by line; without this they are one conflict"},
    OptionSpec{"text", nullptr, "merge even what looks like no text"},
};

constexpr const char *mergeDetails =
    "Merge LEFT and RIGHT, which were both made of BASE, and write the result. The path - is standard input.\n"
    "No line is lost: what both changed, each in its own way, stands between markers. Bytes are kept as they are.\n";

constexpr const char *mergeStatus = "0 no conflicts, 1 to 127 so many conflicts (127 for more, too), 255 trouble";

constexpr std::array examples{
    Example{"Merge, and see what is left to decide:",
            "velmora-cli merge --style diff3 base.c mine.c theirs.c > merged.c"},
    Example{"Have git merge a kind of file in this way (in .gitattributes: *.po merge=velmora):",
            "git config merge.velmora.driver 'velmora-cli merge --output %A --marker-size %L --label-left ours "
            "--label-right theirs %O %A %B'"},
};

struct MergeRequest {
    std::array<QString, 3> paths;
    MarkerFormat markers;
    ChunkMergeOptions options;
    bool forceText = false;
};

/// What stands in a marker: on its line, whatever it holds.
QByteArray labelOf(const Arguments &arguments, const char *option, const QString &path)
{
    return arguments.value(option).value_or(path).toUtf8().replace('\n', ' ').replace('\r', ' ');
}

/// Returns what is wrong with the arguments, nothing when they are fine.
QString take(const Arguments &arguments, MergeRequest &request)
{
    const QStringList &paths = arguments.paths();
    if (paths.size() != qsizetype(request.paths.size()))
        return QStringLiteral("three paths are needed, %1 given").arg(paths.size());
    std::copy(paths.begin(), paths.end(), request.paths.begin());
    if (paths.count(QStringLiteral("-")) > 1)
        return QStringLiteral("standard input can be one of the texts only");
    request.markers.style = chosen(styles, arguments, "style").value;
    request.markers.baseName = labelOf(arguments, "label-base", paths[0]);
    request.markers.leftName = labelOf(arguments, "label-left", paths[1]);
    request.markers.rightName = labelOf(arguments, "label-right", paths[2]);
    if (const auto size = arguments.value("marker-size")) {
        constexpr qsizetype longest = 1000;
        request.markers.size = size->toInt();
        if (request.markers.size < 1 || request.markers.size > longest)
            return QStringLiteral("a marker has 1 to %1 characters, not \"%2\"").arg(longest).arg(*size);
    }
    request.options.joinTouching = !arguments.has("line-by-line");
    request.forceText = arguments.has("text");
    return {};
}

/// A merge that is ready to be written.
struct Merged {
    MergeInputs inputs;
    ChunkMerge merge;
    std::vector<MergeChunk> shown; ///< as the style of the markers has it

    [[nodiscard]] ChunkTexts texts() const { return {inputs.base(), inputs.left(), inputs.right()}; }
    [[nodiscard]] qsizetype conflicts() const
    {
        return std::ranges::count(shown, ChunkKind::Conflict, &MergeChunk::kind);
    }
};

/// Empty where the result is in an encoding that cannot hold it, with `error` set.
QByteArray encodedMerge(const Merged &merged, const MergeRequest &request, QString &error)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    OutputBuffer output(buffer);
    writeMerge(output, merged.shown, merged.texts(), request.markers);
    if (!output.finish())
        error = buffer.errorString();
    const QByteArray &utf8 = buffer.data();
    const EncodedText encoded =
        encodeText(std::string_view(utf8.constData(), size_t(utf8.size())), *merged.inputs.encoding);
    if (!encoded.ok())
        error = QStringLiteral("line %1 of the result has a character that %2 cannot hold")
                    .arg(encoded.failedLine + 1)
                    .arg(merged.inputs.encoding->name());
    return encoded.bytes;
}

void writeRange(JsonWriter &json, std::string_view name, LineRange range)
{
    json.key(name);
    json.beginObject();
    json.number("line", range.first + 1);
    json.number("lines", range.count);
    json.endObject();
}

void writeChunk(JsonWriter &json, const MergeChunk &chunk)
{
    static constexpr std::array kinds{"unchanged", "left", "right", "both", "conflict"};
    static constexpr std::array marks{"", "both-inserted", "inserted-twice"};
    json.beginObject();
    json.text("kind", QLatin1String(kinds[size_t(chunk.kind)]));
    if (chunk.mark != ChunkMark::None)
        json.text("mark", QLatin1String(marks[size_t(chunk.mark)]));
    writeRange(json, "base", chunk.base);
    writeRange(json, "left", chunk.left);
    writeRange(json, "right", chunk.right);
    json.endObject();
}

bool writeJson(QIODevice &device, const Merged &merged, const MergeRequest &request)
{
    static constexpr std::array names{"base", "left", "right"};
    OutputBuffer output(device);
    JsonWriter json(output);
    json.beginObject();
    for (size_t text = 0; text < names.size(); ++text) {
        json.key(names[text]);
        json.beginObject();
        json.text("path", request.paths[text]);
        json.number("lines", merged.inputs.texts[text].lines.count());
        json.endObject();
    }
    json.number("conflicts", merged.merge.conflicts());
    json.key("chunks");
    json.beginList();
    for (const MergeChunk &chunk : merged.merge.chunks)
        writeChunk(json, chunk);
    json.endList();
    json.endObject();
    return output.finish();
}

bool writeText(QIODevice &device, const Merged &merged, const MergeRequest &request)
{
    OutputBuffer output(device);
    writeMerge(output, merged.shown, merged.texts(), request.markers);
    return output.finish();
}

using Writer = bool (*)(QIODevice &device, const Merged &merged, const MergeRequest &request);

constexpr std::array formats{
    ChoiceOf<Writer>{{"text", "the merged text (the default)"}, writeText},
    ChoiceOf<Writer>{{"json", "the chunks that the texts fall into, with their lines"}, writeJson},
};

int trouble(const Streams &streams, const QString &message)
{
    complain(streams, message);
    return mergeTrouble;
}

int runMerge(const Arguments &arguments, const Streams &streams)
{
    MergeRequest request;
    if (const QString error = take(arguments, request); !error.isEmpty())
        return trouble(streams, error);
    Merged merged;
    const ChunkMergeOptions &options = request.options;
    std::optional<LineNumbering> numbering;
    merged.inputs = readMergeInputs(request.paths, request.forceText, streams.input, [&](const TextLines &base) {
        numbering.emplace(base, options.compareLineEnds, CancelFlag());
    });
    if (!merged.inputs.error.isEmpty())
        return trouble(streams, merged.inputs.error);
    Progress silent;
    if (merged.inputs.encoding) // the base was read as other lines
        numbering.emplace(merged.inputs.base(), options.compareLineEnds, CancelFlag());
    merged.merge = mergeChunks(std::move(*numbering), merged.inputs.left(), merged.inputs.right(), options, {}, silent);
    const Writer write = chosen(formats, arguments, "format").value;
    if (write == writeText)
        merged.shown = shownChunks(merged.merge, merged.texts(), request.markers.style);
    else
        merged.shown = merged.merge.chunks;

    QByteArray encoded;
    const bool encodes = merged.inputs.encoding && write == writeText;
    if (encodes) {
        QString error;
        encoded = encodedMerge(merged, request, error);
        if (!error.isEmpty())
            return trouble(streams, error);
    }
    const int status = writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{encodes ? device.write(encoded) == encoded.size() : write(device, merged, request)};
    });
    return status == NoDifferences ? int(std::min<qsizetype>(merged.conflicts(), mostConflicts)) : mergeTrouble;
}

} // namespace

Command mergeCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"merge",
            "[OPTION]... BASE LEFT RIGHT",
            "merge two versions of a text over their base",
            mergeDetails,
            formatChoices,
            mergeOptions,
            examples,
            runMerge,
            mergeStatus,
            mergeTrouble};
}

} // namespace velmora::cli
