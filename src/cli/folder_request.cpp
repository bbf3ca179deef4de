#include "cli/folder_request.h"

#include "cli/archive_words.h"
#include "cli/choices.h"
#include "cli/command.h"
#include "cli/password_file.h"
#include "core/visible_name.h"
#include "core/wildcard.h"
#include "vfs/place/tree_path.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <variant>

namespace velmora::cli {

namespace {

constexpr std::array methods{
    ChoiceOf<CompareMethod>{{"rules", "equal size and time are enough, else the contents decide (the default)"},
                            CompareMethod::Rules},
    ChoiceOf<CompareMethod>{{"crc", "the CRC-32 of each file"}, CompareMethod::Crc},
    ChoiceOf<CompareMethod>{{"binary", "size and contents, of which what follows a common zero byte is left out"},
                            CompareMethod::Binary},
};

struct MaskOption {
    const char *name;
    QStringList FolderSessionOptions::*masks;
};
constexpr std::array maskOptions{
    MaskOption{"include", &FolderSessionOptions::includeFiles},
    MaskOption{"exclude", &FolderSessionOptions::excludeFiles},
    MaskOption{"include-folders", &FolderSessionOptions::includeFolders},
    MaskOption{"exclude-folders", &FolderSessionOptions::excludeFolders},
};

QString takeTolerance(const Arguments &arguments, FolderSessionOptions &options)
{
    const std::optional<QString> text = arguments.value("tolerance");
    if (!text)
        return {};
    bool isNumber = false;
    options.timeToleranceSec = text->toInt(&isNumber);
    return isNumber && options.timeToleranceSec >= 0 ? QString()
                                                     : QStringLiteral("\"%1\" is no number of seconds").arg(*text);
}

QString takeAlignments(const Arguments &arguments, FolderSessionOptions &options)
{
    for (const QString &rule : arguments.values("align")) {
        const qsizetype equals = rule.indexOf(u'=');
        if (equals < 0)
            return QStringLiteral("\"%1\" is no pair of masks, LEFT=RIGHT").arg(rule);
        options.alignOverrides.append({rule.left(equals), rule.mid(equals + 1)});
    }
    return {};
}

} // namespace

std::span<const Choice> methodChoices()
{
    static constexpr auto choices = choicesOf(methods);
    return choices;
}

QString FolderRequest::take(const Arguments &arguments)
{
    if (arguments.paths().size() != 2)
        return QStringLiteral("two paths are needed, %1 given").arg(arguments.paths().size());
    options.compareBasis = qint32(chosen(methods, arguments, "method").value);
    for (const auto takePart : {takeTolerance, takeAlignments}) {
        if (const QString error = takePart(arguments, options); !error.isEmpty())
            return error;
    }
    // A script is told about every file unless it asks for less.
    options.excludeOsFiles = false;
    options.showHidden = arguments.has("hidden");
    readsUnread = arguments.has("read");
    tellsVersions = arguments.has("versions");
    for (const MaskOption &option : maskOptions) {
        for (const QString &masks : arguments.values(option.name))
            options.*option.masks += splitMasks(masks);
        filtered = filtered || !(options.*option.masks).isEmpty();
    }
    const bool level = arguments.has("level");
    if (arguments.has("structure"))
        scope = level ? Scope::StructureLevel : Scope::Structure;
    else
        scope = level ? Scope::Level : Scope::Tree;

    return takeTrees(arguments);
}

QString FolderRequest::takeTrees(const Arguments &arguments)
{
    Sides<ArchiveRequest> requests;
    requests.left.path = arguments.paths().at(0);
    requests.right.path = arguments.paths().at(1);
    // Archives within are files of a folder, and of a snapshot of it.
    const bool haveFolder = std::any_of(bothSides.begin(), bothSides.end(), [&requests](Side side) {
        return QFileInfo(requests[side].path).isDir() || snapshotPlaceOf(requests[side].path);
    });
    for (const Side side : bothSides) {
        if (requests[side].path.isEmpty())
            return QStringLiteral("\"\": there is no such folder or archive");
        requests[side].nested = haveFolder ? NestedArchives::StayFiles : NestedArchives::BecomeFolders;
        requests[side].reading = isOfPresence() ? ArchiveReading::NamesOnly : ArchiveReading::Contents;
    }
    if (const QString error = takePassword(arguments, requests.left.password); !error.isEmpty())
        return error;
    requests.right.password = requests.left.password;
    Progress silent;
    Sides<TreeAt> trees = treesAt(requests, {}, silent);
    for (const Side side : bothSides) {
        if (!trees[side].folder.isThere())
            return treeFaultText(requests[side].path, trees[side]);
        // What a state knows of contents tells more than times that all its files share.
        readsUnread = readsUnread || std::holds_alternative<StateOpening>(trees[side].other);
        folders[side] = std::move(trees[side].folder);
        archiveProblems[side] = std::move(trees[side].opening.problems);
    }
    return {};
}

bool complainAbout(const Streams &streams, const QList<FolderProblem> &problems)
{
    bool incomplete = false;
    for (const FolderProblem &problem : problems) {
        switch (problem.kind) {
        case FolderProblem::Kind::UnreadableFolder:
            complain(streams, QStringLiteral("%1: cannot read the folder").arg(visibleName(problem.path)));
            break;
        case FolderProblem::Kind::UnreadableFile:
            complain(streams, QStringLiteral("%1: cannot read the file").arg(visibleName(problem.path)));
            break;
        case FolderProblem::Kind::LinkCycle:
            complain(streams,
                     QStringLiteral("warning: %1: links to a folder that it is in").arg(visibleName(problem.path)));
            continue;
        }
        incomplete = true;
    }
    return incomplete;
}

} // namespace velmora::cli
