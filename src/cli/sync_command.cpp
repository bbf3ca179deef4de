#include "cli/choices.h"
#include "cli/command.h"
#include "cli/folder_request.h"
#include "cli/json_writer.h"
#include "cli/operation_run.h"
#include "cli/output_target.h"
#include "core/output_buffer.h"
#include "core/visible_name.h"
#include "folder/engine/folder_engine.h"
#include "folder/engine/name_conflicts.h"
#include "folder/engine/sync_moves.h"
#include "folder/engine/sync_planner.h"
#include "folder/operations/folder_chain.h"
#include "folder/operations/sync_run.h"

#include <QIODevice>

#include <array>

namespace velmora::cli {

namespace {

constexpr std::array modes{
    ChoiceOf<SyncMode>{{"left-to-right", "make RIGHT like LEFT (the default)"}, SyncMode::LeftToRight},
    ChoiceOf<SyncMode>{{"right-to-left", "make LEFT like RIGHT"}, SyncMode::RightToLeft},
    ChoiceOf<SyncMode>{{"mirror", "copy both ways; of changed files the newer one wins, of equal times RIGHT's"},
                       SyncMode::Mirror},
    ChoiceOf<SyncMode>{{"update", "copy both ways; changed files of equal times are left alone"},
                       SyncMode::UpdateNewer},
};
constexpr auto modeChoices = choicesOf(modes);

const std::array syncOptions{
    OptionSpec{"mode", "MODE", "which way the folders are made to agree", modeChoices},
    OptionSpec{"method", "METHOD", "when two files are the same", methodChoices()},
    OptionSpec{"tolerance", "SECONDS", "times so far apart are equal"},
    OptionSpec{"hidden", nullptr, "look at hidden files and folders, too"},
    OptionSpec{"moves", nullptr, "read files of one side only, and move what the other side has elsewhere"},
    OptionSpec{"ignore-hours", nullptr, "times that are whole hours apart are equal"},
    OptionSpec{"run", nullptr, "carry the plan out; without this it is only told"},
    OptionSpec{"max-delete", "COUNT",
               "carry out no plan that deletes more entries than that. Without this, none\n"
               "that deletes more than half of a side, or all because the other is empty"},
    OptionSpec{"for-good", nullptr, "delete for good instead of to the recycle bin"},
};

constexpr const char *syncDetails =
    "Tell what would make two folders agree, and do it when asked to.\n"
    "Each file is written beside its place and then takes it in one step. What has changed since it was\n"
    "compared is left alone and told. A run can be undone in the window, by the list of past operations.\n";

constexpr std::array examples{
    Example{"See what a backup lacks, then bring it up to date:",
            "velmora-cli sync ~/work /media/backup/work\nvelmora-cli sync --run ~/work /media/backup/work"},
};

struct SyncRequest {
    FolderRequest folders;
    SyncRules rules;
    bool findsMoves = false;
    std::optional<qint64> mostDeletions;
    DeleteManner manner = DeleteManner::ToRecycleBin;
    bool runs = false;

    [[nodiscard]] QString take(const Arguments &arguments)
    {
        if (const std::optional<QString> most = arguments.value("max-delete")) {
            bool isNumber = false;
            mostDeletions = most->toLongLong(&isNumber);
            if (!isNumber || *mostDeletions < 0)
                return QStringLiteral("\"%1\" is no number of entries").arg(*most);
        }
        rules = {chosen(modes, arguments, "mode").value, arguments.has("ignore-hours")};
        findsMoves = arguments.has("moves");
        runs = arguments.has("run");
        manner = arguments.has("for-good") ? DeleteManner::ForGood : DeleteManner::ToRecycleBin;
        if (const QString error = folders.take(arguments); !error.isEmpty())
            return error;
        for (const Side side : bothSides) {
            if (!folders.folders[side].source->isLocal())
                return QStringLiteral("%1: is not a folder").arg(folders.folders[side].shownPath());
        }
        return {};
    }
};

/// What was found, what is to be done about it, and what came of that.
struct Synchronisation {
    QList<FolderProblem> problems;
    QList<NameConflict> conflicts;
    Sides<SyncLoss> losses;
    QList<SyncPlanItem> plan; ///< without paths
    OperationPlan steps;
    std::optional<OperationOutcome> outcome;

    /// Whether the folders do not agree after all this, as far as the mode wants them to. A folder that both sides have
    /// is no step, whatever its action is.
    [[nodiscard]] bool leavesSomething() const { return outcome ? outcome->failed > 0 : !steps.steps.isEmpty(); }
};

Synchronisation analysed(const SyncRequest &request)
{
    const FolderRequest &folders = request.folders;
    Synchronisation sync;
    PlanInput compared;
    compared.roots = folders.folders;
    compared.identities = identitiesOf(FileLayer::native(), compared.roots);
    compared.toleranceSec = folders.options.timeToleranceSec;
    FolderInput input = FolderInput::of(folders.folders, folders.options);
    input.ignoresHours = request.rules.ignoresHours;
    compared.items = compareFolderTreeInShort(input, {}, {nullptr, &compared.problems});
    sync.problems = compared.problems;
    sync.plan = planSync(compared.items, request.rules);
    if (request.findsMoves) {
        Progress silent;
        sync.plan = withMoves(sync.plan, findMovedFiles(folders.folders, compared.items, {}, silent));
    }
    sync.conflicts = findNameConflicts(compared.items, sync.plan);
    sync.losses = lossesOf(compared.items, sync.plan);
    const SyncActions actions = actionsOf(sync.plan);
    for (SyncPlanItem &item : sync.plan) { // most of what an entry takes, and nothing that is told later
        item.leftPath.clear();
        item.rightPath.clear();
    }
    sync.steps = planSyncRun(std::move(compared), actions, request.manner);
    return sync;
}

/// Why the plan is not carried out without being asked for twice; empty when it is.
QString objection(const SyncRequest &request, const Synchronisation &sync)
{
    const Sides<SyncLoss> &losses = sync.losses;
    if (request.mostDeletions) {
        const qint64 deleted = losses.left.deleted + losses.right.deleted;
        return deleted <= *request.mostDeletions
                   ? QString()
                   : QStringLiteral("nothing was done: %1 entries would be deleted").arg(deleted);
    }
    for (const Side side : bothSides) {
        const SyncLoss &loss = losses[side];
        if (loss.isSuspicious()) {
            return QStringLiteral("nothing was done: %1 of %2 entries of %3 would be deleted (see --max-delete)")
                .arg(loss.deleted)
                .arg(loss.present)
                .arg(visibleName(request.folders.folders[side].path));
        }
    }
    return {};
}

const char *signOf(SyncAction action)
{
    switch (action) {
    case SyncAction::Skip:
        break;
    case SyncAction::CopyToRight:
        return "->";
    case SyncAction::CopyToLeft:
        return "<-";
    case SyncAction::DeleteRight:
        return ">x";
    case SyncAction::DeleteLeft:
        return "x<";
    case SyncAction::MoveOnRight:
        return ">>";
    case SyncAction::MoveOnLeft:
        return "<<";
    }
    return "--";
}

bool writeText(QIODevice &device, const SyncRequest &, const Synchronisation &sync)
{
    OutputBuffer output(device);
    for (const SyncPlanItem &item : sync.plan) {
        output << signOf(item.syncAction()) << ' ' << visibleName(item.name).toStdString() << (item.isDir ? "/" : "");
        if (isMove(item))
            output << " (from " << visibleName(item.movedFrom).toStdString() << ')';
        output << '\n';
    }
    const SyncCounts counts = countSync(sync.plan);
    output << QStringLiteral("Copy right: %1 | Copy left: %2 | Delete: %3 | Skip: %4 | Total: %5\n")
                  .arg(counts.copyToRight)
                  .arg(counts.copyToLeft)
                  .arg(counts.deletions)
                  .arg(counts.skipped)
                  .arg(counts.total)
                  .toStdString();
    if (counts.moves > 0)
        output << QStringLiteral("Move: %1\n").arg(counts.moves).toStdString();
    if (sync.outcome) {
        output << QStringLiteral("Sync complete. Success: %1, failed: %2\n")
                      .arg(sync.outcome->succeeded)
                      .arg(sync.outcome->failed)
                      .toStdString();
    }
    return output.finish();
}

const char *nameOf(SyncAction action)
{
    switch (action) {
    case SyncAction::Skip:
        break;
    case SyncAction::CopyToRight:
        return "copyToRight";
    case SyncAction::CopyToLeft:
        return "copyToLeft";
    case SyncAction::DeleteRight:
        return "deleteRight";
    case SyncAction::DeleteLeft:
        return "deleteLeft";
    case SyncAction::MoveOnRight:
        return "moveOnRight";
    case SyncAction::MoveOnLeft:
        return "moveOnLeft";
    }
    return "skip";
}

void writeOutcome(JsonWriter &json, const OperationOutcome &outcome)
{
    json.key("run");
    json.beginObject();
    json.number("succeeded", outcome.succeeded);
    json.number("failed", outcome.failed);
    json.text("journal", outcome.journalId);
    json.endObject();
}

bool writeJson(QIODevice &device, const SyncRequest &request, const Synchronisation &sync)
{
    OutputBuffer output(device);
    JsonWriter json(output);
    json.beginObject();
    json.text("left", request.folders.folders.left.path);
    json.text("right", request.folders.folders.right.path);
    json.number("mode", qint64(request.rules.mode));
    json.key("items");
    json.beginList();
    for (const SyncPlanItem &item : sync.plan) {
        json.beginObject();
        json.text("name", item.name);
        json.text("action", QLatin1String(nameOf(item.syncAction())));
        if (isMove(item))
            json.text("movedFrom", item.movedFrom);
        json.number("status", item.status);
        json.boolean("isDir", item.isDir);
        json.number("leftSize", item.leftSize);
        json.number("rightSize", item.rightSize);
        json.endObject();
    }
    json.endList();
    if (sync.outcome)
        writeOutcome(json, *sync.outcome);
    json.endObject();
    return output.finish();
}

QString textOf(const NameConflict &conflict)
{
    const QString name = visibleName(conflict.name);
    switch (conflict.kind) {
    case NameConflict::Kind::Case:
        break;
    case NameConflict::Kind::Form:
        return QStringLiteral("%1: looks like %2").arg(name, visibleName(conflict.other));
    case NameConflict::Kind::NotAllowed:
        return QStringLiteral("%1: Windows cannot hold this name").arg(name);
    case NameConflict::Kind::TooLong:
        return QStringLiteral("%1: this name is too long for most file systems").arg(name);
    }
    return QStringLiteral("%1: differs from %2 by case only").arg(name, visibleName(conflict.other));
}

using Writer = bool (*)(QIODevice &device, const SyncRequest &request, const Synchronisation &sync);

constexpr std::array formats{
    ChoiceOf<Writer>{
        {"text",
         "a line for each entry: -> and <- copied, >x and x< deleted, >> and << moved, -- left alone (the default)"},
        writeText},
    ChoiceOf<Writer>{{"json", "every entry with its action, and how the run went"}, writeJson},
};

int runSyncCommand(const Arguments &arguments, const Streams &streams)
{
    SyncRequest request;
    if (const QString error = request.take(arguments); !error.isEmpty())
        return fail(streams, error);
    Synchronisation sync = analysed(request);
    const bool isIncomplete = complainAbout(streams, sync.problems);
    for (const NameConflict &conflict : sync.conflicts)
        complain(streams, textOf(conflict));
    if (request.runs && sync.leavesSomething()) {
        if (const QString why = objection(request, sync); !why.isEmpty())
            return fail(streams, why);
        sync.outcome = runOperation(std::move(sync.steps), QStringLiteral("velmora-cli sync"), streams);
    }
    const int status = writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{chosen(formats, arguments, "format").value(device, request, sync), sync.leavesSomething()};
    });
    return isIncomplete ? Trouble : status;
}

} // namespace

Command syncCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"sync",
            "[OPTION]... LEFT RIGHT",
            "make two folders agree",
            syncDetails,
            formatChoices,
            syncOptions,
            examples,
            runSyncCommand};
}

} // namespace velmora::cli
