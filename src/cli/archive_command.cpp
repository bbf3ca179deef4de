#include "cli/archive_words.h"
#include "cli/choices.h"
#include "cli/command.h"
#include "cli/json_writer.h"
#include "cli/output_target.h"
#include "cli/password_file.h"
#include "core/iso_times.h"
#include "core/output_buffer.h"
#include "core/visible_name.h"
#include "vfs/archive/archive_listing.h"
#include "vfs/archive/archive_test.h"
#include "vfs/place/tree_path.h"

#include <QIODevice>

#include <algorithm>
#include <array>

namespace velmora::cli {

namespace {

constexpr const char *archiveDetails =
    "list: the entries of FILE with their sizes, packed sizes, times and checksums, without unpacking it.\n"
    "test: reads every entry to its end and sees whether its checksum holds.\n"
    "FILE is a zip, tar, 7z, cab, iso, cpio, deb, rpm, jar or another archive, told by its contents, or one\n"
    "within an archive (outer.zip/inner.tar); those within it count as folders.\n";

constexpr std::array archiveOptions{
    OptionSpec{"password-file", "FILE", "the first line of FILE opens encrypted archives"},
};

constexpr std::array examples{
    Example{"See what is in a package:", "velmora-cli archive list package.deb"},
    Example{"See whether downloads are whole:", "for file in *.zip; do velmora-cli archive test \"$file\"; done"},
};

enum class Format : quint8 { Summary, Json };

constexpr std::array formats{
    ChoiceOf<Format>{{"summary", "a line for each entry, or for each that failed, and one with the sum (the default)"},
                     Format::Summary},
    ChoiceOf<Format>{{"json", "everything that is known of the entries as JSON"}, Format::Json},
};

/// What both actions work on.
struct Opened {
    QString path;
    TreeAt tree;

    [[nodiscard]] const ArchiveSource &source() const { return *tree.opening.source; }
};

bool isInside(const Opened &opened, const QString &path)
{
    const QString &top = opened.tree.folder.path;
    return top == u"/" || path.startsWith(top + u'/');
}

void appendPadded(QByteArray &line, const QByteArray &text, int width)
{
    line += text.rightJustified(width);
}

QByteArray crcText(const std::optional<quint32> &crc)
{
    return crc ? QByteArray::number(*crc, 16).rightJustified(8, '0') : QByteArray("-");
}

void writeLines(OutputBuffer &output, const Opened &opened, const ArchiveListing &listing)
{
    constexpr int sizeWidth = 13;
    IsoTimes times;
    QByteArray &line = output.bytes();
    for (qint32 row = 0; row < listing.count(); ++row) {
        const ListedEntry &listed = listing.row(row);
        const ArchiveEntry *entry = listing.entry(row);
        const QString path = listing.path(row);
        if (!isInside(opened, path))
            continue;
        appendPadded(line, listed.size < 0 ? QByteArray("-") : QByteArray::number(listed.size), sizeWidth);
        appendPadded(line, listed.packed < 0 ? QByteArray("-") : QByteArray::number(listed.packed), sizeWidth);
        appendPadded(line, entry ? crcText(entry->crc) : QByteArray("-"), 10);
        line += "  ";
        line += (entry && entry->modifiedMs != 0 ? times.text(entry->modifiedMs).left(19) : QByteArray("-"))
                    .leftJustified(20);
        line += visibleName(path.sliced(1)).toUtf8();
        line += listed.isFolder ? "/" : "";
        if (const QString &target = listing.node(row).target; !target.isEmpty())
            line += " -> " + visibleName(target).toUtf8();
        line += '\n';
        output.passOn();
    }
    const ArchiveTotals &totals = listing.totals();
    line += "Files: " + QByteArray::number(totals.files) + " | Folders: " + QByteArray::number(totals.folders) +
            " | Bytes: " + QByteArray::number(totals.size) +
            " | Archive: " + QByteArray::number(opened.source().parts().size) + " | " + opened.source().parts().format +
            '\n';
}

QString kindWord(const ArchiveListing &listing, qint32 row)
{
    switch (listing.node(row).kind) {
    case ArchiveEntryKind::Folder:
        return QStringLiteral("folder");
    case ArchiveEntryKind::Link:
        return QStringLiteral("link");
    case ArchiveEntryKind::HardLink:
        return QStringLiteral("hardlink");
    case ArchiveEntryKind::Special:
        return QStringLiteral("special");
    default:
        return listing.row(row).isFolder ? QStringLiteral("archive") : QStringLiteral("file");
    }
}

void writeEntry(JsonWriter &json, const ArchiveListing &listing, qint32 row, const QString &path, IsoTimes &times)
{
    const ListedEntry &listed = listing.row(row);
    json.beginObject();
    json.text("path", path.sliced(1));
    json.text("kind", kindWord(listing, row));
    if (listed.size >= 0)
        json.number("size", listed.size);
    if (listed.packed >= 0)
        json.number("packed", listed.packed);
    if (const ArchiveEntry *entry = listing.entry(row)) {
        if (!entry->method.isEmpty())
            json.text("method", QString::fromLatin1(entry->method));
        if (entry->crc)
            json.text("crc32", QString::fromLatin1(crcText(entry->crc)));
        if (entry->modifiedMs != 0)
            json.text("modified", QString::fromLatin1(times.text(entry->modifiedMs)));
        if (entry->mode)
            json.text("mode", QString::number(*entry->mode, 8));
        if (entry->isEncrypted)
            json.boolean("encrypted", true);
    }
    if (const QString &target = listing.node(row).target; !target.isEmpty())
        json.text("target", target);
    json.endObject();
}

void writeHead(JsonWriter &json, const Opened &opened)
{
    json.beginObject();
    json.text("archive", opened.path);
    json.text("format", QString::fromUtf8(opened.source().parts().format));
    json.number("bytes", opened.source().parts().size);
}

void writeProblems(JsonWriter &json, const QList<ArchiveProblem> &problems)
{
    json.key("problems");
    json.beginList();
    for (const ArchiveProblem &problem : problems) {
        json.beginObject();
        json.text("problem", QString::fromLatin1(archiveProblemWords(problem.kind)));
        json.text("path", problem.path);
        json.number("count", problem.count);
        json.text("detail", problem.detail);
        json.endObject();
    }
    json.endList();
}

int list(const Opened &opened, const Arguments &arguments, const Streams &streams)
{
    const ArchiveListing listing(opened.tree.opening.source);
    const QList<ArchiveProblem> &problems = opened.tree.opening.problems;
    const bool isIncomplete = complainAboutArchive(streams, opened.path, problems);
    const int status = writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        OutputBuffer output(device);
        if (chosen(formats, arguments, "format").value == Format::Summary) {
            writeLines(output, opened, listing);
            return Written{output.finish(), false};
        }
        JsonWriter json(output);
        IsoTimes times;
        writeHead(json, opened);
        writeProblems(json, problems);
        json.key("entries");
        json.beginList();
        for (qint32 row = 0; row < listing.count(); ++row) {
            const QString path = listing.path(row);
            if (isInside(opened, path))
                writeEntry(json, listing, row, path, times);
        }
        json.endList();
        json.endObject();
        return Written{output.finish(), false};
    });
    return isIncomplete ? int(Trouble) : status;
}

bool writeTest(QIODevice &device, const Opened &opened, const ArchiveTest &test, const QList<ArchiveProblem> &problems,
               Format format)
{
    OutputBuffer output(device);
    if (format == Format::Json) {
        JsonWriter json(output);
        writeHead(json, opened);
        json.number("files", test.files);
        json.number("unpacked", test.bytes);
        json.number("failed", test.failed);
        json.boolean("checksums", test.hasChecksums);
        writeProblems(json, problems);
        json.endObject();
        return output.finish();
    }
    for (const ArchiveProblem &problem : problems) {
        output.bytes() += visibleName(archiveProblemLine(problem)).toUtf8() + '\n';
        output.passOn();
    }
    output.bytes() +=
        "Files: " + QByteArray::number(test.files) + " | Failed: " + QByteArray::number(test.failed) +
        " | Bytes: " + QByteArray::number(test.bytes - test.bytesWithin) +
        (test.bytesWithin > 0 ? " | In archives within: " + QByteArray::number(test.bytesWithin) : QByteArray()) +
        (test.hasChecksums ? " | Checksums hold where a file is not listed\n" : " | The format has no checksums\n");
    return output.finish();
}

/// Names, links and archives within that are left out do not make an archive damaged.
bool isDamage(const ArchiveProblem &problem)
{
    using enum ArchiveProblem::Kind;
    return problem.kind == Damaged || problem.kind == Incomplete || problem.kind == EndsEncrypted ||
           problem.kind == Overlapping;
}

int test(const Opened &opened, const Arguments &arguments, const Streams &streams)
{
    Progress silent;
    const ArchiveTest test = testArchive(opened.source(), {}, silent);
    // What cannot be read is told for each file by the test itself.
    QList<ArchiveProblem> problems = opened.tree.opening.problems;
    const auto isTold = [](const ArchiveProblem &problem) {
        using enum ArchiveProblem::Kind;
        return problem.kind == Damaged || problem.kind == Encrypted || problem.kind == CannotDecrypt;
    };
    problems.erase(std::remove_if(problems.begin(), problems.end(), isTold), problems.end());
    problems += test.problems;
    const bool isDamaged = test.failed > 0 || std::any_of(problems.begin(), problems.end(), isDamage);
    const int status = writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{writeTest(device, opened, test, problems, chosen(formats, arguments, "format").value),
                       isDamaged};
    });
    return test.isComplete ? status : std::max(status, int(Trouble));
}

int runArchive(const Arguments &arguments, const Streams &streams)
{
    if (arguments.paths().size() != 2)
        return fail(streams, QStringLiteral("\"list\" or \"test\" and one archive are needed"));
    const QString &action = arguments.paths().at(0);
    if (action != u"list" && action != u"test")
        return fail(streams, QStringLiteral("\"%1\" is neither \"list\" nor \"test\"").arg(action));
    Opened opened{arguments.paths().at(1), {}};
    ArchiveRequest request{opened.path, {}, NestedArchives::BecomeFolders};
    request.reading = ArchiveReading::NamesOnly;
    if (const QString error = takePassword(arguments, request.password); !error.isEmpty())
        return fail(streams, error);
    Progress silent;
    opened.tree = treeAt(request, {}, silent);
    if (opened.tree.isFolder)
        return fail(streams, QStringLiteral("%1: is a folder, not an archive").arg(opened.path));
    if (!opened.tree.folder.isThere())
        return fail(streams, treeFaultText(opened.path, opened.tree));
    if (!opened.tree.opening.source)
        return fail(streams, QStringLiteral("%1: is a snapshot, which holds no contents").arg(opened.path));
    return action == u"list" ? list(opened, arguments, streams) : test(opened, arguments, streams);
}

} // namespace

Command archiveCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"archive",
            "[OPTION]... list|test FILE",
            "list or test an archive",
            archiveDetails,
            formatChoices,
            archiveOptions,
            examples,
            runArchive,
            "0 when every entry can be read, 1 when one cannot, 2 when there is trouble or, in a list,\n"
            "something is missing"};
}

} // namespace velmora::cli
