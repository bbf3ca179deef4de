#include "cli/arguments.h"
#include "cli/choices.h"
#include "cli/command.h"
#include "cli/json_writer.h"
#include "cli/operation_run.h"
#include "cli/output_target.h"
#include "core/output_buffer.h"
#include "core/visible_name.h"
#include "folder/operations/merge_run.h"
#include "folder/operations/text_conflicts.h"

#include <QDir>
#include <QFileInfo>
#include <QIODevice>
#include <QTemporaryDir>

#include <algorithm>
#include <array>

namespace velmora::cli {

namespace {

const std::array mergeOptions{
    OptionSpec{"output", "FOLDER", "write the merged tree there; the folder is made when it is missing"},
    OptionSpec{"merge-texts", nullptr, "merge conflicts of texts line by line; those that come out clean are none"},
    OptionSpec{"replace", nullptr, "write it, too, where the folder holds something already"},
};

constexpr const char *mergeDetails =
    "Merge two versions of a folder over the one that both come from, file by file.\n"
    "A file that both have changed is a conflict, and not written. Hidden files are left out, and links\n"
    "to folders are not followed. A file is written beside its place and then takes it in one step.\n";

constexpr std::array examples{
    Example{"See where two branches of a tree meet, and write what can be merged:",
            "velmora-cli merge-folders base mine theirs\n"
            "velmora-cli merge-folders --merge-texts --output merged base mine theirs"},
};

struct MergeRequest {
    MergeVersions<QString> folders;
    QString target; ///< empty: nothing is written
    bool replaces = false;
    bool mergesTexts = false;

    [[nodiscard]] QString take(const Arguments &arguments)
    {
        if (arguments.paths().size() != 3)
            return QStringLiteral("three paths are needed, %1 given").arg(arguments.paths().size());
        for (std::size_t i = 0; i < allMergeVersions.size(); ++i) {
            const QString path = arguments.paths().at(qsizetype(i));
            if (const QString fault = folderFault(path); !fault.isEmpty())
                return fault;
            folders[allMergeVersions[i]] = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
        }
        replaces = arguments.has("replace");
        mergesTexts = arguments.has("merge-texts");
        if (const std::optional<QString> output = arguments.value("output"))
            target = QDir::cleanPath(QFileInfo(*output).absoluteFilePath());
        return target.isEmpty() ? QString() : problemOfTarget();
    }

private:
    [[nodiscard]] QString problemOfTarget() const
    {
        if (QFileInfo::exists(target) && !QFileInfo(target).isDir())
            return QStringLiteral("%1: is not a folder").arg(target);
        if (!replaces && !QDir(target).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
            return QStringLiteral("%1: is not empty (see --replace)").arg(target);
        return {};
    }
};

/// What was found, and what came of writing it.
struct Merge {
    FolderMergeResult result;
    TextConflicts texts;
    std::optional<OperationOutcome> outcome;
};

bool isMergedText(const Merge &merge, qsizetype file)
{
    return std::binary_search(merge.texts.clean.begin(), merge.texts.clean.end(), file);
}

const char *signOf(FolderMergeStatus status)
{
    static constexpr std::array signs{"==", "L=", "=R", "LR", "!!", "+L", "+R", "-L", "-R", "--"};
    return signs[std::size_t(status)];
}

bool writeText(QIODevice &device, const MergeRequest &, const Merge &merge)
{
    OutputBuffer output(device);
    for (qsizetype i = 0; i < merge.result.files.size(); ++i) {
        const FolderMergeFile &file = merge.result.files.at(i);
        if (file.status != FolderMergeStatus::Unchanged)
            output << (isMergedText(merge, i) ? "~~" : signOf(file.status)) << ' '
                   << visibleName(file.path).toStdString() << '\n';
    }
    output << QStringLiteral("%1 file(s), %2 changed, %3 conflict(s)\n")
                  .arg(merge.result.files.size())
                  .arg(merge.result.changed)
                  .arg(merge.result.conflicts)
                  .toStdString();
    if (!merge.texts.clean.empty())
        output << QStringLiteral("%1 conflict(s) merged as texts\n").arg(merge.texts.clean.size()).toStdString();
    if (merge.outcome) {
        output << QStringLiteral("Merge complete. Success: %1, failed: %2\n")
                      .arg(merge.outcome->succeeded)
                      .arg(merge.outcome->failed)
                      .toStdString();
    }
    return output.finish();
}

bool writeJson(QIODevice &device, const MergeRequest &request, const Merge &merge)
{
    OutputBuffer output(device);
    JsonWriter json(output);
    json.beginObject();
    json.text("base", request.folders.base);
    json.text("left", request.folders.left);
    json.text("right", request.folders.right);
    json.number("changed", merge.result.changed);
    json.number("conflicts", merge.result.conflicts);
    json.key("files");
    json.beginList();
    for (qsizetype i = 0; i < merge.result.files.size(); ++i) {
        const FolderMergeFile &file = merge.result.files.at(i);
        json.beginObject();
        json.text("path", file.path);
        json.number("status", qint64(file.status));
        if (isMergedText(merge, i))
            json.boolean("mergedText", true);
        json.number("baseSize", file.sizes.base);
        json.number("leftSize", file.sizes.left);
        json.number("rightSize", file.sizes.right);
        json.endObject();
    }
    json.endList();
    if (merge.outcome) {
        json.key("run");
        json.beginObject();
        json.number("succeeded", merge.outcome->succeeded);
        json.number("failed", merge.outcome->failed);
        json.text("journal", merge.outcome->journalId);
        json.endObject();
    }
    json.endObject();
    return output.finish();
}

using Writer = bool (*)(QIODevice &device, const MergeRequest &request, const Merge &merge);

constexpr std::array formats{
    ChoiceOf<Writer>{{"text", "a line for each file that was changed, and one with the numbers (the default)"},
                     writeText},
    ChoiceOf<Writer>{{"json", "every file with its status and sizes"}, writeJson},
};

OperationPlan planOf(const MergeRequest &request, const Merge &merge, const QString &texts)
{
    MergeSources sources = mergeSourcesOf(merge.result.files);
    for (const qsizetype file : merge.texts.clean)
        sources[std::size_t(file)] = MergedFileSource::Text;
    return planFolderMerge(request.folders, merge.result.files, sources, request.target, texts);
}

int runMergeFolders(const Arguments &arguments, const Streams &streams)
{
    MergeRequest request;
    if (const QString error = request.take(arguments); !error.isEmpty())
        return fail(streams, error);
    Progress silent;
    Merge merge{mergeFolderTrees(request.folders, {}, silent), {}, {}};
    const QTemporaryDir texts;
    if (request.mergesTexts && texts.isValid())
        merge.texts = mergeTextConflicts(request.folders, merge.result.files, texts.path(), {}, silent);
    for (const QString &folder : merge.result.unreadable)
        complain(streams, QStringLiteral("%1: cannot read the folder").arg(visibleName(folder)));
    // What could not be listed would count as deleted.
    if (!request.target.isEmpty() && !merge.result.unreadable.isEmpty())
        return fail(streams, QStringLiteral("nothing was written"));
    if (!request.target.isEmpty()) {
        if (!QDir().mkpath(request.target))
            return fail(streams, QStringLiteral("%1: cannot make the folder").arg(request.target));
        merge.outcome =
            runOperation(planOf(request, merge, texts.path()), QStringLiteral("velmora-cli merge-folders"), streams);
    }
    const bool isOpen =
        merge.result.conflicts > qint64(merge.texts.clean.size()) || (merge.outcome && merge.outcome->failed > 0);
    const int status = writeTo(std::nullopt, streams, [&](QIODevice &device) {
        return Written{chosen(formats, arguments, "format").value(device, request, merge), isOpen};
    });
    return merge.result.unreadable.isEmpty() ? status : int(Trouble);
}

} // namespace

Command mergeFoldersCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"merge-folders",
            "[OPTION]... BASE LEFT RIGHT",
            "merge two versions of a folder over their base",
            mergeDetails,
            formatChoices,
            mergeOptions,
            examples,
            runMergeFolders};
}

} // namespace velmora::cli
