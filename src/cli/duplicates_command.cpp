#include "cli/arguments.h"
#include "cli/choices.h"
#include "cli/command.h"
#include "cli/operation_run.h"
#include "cli/output_target.h"
#include "core/output_buffer.h"
#include "core/visible_name.h"
#include "folder/engine/duplicate_choice.h"
#include "folder/engine/duplicate_report.h"
#include "folder/operations/duplicate_plan.h"
#include "vfs/local_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QIODevice>

#include <array>

namespace velmora::cli {

namespace {

constexpr const char *duplicatesDetails =
    "Find files of the same contents in folders and below: equal in every byte, and not empty.\n"
    "A file that several names lead to is one file, and told as such. Links to folders and recycle bins\n"
    "are not gone into, hidden files are left out. Nothing is changed without --delete.\n";

constexpr std::array keepRules{
    ChoiceOf<KeepRule>{{"newest", "the file that was modified last"}, KeepRule::Newest},
    ChoiceOf<KeepRule>{{"oldest", "the file that was modified first"}, KeepRule::Oldest},
    ChoiceOf<KeepRule>{{"shortest", "the file of the shortest path"}, KeepRule::ShortestPath},
};
constexpr auto keepChoices = choicesOf(keepRules);

constexpr std::array duplicatesOptions{
    OptionSpec{"reference", "FOLDER", "look there, too, for files that are to stay; may be given several times"},
    OptionSpec{"hidden", nullptr, "look at hidden files and folders, too"},
    OptionSpec{"extra", "KEEP", "list only the copies that could go if of each group this one stayed:", keepChoices},
    OptionSpec{"delete", nullptr,
               "delete what --extra would list; each only while the one that stays has the same bytes"},
};

constexpr std::array examples{
    Example{"See what is there twice, and keep a list with digests:",
            "velmora-cli duplicates photos\n"
            "velmora-cli duplicates --format csv --output duplicates.csv photos"},
    Example{"List what is in the archive already, and delete it:",
            "velmora-cli duplicates --reference archive --extra newest inbox\n"
            "velmora-cli duplicates --reference archive --extra newest --delete inbox"},
};

/// What is written, from what was found.
using Writer = void (*)(OutputBuffer &output, const DuplicateScan &scan);

void writeText(OutputBuffer &output, const DuplicateScan &scan)
{
    qsizetype involved = 0;
    for (const DuplicateGroup &group : scan.groups) {
        involved += group.copies.size();
        output << QStringLiteral("%1 copies, %2 bytes each\n").arg(group.copies.size()).arg(group.size).toStdString();
        for (const DuplicateCopy &copy : group.copies) {
            output << (copy.isReference ? "  = " : "    ") << visibleName(copy.path).toStdString() << '\n';
            for (const QString &name : copy.otherNames)
                output << "      the same file: " << visibleName(name).toStdString() << '\n';
        }
    }
    for (const DuplicateFolders &folders : scan.folders) {
        output << QStringLiteral("%1 folders with the same %2 files, %3 bytes each\n")
                      .arg(folders.paths.size())
                      .arg(folders.files)
                      .arg(folders.bytes)
                      .toStdString();
        for (const QString &path : folders.paths)
            output << "    " << visibleName(path).toStdString() << '\n';
    }
    output << QStringLiteral("%1 files, %2 duplicate groups (%3 files involved)\n")
                  .arg(scan.files)
                  .arg(scan.groups.size())
                  .arg(involved)
                  .toStdString();
    if (scan.sameFiles > 0)
        output
            << QStringLiteral("%1 names lead to a file that another name leads to\n").arg(scan.sameFiles).toStdString();
}

constexpr std::array formats{
    ChoiceOf<Writer>{{"text", "the groups, folders that are the same as a whole, and the numbers (the default)"},
                     writeText},
    ChoiceOf<Writer>{{"json", "all that was found, with MD5 digests"}, writeDuplicatesJson},
    ChoiceOf<Writer>{{"csv", "a line for each file of a group, with MD5 digests"},
                     [](OutputBuffer &output, const DuplicateScan &scan) { writeDuplicatesCsv(output, scan.groups); }},
};

/// Adds the folders at `paths`; returns what is wrong with them, empty when nothing is.
QString addRoots(const QStringList &paths, bool isReference, DuplicateQuestion &question)
{
    for (const QString &path : paths) {
        if (const QString fault = folderFault(path); !fault.isEmpty())
            return fault;
        question.roots.append({localFolder(QDir::cleanPath(QFileInfo(path).absoluteFilePath())), isReference});
    }
    return {};
}

/// Leaves of each group the copies that could go.
void leaveExtra(DuplicateScan &scan, KeepRule rule)
{
    for (DuplicateGroup &group : scan.groups) {
        const QList<qsizetype> extra = extraCopies(group, rule);
        QList<DuplicateCopy> copies;
        for (const qsizetype index : extra)
            copies.append(group.copies.at(index));
        group.copies = copies;
    }
    scan.groups.removeIf([](const DuplicateGroup &group) { return group.copies.isEmpty(); });
}

/// The paths of the copies alone, as they are, for other programs.
void writePaths(OutputBuffer &output, const DuplicateScan &scan)
{
    for (const DuplicateGroup &group : scan.groups) {
        for (const DuplicateCopy &copy : group.copies)
            output << nativeName(copy.path) << '\n';
    }
}

int deleteExtra(const DuplicateScan &scan, KeepRule rule, const Streams &streams)
{
    QList<ExtraCopies> deletions;
    for (const DuplicateGroup &group : scan.groups)
        deletions.append({group, extraCopies(group, rule)});
    const OperationOutcome outcome = runOperation(planDeleteCopies(scan.roots, deletions, DeleteManner::ForGood),
                                                  QStringLiteral("velmora-cli duplicates"), streams);
    return writeTo(std::nullopt, streams, [&](QIODevice &device) {
        OutputBuffer output(device);
        output << QStringLiteral("Delete done: %1 ok, %2 failed\n")
                      .arg(outcome.succeeded)
                      .arg(outcome.failed)
                      .toStdString();
        return Written{output.finish(), outcome.failed > 0};
    });
}

int runDuplicates(const Arguments &arguments, const Streams &streams)
{
    DuplicateQuestion question;
    if (arguments.paths().isEmpty())
        return fail(streams, QStringLiteral("a folder is needed"));
    QString problem = addRoots(arguments.paths(), false, question);
    if (problem.isEmpty())
        problem = addRoots(arguments.values("reference"), true, question);
    if (!problem.isEmpty())
        return fail(streams, problem);
    question.hidden = arguments.has("hidden") ? HiddenEntries::Listed : HiddenEntries::LeftOut;

    const bool isListOfExtra = arguments.has("extra");
    if (arguments.has("delete") && !isListOfExtra)
        return fail(streams, QStringLiteral("--delete needs --extra"));

    Progress silent;
    DuplicateScan scan = scanDuplicates(question, {}, silent);
    for (const FolderProblem &one : std::as_const(scan.problems))
        complain(streams, QStringLiteral("warning: %1: cannot be read").arg(visibleName(one.path)));
    for (const QString &folder : std::as_const(scan.overlapping))
        complain(streams, QStringLiteral("warning: %1: lies in another of the folders").arg(visibleName(folder)));
    const KeepRule rule = chosen(keepRules, arguments, "extra").value;
    if (arguments.has("delete"))
        return deleteExtra(scan, rule, streams);
    Writer write = chosen(formats, arguments, "format").value;
    if (write != formats.front().value)
        addDigests(scan.groups, {});
    if (isListOfExtra)
        leaveExtra(scan, rule);
    if (isListOfExtra && write == formats.front().value)
        write = writePaths;
    return writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        OutputBuffer output(device);
        write(output, scan);
        return Written{output.finish(), !scan.groups.isEmpty()};
    });
}

} // namespace

Command duplicatesCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"duplicates",
            "[OPTION]... FOLDER...",
            "find files of the same contents",
            duplicatesDetails,
            formatChoices,
            duplicatesOptions,
            examples,
            runDuplicates,
            "0 no duplicates, or all that was to go is gone, 1 duplicates, 2 trouble"};
}

} // namespace velmora::cli
