#include "cli/archive_words.h"
#include "cli/choices.h"
#include "cli/command.h"
#include "cli/folder_json.h"
#include "cli/folder_request.h"
#include "cli/output_target.h"
#include "core/output_buffer.h"
#include "core/visible_name.h"
#include "folder/engine/folder_engine.h"
#include "folder/engine/folder_report.h"
#include "folder/engine/folder_tree.h"

#include <QIODevice>

#include <algorithm>
#include <array>

namespace velmora::cli {

namespace {

const std::array folderOptions{
    OptionSpec{"method", "METHOD", "", methodChoices()},
    OptionSpec{"tolerance", "SECONDS", "times this far apart are equal under the rules; 0, the default, is exact"},
    OptionSpec{"align", "LEFT=RIGHT", "pair entries whose names match these wildcards; may be repeated"},
    OptionSpec{"include", "MASKS",
               "only files that match one of the masks, separated by \";\"; may be repeated, as all these"},
    OptionSpec{"exclude", "MASKS", "no files that match one of them"},
    OptionSpec{"include-folders", "MASKS", "only folders that match one of them"},
    OptionSpec{"exclude-folders", "MASKS", "no folders that match one of them, and nothing in them"},
    OptionSpec{"hidden", nullptr, "list hidden files and folders, too"},
    OptionSpec{"read", nullptr, "under the rules, read the files that only have the same size and time"},
    OptionSpec{"structure", nullptr, "look at names only: what is on both sides is the same"},
    OptionSpec{"password-file", "FILE", "the first line of FILE opens encrypted archives"},
    OptionSpec{"versions", nullptr, "in JSON, the versions that programs and libraries of Windows say they are"},
    OptionSpec{"level", nullptr, "compare one level, without going into folders"},
};

constexpr const char *folderDetails =
    "Compare two folders and all that is in them. Hidden files and folders are left out\n"
    "unless they are asked for.\n"
    "Either may be an archive (zip, tar, 7z, cab, iso, cpio, deb, rpm, jar and others, told\n"
    "by content), or a folder in one: a.tar.gz/docs. Nothing is written for that. Between two\n"
    "archives those within them count as folders. Their links are followed only inside.\n"
    "Or a state of a Git repository: git:STATE:FOLDER, where STATE is a branch, tag, commit, stash,\n"
    "\":index\" or \":worktree\", and FOLDER one of the repository. Nothing of that is run, nothing is\n"
    "written, and contents are told apart by the names that Git has for them. A folder whose own name\n"
    "begins so is written ./git:...\n"
    "Or a folder of a host that ssh reaches: sftp://[USER@]HOST[:PORT]/FOLDER, with /~/FOLDER for one\n"
    "of the user's home. Keys or an agent let one in; contents are compared by checksums of the host.\n"
    "Or a snapshot file (FILE.kvsnapshot, see \"snapshot\"), or a folder in one. It holds no contents:\n"
    "its checksums tell them apart, under any method; without them size and time decide. It knows\n"
    "of no empty folders.\n"
    "Link cycles end where they close. Pipes, sockets and devices are never opened.\n";

constexpr std::array examples{
    Example{"List what differs between two trees of sources:",
            "velmora-cli folder --format list --exclude-folders '.git;build' old new | grep -v '^[=~]'"},
    Example{"See what has changed in a package:", "velmora-cli folder --format list old.deb new.deb"},
    Example{"See what differs from a copy on a host:",
            "velmora-cli folder sftp://anna@files.example.com/srv/docs docs"},
    Example{"See what has changed in a folder since a snapshot, contents included:",
            "velmora-cli folder --read --format list monday.kvsnapshot work"},
    Example{"See whether an archive holds what was tagged:", "velmora-cli folder --format list git:v1.0:. v1.0.tar.gz"},
};

QList<FolderDiffItem> engineItems(const FolderRequest &request, const FolderInput &input, const FolderRunReport &report)
{
    switch (request.scope) {
    case FolderRequest::Scope::Tree:
        break;
    case FolderRequest::Scope::Level:
        return compareFolderLevel(input, {}, report);
    case FolderRequest::Scope::Structure:
    case FolderRequest::Scope::StructureLevel:
        return listFolderStructure(input, request.scope == FolderRequest::Scope::Structure, {}, report);
    }
    return compareFolderTree(input, {}, report);
}

QList<FolderDiffItem> filteredItems(const FolderRequest &request, QList<FolderDiffItem> items)
{
    FolderTree tree = FolderTree::inGivenOrder(std::move(items));
    tree.setVerdicts(FolderTree::judge(tree.items(), FolderFilter(request.options), {}));
    tree.rollUp();
    QList<FolderDiffItem> shown = shownItems(tree);
    // A list of mere presence says nothing of what is in a folder.
    for (qsizetype i = 0; i < shown.size() && request.isOfPresence(); ++i) {
        if (isPair(shown.at(i)))
            shown[i].setDiffStatus(FolderDiffStatus::Same);
    }
    return shown;
}

/// What the window shows as unknown.
QSet<QString> notComparedNames(const FolderRequest &request, const FolderAnswer &comparison)
{
    const bool isAllSeen =
        std::none_of(comparison.problems.begin(), comparison.problems.end(),
                     [](const FolderProblem &problem) { return problem.kind != FolderProblem::Kind::UnreadableFile; });
    if (isAllSeen || request.isOfPresence())
        return {};
    FolderTree tree = FolderTree::inGivenOrder(comparison.items);
    tree.markUnreadable(comparison.problems, {request.folders.left.path, request.folders.right.path});
    tree.rollUp();
    QSet<QString> names;
    for (qint32 node = 0; node < tree.size(); ++node) {
        if (tree.state(node) == RowState::Unknown)
            names.insert(tree.item(node).name);
    }
    return names;
}

FolderAnswer compare(const FolderRequest &request)
{
    FolderAnswer comparison;
    const FolderInput input = FolderInput::of(request.folders, request.options);
    comparison.items = engineItems(request, input, {nullptr, &comparison.problems});
    if (request.readsUnread)
        readUnread(input, comparison.items, {}, {nullptr, &comparison.problems});
    if (request.filtered)
        comparison.items = filteredItems(request, std::move(comparison.items));
    comparison.notCompared = notComparedNames(request, comparison);
    return comparison;
}

using Counts = std::array<qint64, 4>; ///< by FolderDiffStatus

Counts countByStatus(const FolderAnswer &comparison)
{
    Counts counts{};
    for (const FolderDiffItem &item : comparison.items)
        counts[std::size_t(item.status)] += comparison.notCompared.contains(item.name) ? 0 : 1;
    return counts;
}

const QString summaryText =
    QStringLiteral("Total: %1 items | Same: %2 | Different: %3 | Left only: %4 | Right only: %5");

QByteArray unreadPart(const FolderRequest &request, const QList<FolderDiffItem> &items)
{
    const qint64 unread = countUnread(items);
    const char *text =
        tellTimes(sourcesOf(request.folders)) ? " | Same size and time, not read: " : " | Same size, not read: ";
    return unread > 0 ? text + QByteArray::number(unread) : QByteArray();
}

QByteArray notComparedPart(const FolderAnswer &comparison)
{
    const qsizetype count = comparison.notCompared.size();
    return count > 0 ? " | Not compared: " + QByteArray::number(count) : QByteArray();
}

bool writeSummary(QIODevice &device, const FolderRequest &request, const FolderAnswer &comparison)
{
    const Counts counts = countByStatus(comparison);
    const auto count = [&counts](FolderDiffStatus status) { return counts[std::size_t(status)]; };
    const QByteArray line = summaryText.arg(comparison.items.size())
                                .arg(count(FolderDiffStatus::Same))
                                .arg(count(FolderDiffStatus::Different))
                                .arg(count(FolderDiffStatus::LeftOnly))
                                .arg(count(FolderDiffStatus::RightOnly))
                                .toLatin1() +
                            unreadPart(request, comparison.items) + notComparedPart(comparison) + '\n';
    return device.write(line) == line.size();
}

bool writeList(QIODevice &device, const FolderRequest &, const FolderAnswer &comparison)
{
    OutputBuffer output(device);
    for (const FolderDiffItem &item : comparison.items) {
        static constexpr std::array signs{'=', '<', '>', '!'};
        const bool isUnread = item.isUnread && item.diffStatus() == FolderDiffStatus::Same;
        const char sign = isUnread ? '~' : signs[std::size_t(item.status)];
        output << (comparison.notCompared.contains(item.name) ? '?' : sign) << ' '
               << visibleName(item.name).toStdString() << (item.isDir ? "/\n" : "\n");
    }
    return output.finish();
}

bool writeJson(QIODevice &device, const FolderRequest &request, const FolderAnswer &comparison)
{
    OutputBuffer output(device);
    writeFolderJson(output, request, comparison);
    return output.finish();
}

bool writeHtml(QIODevice &device, const FolderRequest &request, const FolderAnswer &comparison)
{
    FolderReportLabels labels;
    labels.title = QStringLiteral("Velmora — folder diff report");
    labels.heading = QStringLiteral("Velmora folder diff report");
    labels.left = QLatin1String("Left: ") + request.folders.left.shownPath();
    labels.right = QLatin1String("Right: ") + request.folders.right.shownPath();
    labels.generatedAt = QStringLiteral("Generated at");
    labels.columns = {QStringLiteral("Name"),       QStringLiteral("Status"),        QStringLiteral("Left size"),
                      QStringLiteral("Right size"), QStringLiteral("Left modified"), QStringLiteral("Right modified")};
    labels.statuses = {QStringLiteral("Same"), QStringLiteral("Left only"), QStringLiteral("Right only"),
                       QStringLiteral("Different")};
    labels.summary = summaryText;
    labels.unread = QStringLiteral("not read");
    labels.unreadTotal = QStringLiteral("Of the same files these were not read: %1");
    return writeFolderReport(device, comparison.items, labels, QDateTime::currentDateTime());
}

using Writer = bool (*)(QIODevice &device, const FolderRequest &request, const FolderAnswer &comparison);

constexpr std::array formats{
    ChoiceOf<Writer>{{"summary", "one line with the numbers of entries (the default)"}, writeSummary},
    ChoiceOf<Writer>{{"list", "one line for each entry: = same, ~ not read, < left only, > right only, ! different, "
                              "? not compared"},
                     writeList},
    ChoiceOf<Writer>{{"json", "every field of every entry"}, writeJson},
    ChoiceOf<Writer>{{"html", "a report for reading"}, writeHtml},
};

int runFolder(const Arguments &arguments, const Streams &streams)
{
    FolderRequest request;
    if (const QString error = request.take(arguments); !error.isEmpty())
        return fail(streams, error);

    const FolderAnswer comparison = compare(request);
    QList<FolderProblem> problems = comparison.problems;
    for (FolderProblem &problem : problems)
        problem.path = TreeFolder{request.folders[problem.side].source, problem.path}.shownPath();
    bool incomplete = complainAbout(streams, problems);
    for (const Side side : bothSides)
        incomplete =
            complainAboutArchive(streams, request.folders[side].shown(), request.archiveProblems[side]) || incomplete;
    const bool differences = std::any_of(comparison.items.begin(), comparison.items.end(),
                                         [](const FolderDiffItem &item) { return item.status != 0; });
    for (const Side side : bothSides) {
        if (request.folders[side].source->contentAccess() == ContentAccess::None)
            complain(streams, QStringLiteral("warning: %1: the snapshot has no checksums; %2")
                                  .arg(visibleName(request.folders[side].shown()),
                                       tellTimes(sourcesOf(request.folders))
                                           ? QStringLiteral("size and time decide")
                                           : QStringLiteral("size decides, as a state of a repository has no times")));
    }
    const int status = writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{chosen(formats, arguments, "format").value(device, request, comparison), differences};
    });
    return incomplete ? Trouble : status;
}

} // namespace

Command folderCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"folder",
            "[OPTION]... LEFT RIGHT",
            "compare two folders, archives, snapshots or states of a Git repository",
            folderDetails,
            formatChoices,
            folderOptions,
            examples,
            runFolder};
}

} // namespace velmora::cli
