#include "cli/choices.h"
#include "cli/command.h"
#include "cli/json_writer.h"
#include "cli/output_target.h"
#include "core/output_buffer.h"
#include "core/sides.h"
#include "filetypes/binary/engine/aligned_range.h"
#include "filetypes/binary/engine/binary_align.h"
#include "filetypes/binary/engine/binary_compare.h"

#include <QIODevice>

#include <algorithm>
#include <array>
#include <memory>

namespace velmora::cli {

namespace {

constexpr const char *binaryDetails = "Compare two files of any kind byte for byte, in rows of 16 bytes.\n";

constexpr std::array binaryOptions{
    OptionSpec{"align", nullptr, "find bytes again that have moved, behind others that were inserted or deleted"},
    OptionSpec{"left-start", "OFFSET", "leave out so many bytes of LEFT; 0x1f0 is hexadecimal"},
    OptionSpec{"right-start", "OFFSET", "leave out so many bytes of RIGHT"},
};

constexpr std::array examples{
    Example{"See where two releases of a program differ:", "velmora-cli binary --format list old/app new/app"},
    Example{"The same where something was inserted:", "velmora-cli binary --align --format list old.img new.img"},
};

struct Request {
    Sides<QString> paths;
    Sides<qint64> starts;
    bool aligns = false;
};

/// What is compared, and how it compares.
struct Comparison {
    Request request;
    Sides<std::shared_ptr<const BinarySource>> sources;
    RowComparison rows;                    ///< unless the files were aligned
    std::vector<AlignedRange> differences; ///< that are listed
    bool isCapped = false;                 ///< not all of them are

    [[nodiscard]] BinaryPair files() const
    {
        return {{*sources.left, request.starts.left}, {*sources.right, request.starts.right}};
    }
    [[nodiscard]] bool differs() const { return !differences.empty(); }
};

QString takeStart(const Arguments &arguments, const char *option, qint64 &start)
{
    const std::optional<QString> given = arguments.value(option);
    if (!given)
        return {};
    bool ok = false;
    const bool isHex = given->startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
    start = isHex ? given->mid(2).toLongLong(&ok, 16) : given->toLongLong(&ok);
    return ok && start >= 0 ? QString()
                            : QStringLiteral("--%1: \"%2\" is no offset").arg(QLatin1String(option), *given);
}

QString takeRequest(const Arguments &arguments, Request &request)
{
    if (arguments.paths().size() != 2)
        return QStringLiteral("two paths are needed, %1 given").arg(arguments.paths().size());
    request.paths = {arguments.paths()[0], arguments.paths()[1]};
    request.aligns = arguments.has("align");
    const QString wrong = takeStart(arguments, "left-start", request.starts.left);
    return wrong.isEmpty() ? takeStart(arguments, "right-start", request.starts.right) : wrong;
}

QString rowsText(const RowComparison &rows)
{
    return QStringLiteral("%1 diffs | diff rate: %2%").arg(rows.differing).arg(rows.rate());
}

QString rangesText(const std::vector<AlignedRange> &differences)
{
    const auto count = [&](RangeKind kind) {
        return std::count_if(differences.begin(), differences.end(),
                             [kind](const AlignedRange &range) { return range.kind == kind; });
    };
    return QStringLiteral("%1 ranges differ (changed %2, inserted %3, deleted %4)")
        .arg(differences.size())
        .arg(count(RangeKind::Changed))
        .arg(count(RangeKind::Inserted))
        .arg(count(RangeKind::Deleted));
}

bool writeSummary(QIODevice &device, const Comparison &comparison)
{
    QString text = QStringLiteral("Compare done: files are identical");
    if (comparison.differs()) {
        text = QStringLiteral("Compare done: left %1 bytes, right %2 bytes, ")
                   .arg(comparison.sources.left->size())
                   .arg(comparison.sources.right->size()) +
               (comparison.request.aligns ? rangesText(comparison.differences) : rowsText(comparison.rows));
    }
    const QByteArray line = text.toLatin1() + '\n';
    return device.write(line) == line.size();
}

bool writeList(QIODevice &device, const Comparison &comparison)
{
    static constexpr std::string_view signs = "=!<>";
    OutputBuffer output(device);
    for (const AlignedRange &range : comparison.differences) {
        output << signs[std::size_t(range.kind)] << ' ' << range.left << '+' << range.leftLength << ' ' << range.right
               << '+' << range.rightLength << '\n';
    }
    return output.finish();
}

bool writeJson(QIODevice &device, const Comparison &comparison)
{
    static constexpr std::array kinds{"equal", "changed", "deleted", "inserted"};
    OutputBuffer output(device);
    JsonWriter json(output);
    json.beginObject();
    json.text("left", comparison.request.paths.left);
    json.text("right", comparison.request.paths.right);
    json.number("leftSize", comparison.sources.left->size());
    json.number("rightSize", comparison.sources.right->size());
    json.boolean("aligned", comparison.request.aligns);
    if (!comparison.request.aligns) {
        json.number("rowCount", comparison.rows.rowCount);
        json.number("diffRows", comparison.rows.differing);
        json.number("diffRate", comparison.rows.rate());
    }
    json.boolean("capped", comparison.isCapped);
    json.key("ranges");
    json.beginList();
    for (const AlignedRange &range : comparison.differences) {
        json.beginObject();
        json.text("kind", QLatin1String(kinds[std::size_t(range.kind)]));
        json.number("left", range.left);
        json.number("leftLength", range.leftLength);
        json.number("right", range.right);
        json.number("rightLength", range.rightLength);
        json.endObject();
    }
    json.endList();
    json.endObject();
    return output.finish();
}

using Writer = bool (*)(QIODevice &device, const Comparison &comparison);

constexpr std::array formats{
    ChoiceOf<Writer>{{"summary", "one line with sizes and the number of rows that differ (the default)"}, writeSummary},
    ChoiceOf<Writer>{{"list", "one line for each range: ! changed, < left only, > right only; OFFSET+LENGTH"},
                     writeList},
    ChoiceOf<Writer>{{"json", "sizes, counts and every range that differs"}, writeJson},
};

QString openSource(const QString &path, std::shared_ptr<const BinarySource> &source)
{
    source = BinarySource::open(path);
    if (!source)
        return QStringLiteral("%1: cannot be opened, or is no file").arg(path);
    return source->size() > binarySizeLimit ? QStringLiteral("%1: is larger than 128 GB").arg(path) : QString();
}

void compare(Comparison &comparison)
{
    const BinaryPair files = comparison.files();
    Progress progress;
    if (!comparison.request.aligns) {
        comparison.rows = compareRows(files, {}, progress);
        comparison.differences = rangesOfRows(comparison.rows, files);
        comparison.isCapped = comparison.rows.isCapped;
        return;
    }
    Alignment alignment = alignFiles(files, {}, progress);
    comparison.isCapped = alignment.isCapped;
    comparison.differences = std::move(alignment.ranges);
    std::erase_if(comparison.differences, [](const AlignedRange &range) { return range.kind == RangeKind::Equal; });
}

int runBinary(const Arguments &arguments, const Streams &streams)
{
    Comparison comparison;
    if (const QString error = takeRequest(arguments, comparison.request); !error.isEmpty())
        return fail(streams, error);
    for (const Side side : bothSides) {
        if (const QString error = openSource(comparison.request.paths[side], comparison.sources[side]);
            !error.isEmpty())
            return fail(streams, error);
    }
    compare(comparison);
    if (comparison.isCapped)
        complain(streams, QStringLiteral("warning: there are more differences than are listed"));
    return writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{chosen(formats, arguments, "format").value(device, comparison), comparison.differs()};
    });
}

} // namespace

Command binaryCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"binary",
            "[OPTION]... LEFT RIGHT",
            "compare two files byte for byte",
            binaryDetails,
            formatChoices,
            binaryOptions,
            examples,
            runBinary};
}

} // namespace velmora::cli
