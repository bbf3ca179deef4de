#include "cli/folder_request.h"

#include "cli/choices.h"
#include "cli/command.h"
#include "core/visible_name.h"
#include "core/wildcard.h"
#include "vfs/local_folder.h"

#include <array>

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

QString takeFolder(const QString &given, TreeFolder &folder)
{
    folder = localFolder(given);
    const std::optional<FolderEntry> entry =
        folder.isThere() ? folder.source->describe(folder.path, HiddenEntries::Listed) : std::nullopt;
    if (!entry)
        return QStringLiteral("%1: there is no such folder").arg(given);
    return entry->kind == EntryKind::Folder ? QString() : QStringLiteral("%1: is not a folder").arg(given);
}

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

    if (const QString error = takeFolder(arguments.paths().at(0), folders.left); !error.isEmpty())
        return error;
    return takeFolder(arguments.paths().at(1), folders.right);
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
