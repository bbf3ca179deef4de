#include "vfs/git/git_call.h"

#include "core/progress.h"
#include "platform/memory_size.h"

#include <QDir>

#include <algorithm>

namespace velmora {

namespace {

constexpr std::chrono::minutes callLimit{10};
/// A million files take a few hundred megabytes.
constexpr qint64 leastMemory = qint64(1) << 30;
constexpr qint64 mostMemory = qint64(4) << 30;
constexpr qsizetype mostDetail = 1000;

/// Settings of the repository that would have git run something, each set to nothing.
constexpr const char *harmless[] = {
    "core.fsmonitor=false",    "core.hooksPath=/dev/null",
    "core.pager=cat",          "core.editor=false",
    "core.askPass=",           "core.sshCommand=false",
    "core.gitProxy=",          "core.alternateRefsCommand=",
    "core.splitIndex=false",   "core.untrackedCache=false",
    "credential.helper=",      "protocol.allow=never",
    "log.showSignature=false", "gc.auto=0",
    "maintenance.auto=false",  "submodule.recurse=false",
    "color.ui=false",
};

/// What would lead git to another repository, configuration or program than the one that was asked for.
const QStringList &leading()
{
    static const QStringList names{
        QStringLiteral("GIT_ALTERNATE_OBJECT_DIRECTORIES"),
        QStringLiteral("GIT_ATTR_SOURCE"),
        QStringLiteral("GIT_COMMON_DIR"),
        QStringLiteral("GIT_CONFIG"),
        QStringLiteral("GIT_CONFIG_COUNT"),
        QStringLiteral("GIT_CONFIG_PARAMETERS"),
        QStringLiteral("GIT_DIFF_OPTS"),
        QStringLiteral("GIT_DIR"),
        QStringLiteral("GIT_EXTERNAL_DIFF"),
        QStringLiteral("GIT_GLOB_PATHSPECS"),
        QStringLiteral("GIT_GRAFT_FILE"),
        QStringLiteral("GIT_ICASE_PATHSPECS"),
        QStringLiteral("GIT_IMPLICIT_WORK_TREE"),
        QStringLiteral("GIT_INDEX_FILE"),
        QStringLiteral("GIT_LITERAL_PATHSPECS"),
        QStringLiteral("GIT_NAMESPACE"),
        QStringLiteral("GIT_NOGLOB_PATHSPECS"),
        QStringLiteral("GIT_NO_REPLACE_OBJECTS"),
        QStringLiteral("GIT_OBJECT_DIRECTORY"),
        QStringLiteral("GIT_PREFIX"),
        QStringLiteral("GIT_REPLACE_REF_BASE"),
        QStringLiteral("GIT_SHALLOW_FILE"),
        QStringLiteral("GIT_WORK_TREE"),
    };
    return names;
}

QMap<QString, QString> plainSurroundings()
{
    return {
        // An unknown protocol is the only one that may be used; a list that is empty would be none.
        {QStringLiteral("GIT_ALLOW_PROTOCOL"), QStringLiteral("none")},
        {QStringLiteral("GIT_NO_LAZY_FETCH"), QStringLiteral("1")},
        {QStringLiteral("GIT_OPTIONAL_LOCKS"), QStringLiteral("0")},
        {QStringLiteral("GIT_PAGER"), QStringLiteral("cat")},
        {QStringLiteral("GIT_TERMINAL_PROMPT"), QStringLiteral("0")},
        {QStringLiteral("LC_ALL"), QStringLiteral("C")},
    };
}

QString ownWords(const QByteArray &errors)
{
    return QString::fromUtf8(errors.left(mostDetail)).trimmed();
}

GitFault faultOf(const ChildRun &run, bool mayFail)
{
    switch (run.end) {
    case ChildEnd::CannotStart:
        return {GitFaultKind::NoProgram, {}, run.reason};
    case ChildEnd::TimedOut:
        return {GitFaultKind::TooSlow, {}, ownWords(run.errors)};
    case ChildEnd::TooMuchOutput:
        return {GitFaultKind::TooMuch, {}, {}};
    case ChildEnd::Stopped:
        return {GitFaultKind::Stopped, {}, {}};
    case ChildEnd::Crashed:
        return {GitFaultKind::Failed, {}, ownWords(run.errors)};
    case ChildEnd::Finished:
        break;
    }
    // Whatever is asked, git says this first, and the hint with the setting's name in every language.
    if (run.exitCode != 0 && run.errors.contains("safe.directory"))
        return {GitFaultKind::NotOurs, {}, ownWords(run.errors)};
    if (run.exitCode != 0 && run.errors.contains("ut of memory"))
        return {GitFaultKind::TooMuch, {}, ownWords(run.errors)};
    if (run.exitCode == 0 || mayFail)
        return {};
    return {GitFaultKind::Failed, {}, ownWords(run.errors)};
}

} // namespace

ChildCall GitCaller::childCall(const QStringList &arguments, const GitCallExtras &extras) const
{
    const QString searchPath = qEnvironmentVariable("PATH");
    QString program = findProgram(QStringLiteral("git"), searchPath);
    if (program.isEmpty())
        program = findProgram(QStringLiteral("git.exe"), searchPath);
    ChildCall call{program, {QStringLiteral("--no-pager"), QStringLiteral("--no-optional-locks")}, callLimit};
    for (const char *setting : harmless)
        call.arguments << QStringLiteral("-c") << QLatin1String(setting);
    call.arguments << QStringLiteral("-C") << m_folder << arguments;
    call.mostOutput = extras.mostOutput;
    call.variables = plainSurroundings();
    call.variables.insert(extras.variables);
    call.without = leading();
    call.input = extras.input;
    // A few small folders that hold each other many times are a tree of more files than any memory holds.
    call.mostMemory = std::clamp(availableMemory() / 2, leastMemory, mostMemory);
    return call;
}

GitReply GitCaller::call(const QStringList &arguments, const CancelFlag &cancel, const GitCallExtras &extras) const
{
    const ChildCall call = childCall(arguments, extras);
    if (call.program.isEmpty())
        return {{}, {GitFaultKind::NoProgram, {}, {}}, 0};
    Progress silent;
    ChildRun run = runChild(call, cancel, silent);
    return {std::move(run.output), faultOf(run, extras.mayFail), run.exitCode, ownWords(run.errors)};
}

} // namespace velmora
