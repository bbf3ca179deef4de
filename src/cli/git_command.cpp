#include "cli/choices.h"
#include "cli/command.h"
#include "cli/git_words.h"
#include "cli/json_writer.h"
#include "cli/output_target.h"
#include "core/output_buffer.h"
#include "core/visible_name.h"
#include "core/wildcard.h"
#include "vfs/git/git_comparison.h"
#include "vfs/git/git_history.h"

#include <QDir>
#include <QIODevice>

#include <algorithm>
#include <array>

namespace velmora::cli {

namespace {

constexpr const char *gitDetails =
    "Compare two states of the Git repository that REPOSITORY is in: each a branch, tag, commit or\n"
    "stash, \":index\", \":worktree\", or a folder as an absolute path or \":folder:PATH\". Nothing of the\n"
    "repository is run, and nothing is written to it.\n";

constexpr std::array examples{
    Example{"See what a branch has done since it parted from main:",
            "velmora-cli git . main topic --since-parting --format list"},
    Example{"See what of the work tree is not committed, with lines:",
            "velmora-cli git . HEAD :worktree --lines --format list"},
};

constexpr OptionSpec options[] = {
    {"since-parting", nullptr, "compare RIGHT with the commit where it parted from LEFT"},
    {"tracked-only", nullptr, "leave out files of the work tree that the repository does not have"},
    {"same", nullptr, "tell of what is the same on both sides, too"},
    {"lines", nullptr, "count the lines that come and go, and tell sizes"},
    {"commits", nullptr, "tell of the commits that only one side stands on; in JSON"},
    {"status", "LETTERS", "only these: M modified, A added, D deleted, R renamed, C copied, T type changed"},
    {"include", "MASKS", "only files whose path matches one of the masks, separated by \";\""},
    {"exclude", "MASKS", "no files whose path matches one of the masks"},
};

struct Outcome {
    GitComparison comparison;
    GitCommits commits;
    std::vector<const GitChange *> shown;
};

/// In the order of `GitStatus`.
constexpr std::array statusNames{"same", "modified", "added", "deleted", "renamed", "copied", "typeChanged"};

bool isWanted(const GitChange &change, const QString &letters, const WildcardList &include, const WildcardList &exclude)
{
    const auto matches = [&change](const WildcardList &masks) {
        return masks.matches(change.path()) || (!change.paths.left.isEmpty() && masks.matches(change.paths.left));
    };
    return (letters.isEmpty() || letters.contains(QLatin1Char(gitStatusLetter(change.status)))) &&
           (include.isEmpty() || matches(include)) && (exclude.isEmpty() || !matches(exclude));
}

WildcardList masksOf(const Arguments &arguments, const char *option)
{
    QStringList masks;
    for (const QString &value : arguments.values(option))
        masks += splitMasks(value);
    return WildcardList(masks);
}

bool writeSummary(QIODevice &device, const Outcome &outcome)
{
    std::array<qint64, statusNames.size()> counts{};
    GitLines lines;
    for (const GitChange *change : outcome.shown) {
        ++counts[std::size_t(change->status)];
        lines.added += change->lines.value_or(GitLines()).added;
        lines.removed += change->lines.value_or(GitLines()).removed;
    }
    QByteArray text = "Total: " + QByteArray::number(qint64(outcome.shown.size())) + " files";
    static constexpr std::array words{"Same", "Modified", "Added", "Deleted", "Renamed", "Copied", "Type changed"};
    for (std::size_t i = 0; i < counts.size(); ++i)
        text += QByteArray(" | ") + words[i] + ": " + QByteArray::number(counts[i]);
    if (lines != GitLines())
        text += " | Lines: +" + QByteArray::number(lines.added) + " -" + QByteArray::number(lines.removed);
    text += '\n';
    return device.write(text) == text.size();
}

QByteArray nameIn(const GitChange &change)
{
    const QByteArray name = visibleName(change.path()).toUtf8();
    const bool hasTwo = change.status == GitStatus::Renamed || change.status == GitStatus::Copied;
    return hasTwo ? visibleName(change.paths.left).toUtf8() + " -> " + name : name;
}

bool writeList(QIODevice &device, const Outcome &outcome)
{
    OutputBuffer output(device);
    for (const GitChange *change : outcome.shown) {
        const char letter = gitStatusLetter(change->status);
        QByteArray line(1, letter == ' ' ? '=' : letter);
        line += ' ' + nameIn(*change);
        if (change->lines)
            line += " +" + QByteArray::number(change->lines->added) + " -" + QByteArray::number(change->lines->removed);
        output << std::string_view(line.constData(), std::size_t(line.size())) << '\n';
    }
    return output.finish();
}

void writeSide(JsonWriter &json, std::string_view key, const GitChange &change, Side side)
{
    json.key(key);
    const GitEntry &entry = change.entries[side];
    if (change.paths[side].isEmpty() || !entry.isThere()) {
        json.null();
        return;
    }
    json.beginObject();
    json.text("path", change.paths[side]);
    json.text("mode", QString::number(entry.mode, 8));
    json.text("id", QString::fromLatin1(entry.name));
    if (change.sizes[side] >= 0)
        json.number("size", change.sizes[side]);
    json.endObject();
}

void writeChange(JsonWriter &json, const GitChange &change)
{
    json.beginObject();
    json.text("status", QLatin1String(statusNames[std::size_t(change.status)]));
    if (change.likeness > 0)
        json.number("likeness", change.likeness);
    if (change.lines) {
        json.number("added", change.lines->added);
        json.number("removed", change.lines->removed);
    }
    writeSide(json, "left", change, Side::Left);
    writeSide(json, "right", change, Side::Right);
    json.endObject();
}

void writeCommits(JsonWriter &json, const GitCommits &commits)
{
    json.key("commits");
    json.beginList();
    for (const GitCommit &commit : commits.commits) {
        json.beginObject();
        json.text("id", QString::fromLatin1(commit.name));
        json.text("side", commit.isOnLeft ? QStringLiteral("left") : QStringLiteral("right"));
        json.text("author", commit.author);
        json.number("time", commit.timeMs / 1000);
        json.text("subject", commit.subject);
        json.endObject();
    }
    json.endList();
    json.boolean("moreCommits", commits.areMore);
}

void writeState(JsonWriter &json, std::string_view key, const GitState &state)
{
    json.key(key);
    json.beginObject();
    json.text("name", gitSideText(state.side));
    json.text("commit", QString::fromLatin1(state.commit));
    json.text("tree", QString::fromLatin1(state.tree));
    json.endObject();
}

bool writeJson(QIODevice &device, const Outcome &outcome)
{
    OutputBuffer output(device);
    JsonWriter json(output);
    json.beginObject();
    json.text("repository", outcome.comparison.repository.place());
    writeState(json, "left", outcome.comparison.states.left);
    writeState(json, "right", outcome.comparison.states.right);
    json.key("files");
    json.beginList();
    for (const GitChange *change : outcome.shown)
        writeChange(json, *change);
    json.endList();
    writeCommits(json, outcome.commits);
    json.endObject();
    return output.finish();
}

using Writer = bool (*)(QIODevice &device, const Outcome &outcome);

constexpr std::array formats{
    ChoiceOf<Writer>{{"summary", "how many files of each status (the default)"}, writeSummary},
    ChoiceOf<Writer>{{"list", "one line for each file: its letter as in --status, = same; old -> new name"}, writeList},
    ChoiceOf<Writer>{{"json", "every file with both names, modes and contents' ids"}, writeJson},
};

void complainOfOddities(const Streams &streams, const GitComparison &comparison)
{
    for (const QString &name : comparison.oddNames)
        complain(streams, QStringLiteral("warning: this name leads out of its folder or into a repository: %1")
                              .arg(visibleName(name)));
    if (comparison.conflicts > 0)
        complain(streams, QStringLiteral("warning: %1 files that a merge has left open; our version is compared")
                              .arg(comparison.conflicts));
}

GitRequest requestOf(const Arguments &arguments)
{
    const QStringList &paths = arguments.paths();
    GitRequest request;
    request.path = QDir::fromNativeSeparators(paths.at(0));
    request.sides = {gitSideOf(paths.at(1)), gitSideOf(paths.at(2))};
    request.sinceParting = arguments.has("since-parting");
    request.untracked = arguments.has("tracked-only") ? UntrackedFiles::LeftOut : UntrackedFiles::Listed;
    request.listsSame = arguments.has("same");
    return request;
}

int runGit(const Arguments &arguments, const Streams &streams)
{
    if (arguments.paths().size() != 3)
        return fail(streams,
                    QStringLiteral("a repository and two states are needed, %1 given").arg(arguments.paths().size()));
    const CancelFlag never;
    Progress silent;
    Outcome outcome;
    GitComparison &comparison = outcome.comparison;
    comparison = compareGit(requestOf(arguments), never, silent);
    if (!comparison.fault.isError() && arguments.has("lines"))
        comparison.fault = fillDetails(comparison, never);
    if (!comparison.fault.isError() && arguments.has("commits"))
        outcome.commits =
            commitsBetween(comparison.repository, comparison.states.left.commit, comparison.states.right.commit, never);
    for (const GitFault &fault : {comparison.fault, outcome.commits.fault}) {
        if (fault.isError())
            return fail(streams, gitFaultText(fault));
    }
    complainOfOddities(streams, comparison);
    const QString letters = arguments.value("status").value_or(QString()).toUpper();
    const WildcardList include = masksOf(arguments, "include");
    const WildcardList exclude = masksOf(arguments, "exclude");
    for (const GitChange &change : comparison.changes) {
        if (isWanted(change, letters, include, exclude))
            outcome.shown.push_back(&change);
    }
    const bool differs = std::any_of(outcome.shown.begin(), outcome.shown.end(),
                                     [](const GitChange *change) { return change->status != GitStatus::Same; });
    return writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{chosen(formats, arguments, "format").value(device, outcome), differs};
    });
}

} // namespace

Command gitCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"git",
            "[OPTION]... REPOSITORY LEFT RIGHT",
            "compare two states of a Git repository",
            gitDetails,
            formatChoices,
            options,
            examples,
            runGit};
}

} // namespace velmora::cli
