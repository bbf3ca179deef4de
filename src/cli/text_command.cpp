#include "cli/choices.h"
#include "cli/command.h"
#include "cli/output_target.h"
#include "cli/text_input.h"
#include "cli/text_json.h"
#include "cli/text_request.h"
#include "core/output_buffer.h"
#include "core/visible_name.h"
#include "settings/options/text_presets.h"
#include "settings/options/text_replacements.h"
#include "text/engine/line_diff_engine.h"
#include "text/engine/line_ends.h"
#include "text/engine/marked_report.h"
#include "text/engine/text_patch.h"
#include "text/engine/text_report.h"

#include <QIODevice>

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>
#include <vector>

namespace velmora::cli {

namespace {

std::span<const Choice> presetChoices()
{
    static const std::vector<Choice> choices = [] {
        std::vector<Choice> all;
        for (const TextPreset &preset : textPresets())
            all.push_back({preset.shortName, preset.menuText});
        return all;
    }();
    return choices;
}

const std::array textOptions{
    OptionSpec{"context", "LINES",
               "with html: a report with marks within lines and links between differences, of the\n"
               "differing parts with LINES equal lines around, or of all"},
    OptionSpec{"preset", "NAME", "the rules to compare by, also by a preset's full name; changes what --options says",
               presetChoices(), true},
    OptionSpec{"options", "FILE", "the options of a session, from a session file or a JSON object of their own"},
    OptionSpec{"importance", "FILE", "what matters, from a file of importance rules; changes what --preset says"},
    OptionSpec{"replace-left", "FIND=WITH",
               "compare LEFT as if FIND were WITH in every line; may be given several times.\n"
               "\\= is an equals sign within FIND, \\t a tab, \\\\ a backslash"},
    OptionSpec{"replace-right", "FIND=WITH", "the same for RIGHT"},
    OptionSpec{"encoding-left", "NAME", "the encoding of LEFT (UTF-8, UTF-16 LE, Big5, GB18030, ...; auto)"},
    OptionSpec{"encoding-right", "NAME", "the encoding of RIGHT"},
    OptionSpec{"label", "NAME", "the name of LEFT in headers; given once more, that of RIGHT"},
    OptionSpec{"text", nullptr, "compare line by line even what looks like no text"},
};

constexpr const char *textDetails =
    "Compare two text files line by line. The path - is standard input.\n"
    "Without options the white space of lines is ignored, and encodings are detected.\n"
    "Called by git, as GIT_EXTERNAL_DIFF or the command of a diff driver, it writes a patch and ends with 0.\n";

constexpr std::array examples{
    Example{"Count the differences, white space included:", "velmora-cli text --preset strict old.c new.c"},
    Example{"Carry the changes over:",
            "velmora-cli text --format patch old.c new.c > changes.patch\npatch -p0 < changes.patch"},
    Example{"Compare with what another program puts out, and keep a report:",
            "sort names.txt | velmora-cli text --format html --output report.html sorted.txt -"},
};

/// How two texts compare once the replacement rules are applied.
struct Comparison {
    QList<AlignedRow> rows;
    std::vector<LineEndRow> lineEnds;

    [[nodiscard]] bool differs() const { return countRows(rows).differences() > 0 || !lineEnds.empty(); }
};

Comparison compare(const TextRequest &request, CompareRemarks &remarks)
{
    const TextSessionOptions &options = request.options;
    const auto left = applyReplacementRules(request.left.text.lines, options.leftReplaceFind, options.leftReplaceWith);
    const auto right =
        applyReplacementRules(request.right.text.lines, options.rightReplaceFind, options.rightReplaceWith);
    if (!left || !right)
        throw std::length_error("replaced text");
    Progress progress;
    QList<AlignedRow> rows = compareTexts(*left, *right, options, {}, progress, &remarks);
    const DecodedText &leftText = request.left.text;
    const DecodedText &rightText = request.right.text;
    std::vector<LineEndRow> lineEnds =
        differingLineEnds(rows, {leftText.lines, leftText.lineEnds}, {rightText.lines, rightText.lineEnds}, options);
    return {std::move(rows), std::move(lineEnds)};
}

/// What the line ends add to the counts of rows; empty when nothing.
QStringList describeLineEnds(const LineEndCounts &counts)
{
    QStringList found;
    if (counts.rows > 0)
        found.append(QStringLiteral("Line ends differ in %1 rows").arg(counts.rows));
    if (counts.lastFeedMissesLeft)
        found.append(QStringLiteral("The last line feed is missing on the left"));
    if (counts.lastFeedMissesRight)
        found.append(QStringLiteral("The last line feed is missing on the right"));
    return found;
}

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), size_t(bytes.size())};
}

Written writeSummary(QIODevice &device, const TextRequest &request, CompareRemarks &remarks)
{
    const Comparison comparison = compare(request, remarks);
    const DiffCounts counts = countRows(comparison.rows);
    QStringList parts{QStringLiteral("Compare done: %1 diffs (added %2, removed %3, modified %4)")
                          .arg(counts.differences())
                          .arg(counts.added)
                          .arg(counts.removed)
                          .arg(counts.modified),
                      QStringLiteral("Left: %1 lines, Right: %2 lines").arg(counts.leftLines).arg(counts.rightLines)};
    parts += describeLineEnds(countLineEnds(comparison.lineEnds));
    const QByteArray line = parts.join(QStringLiteral(" | ")).toLatin1() + '\n';
    return {device.write(line) == line.size(), comparison.differs()};
}

Written writeJson(QIODevice &device, const TextRequest &request, CompareRemarks &remarks)
{
    const Comparison comparison = compare(request, remarks);
    OutputBuffer output(device);
    writeTextJson(output, request.left, request.right, comparison.rows, comparison.lineEnds, request.options);
    return {output.finish(), comparison.differs()};
}

/// The lines of the file itself. A text that was decoded without a copy shares them.
TextLines rawLines(const TextInput &input)
{
    const std::string_view raw = viewOf(input.raw);
    const std::string_view text = input.text.lines.bytes();
    const bool shared = text.data() == raw.data() && text.size() == raw.size();
    return shared ? input.text.lines : TextLines::split(input.raw);
}

/// The alignment for a patch. Where the bytes fall into other lines than the text, as with UTF-16, the bytes themselves
/// are aligned: Latin-1 makes a text of any bytes, line for line.
QList<AlignedRow> alignForPatch(const TextRequest &request, const TextLines &leftRaw, const TextLines &rightRaw,
                                CompareRemarks &remarks)
{
    if (leftRaw.count() == request.left.text.lines.count() && rightRaw.count() == request.right.text.lines.count())
        return compare(request, remarks).rows;
    const TextEncoding latin1 = TextEncoding::ofCharset("ISO-8859-1", false);
    Progress progress;
    return compareTexts(decodeText(request.left.raw, latin1).lines, decodeText(request.right.raw, latin1).lines,
                        request.options, {}, progress, &remarks);
}

/// The differences of a patch are those of the bytes.
Written writePatch(QIODevice &device, const TextRequest &request, CompareRemarks &remarks)
{
    const TextLines left = rawLines(request.left);
    const TextLines right = rawLines(request.right);
    const std::vector<PatchChange> changes = byteChanges(alignForPatch(request, left, right, remarks), left, right);
    OutputBuffer output(device);
    writePatch(output, changes, request.left.name, left, request.right.name, right);
    return {output.finish(), !changes.empty()};
}

TextReportLabels reportLabels(const TextRequest &request, const Comparison &comparison)
{
    const DiffCounts counts = countRows(comparison.rows);
    TextReportLabels labels;
    labels.title = QStringLiteral("Velmora — diff report");
    labels.heading = QStringLiteral("Velmora diff report");
    labels.left = QStringLiteral("Left: %1").arg(request.left.name);
    labels.right = QStringLiteral("Right: %1").arg(request.right.name);
    labels.generatedAt = QStringLiteral("Generated at");
    labels.leftColumn = QStringLiteral("Left side");
    labels.rightColumn = QStringLiteral("Right side");
    labels.summary = QStringLiteral("Diff summary: %1 total (added %2, removed %3, modified %4)")
                         .arg(counts.differences())
                         .arg(counts.added)
                         .arg(counts.removed)
                         .arg(counts.modified);
    labels.lineEnds = describeLineEnds(countLineEnds(comparison.lineEnds));
    return labels;
}

MarkedReportForm markedForm(const TextRequest &request)
{
    MarkedReportForm form;
    form.context = request.reportContext;
    form.previous = QStringLiteral("Previous difference");
    form.next = QStringLiteral("Next difference");
    form.folded = QStringLiteral("⋯ %1 equal lines");
    return form;
}

Written writeHtml(QIODevice &device, const TextRequest &request, CompareRemarks &remarks)
{
    const Comparison comparison = compare(request, remarks);
    const ReportedTexts texts{comparison.rows, comparison.lineEnds, request.left.text.lines, request.right.text.lines,
                              request.options};
    const TextReportLabels labels = reportLabels(request, comparison);
    const QDateTime now = QDateTime::currentDateTime();
    const bool ok = request.marksReport ? writeMarkedReport(device, texts, labels, markedForm(request), now)
                                        : writeTextReport(device, texts, labels, now);
    return {ok, comparison.differs()};
}

/// How a format is written.
struct Writer {
    Written (*write)(QIODevice &device, const TextRequest &request, CompareRemarks &remarks);
    Written (*writeBinary)(QIODevice &device, const TextRequest &request); ///< for files that are no texts, if it can
};

Written writeBinary(QIODevice &device, const TextRequest &request)
{
    OutputBuffer output(device);
    writeBinaryJson(output, request.left, request.right);
    return {output.finish(), request.left.raw != request.right.raw};
}

constexpr std::array formats{
    ChoiceOf<Writer>{{"summary", "one line with the numbers of differences (the default)"}, {writeSummary, nullptr}},
    ChoiceOf<Writer>{{"json", "every row as JSON"}, {writeJson, writeBinary}},
    ChoiceOf<Writer>{{"patch", "a unified diff that turns LEFT into RIGHT byte by byte"}, {writePatch, nullptr}},
    ChoiceOf<Writer>{{"html", "a report for reading"}, {writeHtml, nullptr}},
};

/// What is said instead of a comparison that makes no sense. It goes to standard output: a file is asked for a report.
Written writeBinaryNote(QIODevice &device, const TextRequest &request)
{
    const bool differ = request.left.raw != request.right.raw;
    const QByteArray line = QStringLiteral("Binary files %1 and %2 %3\n")
                                .arg(visibleName(request.left.name), visibleName(request.right.name),
                                     differ ? QStringLiteral("differ") : QStringLiteral("are identical"))
                                .toUtf8();
    return {device.write(line) == line.size(), differ};
}

void warnOfSlowExpressions(const Streams &streams, const CompareRemarks &remarks)
{
    for (const QString &expression : remarks.expressionsLeftOut)
        complain(streams, QStringLiteral("warning: too slow and left out: the unimportant text %1").arg(expression));
    if (remarks.expressionsLeftOut.isEmpty() && remarks.expressionsGivenUp > 0) {
        complain(streams,
                 QStringLiteral("warning: an expression of the unimportant text is too slow for %1 lines, which "
                                "count as important")
                     .arg(remarks.expressionsGivenUp));
    }
}

/// Git names nothing but the path of a file that has a conflict, which has no two versions.
bool isUnmergedPath(const Arguments &arguments)
{
    return arguments.paths().size() == 1 && qEnvironmentVariableIsSet("GIT_DIFF_PATH_COUNTER");
}

const Writer &formatOf(const Arguments &arguments, const TextRequest &request)
{
    const auto isPatch = [](const auto &format) { return format.value.write == writePatch; };
    if (request.calledByGit && !arguments.has("format"))
        return std::find_if(formats.begin(), formats.end(), isPatch)->value;
    return chosen(formats, arguments, "format").value;
}

int compareInputs(const Arguments &arguments, TextRequest &request, const Streams &streams)
{
    const Writer &format = formatOf(arguments, request);
    readTextInputs(request.left, request.right, streams.input);
    for (const TextInput *input : {&request.left, &request.right}) {
        if (!input->error.isEmpty())
            return fail(streams, QStringLiteral("%1: %2").arg(input->path, input->error));
    }

    const std::optional<QString> path = arguments.value("output");
    if ((request.left.text.binary || request.right.text.binary) && !request.forceText) {
        if (format.writeBinary)
            return writeTo(path, streams, [&](QIODevice &device) { return format.writeBinary(device, request); });
        return writeTo({}, streams, [&](QIODevice &device) { return writeBinaryNote(device, request); });
    }
    warnOfUndecodable(streams, request.left);
    warnOfUndecodable(streams, request.right);
    CompareRemarks remarks;
    const int status =
        writeTo(path, streams, [&](QIODevice &device) { return format.write(device, request, remarks); });
    warnOfSlowExpressions(streams, remarks);
    return status;
}

int runText(const Arguments &arguments, const Streams &streams)
{
    if (isUnmergedPath(arguments)) {
        const QByteArray line = "* Unmerged path " + visibleName(arguments.paths().first()).toUtf8() + '\n';
        return streams.output.write(line) == line.size() ? NoDifferences : Trouble;
    }
    TextRequest request;
    if (const QString error = request.take(arguments); !error.isEmpty())
        return fail(streams, error);
    const int status = compareInputs(arguments, request, streams);
    // Git takes any other for a failure.
    return request.calledByGit && status == DifferencesFound ? NoDifferences : status;
}

} // namespace

Command textCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"text",
            "[OPTION]... LEFT RIGHT",
            "compare two text files line by line",
            textDetails,
            formatChoices,
            textOptions,
            examples,
            runText};
}

} // namespace velmora::cli
