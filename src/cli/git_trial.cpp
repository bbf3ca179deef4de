#include "cli/git_trial.h"

#include "cli/git_config.h"

#include <QFile>
#include <QTemporaryDir>

namespace velmora::cli {

namespace {

constexpr std::chrono::seconds programLimit{20};

constexpr const char *baseText = "one\ntwo\nthree\n";
constexpr const char *leftText = "one\nleft\nthree\n";
constexpr const char *rightText = "one\nright\nthree\n";

/// A repository of its own, whatever repository this process is called from: a variable of git's would lead there.
class Scratch {
public:
    Scratch()
        : m_git(m_folder.path(), {{QStringLiteral("GIT_DIR"), path(".git")},
                                  {QStringLiteral("GIT_COMMON_DIR"), path(".git")},
                                  {QStringLiteral("GIT_WORK_TREE"), m_folder.path()},
                                  {QStringLiteral("GIT_INDEX_FILE"), path(".git/index")},
                                  {QStringLiteral("GIT_OBJECT_DIRECTORY"), path(".git/objects")},
                                  {QStringLiteral("GIT_PREFIX"), QString()}})
    {}

    [[nodiscard]] QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

    /// What git put out; an error once anything has failed that may not.
    QByteArray git(const QStringList &arguments, int mostStatus = 0)
    {
        static const QStringList own{QStringLiteral("-c"), QStringLiteral("user.name=trial"),
                                     QStringLiteral("-c"), QStringLiteral("user.email=trial@localhost"),
                                     QStringLiteral("-c"), QStringLiteral("commit.gpgSign=false"),
                                     QStringLiteral("-c"), QStringLiteral("core.hooksPath=/dev/null"),
                                     QStringLiteral("-c"), QStringLiteral("core.autocrlf=false"),
                                     QStringLiteral("-c"), QStringLiteral("rerere.enabled=false")};
        if (!m_error.isEmpty())
            return {};
        const ChildRun run = m_git.run(own + arguments);
        if (run.end != ChildEnd::Finished || run.exitCode > mostStatus)
            m_error = Git::complaintOf(run);
        return run.output;
    }

    void commit(const char *text)
    {
        QFile file(path("file"));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
            m_error = file.errorString();
        file.close();
        git({QStringLiteral("add"), QStringLiteral("file")});
        git({QStringLiteral("commit"), QStringLiteral("--quiet"), QStringLiteral("--message=trial")});
    }

    [[nodiscard]] QByteArray contents(const char *name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    [[nodiscard]] const QString &error() const { return m_error; }

private:
    QTemporaryDir m_folder;
    Git m_git;
    QString m_error;
};

/// A shell command that keeps what the files in the named arguments hold, and then does `then`.
QString standIn(const char *files, const QString &then, const char *arguments)
{
    return QStringLiteral("stand_in() { cat %1 >.git/seen; %2; }; stand_in %3")
        .arg(QLatin1String(files), then, QLatin1String(arguments));
}

QStringList setting(const char *key, const QString &value)
{
    return {QStringLiteral("-c"), QLatin1String(key) + u'=' + value};
}

void makeConflict(Scratch &scratch)
{
    scratch.git({QStringLiteral("init"), QStringLiteral("--quiet"), QStringLiteral("--initial-branch=left")});
    scratch.commit(baseText);
    scratch.git({QStringLiteral("checkout"), QStringLiteral("--quiet"), QStringLiteral("-b"), QStringLiteral("right")});
    scratch.commit(rightText);
    scratch.git({QStringLiteral("checkout"), QStringLiteral("--quiet"), QStringLiteral("left")});
    scratch.commit(leftText);
}

bool diffToolWorks(Scratch &scratch)
{
    const QString command = standIn(R"("$2" "$3")", QStringLiteral("return 0"), GitSettings::diffArguments);
    scratch.git(setting("difftool.velmora.cmd", command) +
                QStringList{QStringLiteral("difftool"), QStringLiteral("--no-prompt"), QStringLiteral("--tool=velmora"),
                            QStringLiteral("left"), QStringLiteral("right")});
    return scratch.contents(".git/seen") == QByteArray(leftText) + rightText;
}

/// Runs the tool for merges, which ends with `status`, and tells whether git still sees a conflict.
bool staysOpen(Scratch &scratch, int status)
{
    const QString then = QStringLiteral("cp \"$4\" \"$7\"; return %1").arg(status);
    const QString command = standIn(R"("$3" "$4" "$5")", then, GitSettings::mergeArguments);
    scratch.git(
        setting("mergetool.velmora.cmd", command) + setting("mergetool.velmora.trustExitCode", QStringLiteral("true")) +
            QStringList{QStringLiteral("mergetool"), QStringLiteral("--no-prompt"), QStringLiteral("--tool=velmora")},
        1);
    return !scratch.git({QStringLiteral("ls-files"), QStringLiteral("--unmerged")}).isEmpty();
}

class Report {
public:
    void add(bool ok, const QString &what)
    {
        m_result.ok = m_result.ok && ok;
        m_result.lines.append((ok ? QStringLiteral("ok: ") : QStringLiteral("FAILED: ")) + what);
    }
    [[nodiscard]] TrialResult take() { return std::move(m_result); }

private:
    TrialResult m_result;
};

} // namespace

TrialResult tryGit(const QString &program)
{
    Report report;
    Progress silent;
    const ChildRun version =
        runChild({.program = program, .arguments = {QStringLiteral("--version")}, .limit = programLimit}, {}, silent);
    report.add(version.end == ChildEnd::Finished && version.exitCode == 0, QStringLiteral("%1 starts").arg(program));

    Scratch scratch;
    makeConflict(scratch);
    report.add(diffToolWorks(scratch), QStringLiteral("git difftool passes both versions"));
    scratch.git({QStringLiteral("merge"), QStringLiteral("--quiet"), QStringLiteral("right")}, 1);
    report.add(staysOpen(scratch, 1), QStringLiteral("a merge that was given up stays a conflict"));
    report.add(scratch.contents(".git/seen") == QByteArray(leftText) + rightText + baseText,
               QStringLiteral("git mergetool passes both versions and their base"));
    report.add(!staysOpen(scratch, 0) && scratch.contents("file") == rightText,
               QStringLiteral("a merge that was saved is solved"));
    if (!scratch.error().isEmpty())
        report.add(false, QStringLiteral("git: ") + scratch.error());
    return report.take();
}

} // namespace velmora::cli
