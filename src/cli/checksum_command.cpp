#include "cli/choices.h"
#include "cli/command.h"
#include "cli/json_writer.h"
#include "cli/output_target.h"
#include "core/crew.h"
#include "core/output_buffer.h"
#include "core/visible_name.h"
#include "filetypes/checksum/engine/checksum_check.h"
#include "platform/file_access.h"

#include <QFileInfo>
#include <QIODevice>

#include <algorithm>
#include <array>
#include <atomic>

namespace velmora::cli {

namespace {

constexpr const char *checksumDetails =
    "Compute checksums: of FILE; of two files, which are compared; or of all files in a folder and below, as\n"
    "a list that can be checked later, here or by sha256sum and the like.\n";

constexpr std::array algorithms{
    ChoiceOf<ChecksumAlgorithm>{{"sha256", "SHA-256 (the default)"}, ChecksumAlgorithm::Sha256},
    ChoiceOf<ChecksumAlgorithm>{{"sha1", "SHA-1"}, ChecksumAlgorithm::Sha1},
    ChoiceOf<ChecksumAlgorithm>{{"md5", "MD5"}, ChecksumAlgorithm::Md5},
    ChoiceOf<ChecksumAlgorithm>{{"crc32", "CRC-32"}, ChecksumAlgorithm::Crc32},
};
constexpr auto algorithmChoices = choicesOf(algorithms);

constexpr std::array checksumOptions{
    OptionSpec{"algorithm", "NAME", "may be given several times; the file is read once:", algorithmChoices},
    OptionSpec{"expect", "VALUE", "compare FILE with this checksum, whose length tells the algorithm"},
    OptionSpec{"check", nullptr,
               "FILE is a list of checksums: compare the files that it names, in its folder, the next\n"
               "one above that has any of them, or a folder given behind it"},
};

constexpr std::array examples{
    Example{"Compare a download with what was published:", "velmora-cli checksum --expect 9F86D0818884... image.iso"},
    Example{"Keep the checksums of a folder, and see later whether its files are still the same:",
            "velmora-cli checksum --format gnu --output SHA256SUMS photos\n"
            "velmora-cli checksum --check SHA256SUMS photos"},
};

enum class Format : quint8 { Summary, Json, Gnu, Sfv };

constexpr std::array formats{
    ChoiceOf<Format>{{"summary", "a line for each checksum, and the verdict where something is compared (the default)"},
                     Format::Summary},
    ChoiceOf<Format>{{"json", "all checksums and files as JSON"}, Format::Json},
    ChoiceOf<Format>{{"gnu", "a list as sha256sum writes it; not for CRC-32"}, Format::Gnu},
    ChoiceOf<Format>{{"sfv", "a list of CRC-32 checksums"}, Format::Sfv},
};

const char *nameOf(ChecksumAlgorithm algorithm)
{
    const auto *row =
        std::find_if(algorithms.begin(), algorithms.end(), [=](const auto &one) { return one.value == algorithm; });
    return row->choice.name;
}

/// What the arguments ask for.
struct Request {
    QStringList paths;
    QList<ChecksumAlgorithm> algorithms;
    Format format = Format::Summary;
    std::optional<ExpectedChecksum> expected;
};

/// Reads the arguments; returns what is wrong with them, empty when nothing is.
QString takeRequest(const Arguments &arguments, Request &request)
{
    request.paths = arguments.paths();
    request.format = chosen(formats, arguments, "format").value;
    if (request.paths.isEmpty() || request.paths.size() > 2)
        return QStringLiteral("one path or two are needed, %1 given").arg(request.paths.size());
    for (const QString &name : arguments.values("algorithm")) {
        const auto *row = std::find_if(algorithms.begin(), algorithms.end(),
                                       [&](const auto &one) { return name == QLatin1String(one.choice.name); });
        if (!request.algorithms.contains(row->value))
            request.algorithms.append(row->value);
    }
    if (const std::optional<QString> text = arguments.value("expect")) {
        request.expected = expectedChecksum(*text);
        if (!request.expected)
            return QStringLiteral("\"%1\" is no checksum").arg(*text);
        if (request.paths.size() > 1)
            return QStringLiteral("--expect is for one file");
        request.algorithms = {request.expected->algorithm};
    }
    if (request.algorithms.isEmpty())
        request.algorithms = {request.format == Format::Sfv ? ChecksumAlgorithm::Crc32 : ChecksumAlgorithm::Sha256};
    for (const ChecksumAlgorithm algorithm : request.algorithms) {
        if ((request.format == Format::Gnu && !canHold(ChecksumForm::Gnu, algorithm)) ||
            (request.format == Format::Sfv && !canHold(ChecksumForm::Sfv, algorithm)))
            return QStringLiteral("a list of this format cannot hold %1").arg(QLatin1String(nameOf(algorithm)));
    }
    return {};
}

ChecksumForm formOf(Format format)
{
    return format == Format::Gnu ? ChecksumForm::Gnu : format == Format::Sfv ? ChecksumForm::Sfv : ChecksumForm::Bsd;
}

/// What was computed: of one file, of two, or of a folder.
struct Computed {
    QList<ChecksumEntry> entries;
    std::optional<bool> match; ///< where something is compared
};

void writeLines(OutputBuffer &output, const Computed &computed, Format format)
{
    for (const ChecksumEntry &entry : computed.entries) {
        const QByteArray line = checksumLine(formOf(format), entry);
        output << std::string_view(line.constData(), std::size_t(line.size()));
    }
    if (format == Format::Summary && computed.match)
        output << (*computed.match ? "Checksums match\n" : "Checksums differ\n");
}

void writeJson(OutputBuffer &output, const Computed &computed)
{
    JsonWriter json(output);
    json.beginObject();
    json.key("match");
    if (computed.match)
        json.boolean(*computed.match);
    else
        json.null();
    json.key("checksums");
    json.beginList();
    for (const ChecksumEntry &entry : computed.entries) {
        json.beginObject();
        json.text("name", entry.name);
        json.text("algorithm", QLatin1String(nameOf(entry.algorithm)));
        json.text("digest", digestText(entry.digest));
        json.endObject();
    }
    json.endList();
    json.endObject();
}

/// Tells what could not be read; false when there was something.
bool tellUnreadable(const Streams &streams, const QStringList &paths)
{
    for (const QString &path : paths)
        complain(streams, QStringLiteral("%1: cannot be read").arg(path));
    return paths.isEmpty();
}

/// Of all files, several at the same time.
std::vector<FileDigests> digestsOf(const Request &request)
{
    std::vector<FileDigests> results(std::size_t(request.paths.size()));
    std::atomic<std::size_t> next{0};
    runCrew(
        int(std::min<qsizetype>(crewSize(), request.paths.size())),
        [&](int) {
            for (std::size_t i = next++; i < results.size(); i = next++)
                results[i] = fileDigests(request.paths[qsizetype(i)], request.algorithms, FileAccess::native(), {});
        },
        [] {});
    return results;
}

/// Computes what is asked for; returns the paths that cannot be read.
QStringList compute(const Request &request, const QString &output, Computed &computed)
{
    Progress progress;
    if (request.paths.size() == 1 && QFileInfo(request.paths.first()).isDir()) {
        FolderChecksums folder = folderChecksums(request.paths.first(), request.algorithms, output, {}, progress);
        computed.entries = folder.entries;
        return folder.unreadable;
    }
    QStringList unreadable;
    QList<QList<QByteArray>> digests;
    const std::vector<FileDigests> results = digestsOf(request);
    for (std::size_t file = 0; file < results.size(); ++file) {
        const QString &path = request.paths[qsizetype(file)];
        const FileDigests &result = results[file];
        if (!result.isWhole()) {
            unreadable.append(path);
            continue;
        }
        digests.append(result.digests);
        for (qsizetype i = 0; i < request.algorithms.size(); ++i)
            computed.entries.append({path, request.algorithms[i], result.digests[i]});
    }
    if (request.expected && !computed.entries.isEmpty())
        computed.match = computed.entries.first().digest == request.expected->digest;
    else if (request.paths.size() == 2)
        computed.match = digests.value(0) == digests.value(1);
    return unreadable;
}

int runCompute(const Arguments &arguments, const Request &request, const Streams &streams)
{
    if (request.expected && QFileInfo(request.paths.first()).isDir())
        return fail(streams, QStringLiteral("%1: is a folder").arg(request.paths.first()));
    Computed computed;
    if (!tellUnreadable(streams, compute(request, arguments.value("output").value_or(QString()), computed)))
        return Trouble;
    return writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        OutputBuffer output(device);
        if (request.format == Format::Json)
            writeJson(output, computed);
        else
            writeLines(output, computed, request.format);
        return Written{output.finish(), !computed.match.value_or(true)};
    });
}

constexpr std::array<const char *, listedStatusCount> statusNames{"ok",         "differs", "missing",
                                                                  "unreadable", "outside", "notListed"};

void writeCheckLines(OutputBuffer &output, const ChecksumCheck &check)
{
    for (const CheckedFile &file : check.files) {
        if (file.status == ListedStatus::Ok)
            continue;
        const QByteArray name = visibleName(file.entry.name).toUtf8();
        output << statusNames[std::size_t(file.status)] << ": "
               << std::string_view(name.constData(), std::size_t(name.size())) << '\n';
    }
    const QByteArray counts =
        QStringLiteral("Total: %1 | Ok: %2 | Differs: %3 | Missing: %4 | Unreadable: %5 | Outside: %6 | "
                       "Not listed: %7\n")
            .arg(check.files.size())
            .arg(check.count(ListedStatus::Ok))
            .arg(check.count(ListedStatus::Differs))
            .arg(check.count(ListedStatus::Missing))
            .arg(check.count(ListedStatus::Unreadable))
            .arg(check.count(ListedStatus::Outside))
            .arg(check.count(ListedStatus::NotListed))
            .toLatin1();
    output << std::string_view(counts.constData(), std::size_t(counts.size()));
}

void writeDigest(JsonWriter &json, std::string_view key, const QByteArray &digest)
{
    json.key(key);
    if (digest.isEmpty())
        json.null();
    else
        json.text(digestText(digest));
}

void writeCheckJson(OutputBuffer &output, const ChecksumCheck &check)
{
    JsonWriter json(output);
    json.beginObject();
    json.number("badLines", check.badLines);
    json.key("files");
    json.beginList();
    for (const CheckedFile &file : check.files) {
        json.beginObject();
        json.text("name", file.entry.name);
        json.text("status", QLatin1String(statusNames[std::size_t(file.status)]));
        json.text("algorithm", QLatin1String(nameOf(file.entry.algorithm)));
        writeDigest(json, "expected", file.entry.digest);
        writeDigest(json, "found", file.found);
        json.endObject();
    }
    json.endList();
    json.endObject();
}

QString faultText(ChecksumCheck::Fault fault)
{
    switch (fault) {
    case ChecksumCheck::Fault::NotOpened:
        return QStringLiteral("cannot be read");
    case ChecksumCheck::Fault::TooLarge:
        return QStringLiteral("is larger than any list of checksums");
    case ChecksumCheck::Fault::NoList:
        return QStringLiteral("has no checksums in it");
    case ChecksumCheck::Fault::None:
    case ChecksumCheck::Fault::Cancelled:
        break;
    }
    return {};
}

int runCheck(const Arguments &arguments, const Request &request, const Streams &streams)
{
    if (request.format != Format::Summary && request.format != Format::Json)
        return fail(streams, QStringLiteral("--check has no such format"));
    if (request.paths.size() > 1 && !QFileInfo(request.paths[1]).isDir())
        return fail(streams, QStringLiteral("%1: is no folder").arg(request.paths[1]));
    Progress progress;
    const ChecksumCheck check = checkChecksumList(request.paths[0], request.paths.value(1), {}, progress);
    if (check.fault != ChecksumCheck::Fault::None)
        return fail(streams, QStringLiteral("%1: %2").arg(request.paths[0], faultText(check.fault)));
    if (check.badLines > 0)
        complain(streams, QStringLiteral("warning: %1: %2 lines are no checksums, the first is line %3")
                              .arg(request.paths[0])
                              .arg(check.badLines)
                              .arg(check.firstBadLine));
    return writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        OutputBuffer output(device);
        request.format == Format::Json ? writeCheckJson(output, check) : writeCheckLines(output, check);
        return Written{output.finish(), check.failures() > 0};
    });
}

int runChecksum(const Arguments &arguments, const Streams &streams)
{
    Request request;
    if (const QString error = takeRequest(arguments, request); !error.isEmpty())
        return fail(streams, error);
    return arguments.has("check") ? runCheck(arguments, request, streams) : runCompute(arguments, request, streams);
}

} // namespace

Command checksumCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"checksum",
            "[OPTION]... FILE|FOLDER [FILE]",
            "compute checksums, compare them, check lists of them",
            checksumDetails,
            formatChoices,
            checksumOptions,
            examples,
            runChecksum};
}

} // namespace velmora::cli
