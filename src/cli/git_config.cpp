#include "cli/git_config.h"

#include <QDir>

#include <algorithm>
#include <array>

namespace velmora::cli {

namespace {

constexpr std::chrono::seconds gitLimit{30};
constexpr const char *toolName = "velmora";

/// A key that names the tool to be used, and where the one that it named before is remembered.
struct Choice {
    const char *key;
    const char *former;
};
constexpr std::array choices{Choice{"diff.tool", "velmora.formerdifftool"},
                             Choice{"merge.tool", "velmora.formermergetool"}};

/// A word of a shell command that stands for itself.
QString quoted(QString word)
{
    return u'\'' + word.replace(u'\'', QLatin1String("'\\''")) + u'\'';
}

/// An argument as it would be typed.
QString shown(const QString &argument)
{
    const bool plain = std::all_of(argument.begin(), argument.end(), [](QChar c) {
        return c.isLetterOrNumber() || QStringLiteral("-._/:=").contains(c);
    });
    return plain && !argument.isEmpty() ? argument : quoted(argument);
}

QString commandOf(const QString &program, const char *arguments)
{
    return quoted(QDir::fromNativeSeparators(program)) + u' ' + QLatin1String(arguments);
}

QString gitProgram()
{
    const QString path = qEnvironmentVariable("PATH");
    const QString program = findProgram(QStringLiteral("git"), path);
    return program.isEmpty() ? findProgram(QStringLiteral("git.exe"), path) : program;
}

} // namespace

Git::Git(const QString &folder, const QMap<QString, QString> &variables)
    : m_program(gitProgram()), m_folder(folder), m_variables(variables)
{}

ChildRun Git::run(const QStringList &arguments) const
{
    Progress silent;
    return runChild(
        {.program = m_program, .arguments = arguments, .limit = gitLimit, .folder = m_folder, .variables = m_variables},
        {}, silent);
}

QString Git::complaintOf(const ChildRun &run)
{
    const QString errors = QString::fromUtf8(run.errors).simplified();
    if (run.end == ChildEnd::TimedOut)
        return QStringLiteral("git did not end");
    if (run.end == ChildEnd::CannotStart)
        return QStringLiteral("git could not be started: %1").arg(run.reason);
    return errors.isEmpty() ? QStringLiteral("git ended with status %1").arg(run.exitCode) : errors;
}

GitSettings::GitSettings(const Git &git, bool global, const QString &program)
    : m_git(git),
      m_global(global),
      m_settings{{QStringLiteral("difftool.velmora.cmd"), commandOf(program, diffArguments)},
                 {QStringLiteral("mergetool.velmora.cmd"), commandOf(program, mergeArguments)},
                 {QStringLiteral("mergetool.velmora.trustExitCode"), QStringLiteral("true")}}
{}

QStringList GitSettings::command(const QStringList &arguments) const
{
    return QStringList{QStringLiteral("config"), m_global ? QStringLiteral("--global") : QStringLiteral("--local")} +
           arguments;
}

GitSettings::Values GitSettings::valuesOf(const QString &key) const
{
    const ChildRun run = m_git.run(command({QStringLiteral("--null"), QStringLiteral("--get-all"), key}));
    constexpr int noSuchKey = 1;
    if (run.end != ChildEnd::Finished || run.exitCode > noSuchKey)
        return {{}, Git::complaintOf(run)};
    QStringList values = QString::fromUtf8(run.output).split(QChar(u'\0'));
    values.removeLast();
    return {values, {}};
}

bool GitSettings::change(const QStringList &arguments, QStringList &done, QString &error) const
{
    const QStringList all = command(arguments);
    const ChildRun run = m_git.run(all);
    if (run.end != ChildEnd::Finished || run.exitCode != 0) {
        error = Git::complaintOf(run);
        return false;
    }
    QStringList words{QStringLiteral("git")};
    for (const QString &argument : all)
        words.append(shown(argument));
    done.append(words.join(u' '));
    return true;
}

bool GitSettings::choose(const char *key, const char *former, QStringList &done, QString &error) const
{
    const QString name = QLatin1String(key);
    const Values values = valuesOf(name);
    error = values.error;
    if (values.all.size() > 1)
        error = QStringLiteral("%1 is set %2 times; leave one of them").arg(name).arg(values.all.size());
    if (!error.isEmpty())
        return false;
    const QString tool = QLatin1String(toolName);
    if (values.all.value(0) == tool)
        return true;
    if (!values.all.isEmpty() && !change({QLatin1String(former), values.all.first()}, done, error))
        return false;
    return change({name, tool}, done, error);
}

bool GitSettings::giveBack(const char *key, const char *former, QStringList &done, QString &error) const
{
    const Values now = valuesOf(QLatin1String(key));
    const Values before = valuesOf(QLatin1String(former));
    error = now.error + before.error;
    if (!error.isEmpty())
        return false;
    // Whoever has chosen another tool since then keeps that.
    if (now.all == QStringList{QLatin1String(toolName)}) {
        const bool changed = before.all.isEmpty() ? change({QStringLiteral("--unset"), QLatin1String(key)}, done, error)
                                                  : change({QLatin1String(key), before.all.first()}, done, error);
        if (!changed)
            return false;
    }
    return before.all.isEmpty() || change({QStringLiteral("--unset-all"), QLatin1String(former)}, done, error);
}

QStringList GitSettings::write(QString &error) const
{
    QStringList done;
    for (auto setting = m_settings.begin(); setting != m_settings.end(); ++setting) {
        if (!change({setting.key(), setting.value()}, done, error))
            return done;
    }
    for (const Choice &choice : choices) {
        if (!choose(choice.key, choice.former, done, error))
            return done;
    }
    return done;
}

QStringList GitSettings::remove(QString &error) const
{
    QStringList done;
    for (const Choice &choice : choices) {
        if (!giveBack(choice.key, choice.former, done, error))
            return done;
    }
    const QStringList keys = m_settings.keys();
    for (const QString &key : keys) {
        const Values values = valuesOf(key);
        error = values.error;
        if (!error.isEmpty() || (!values.all.isEmpty() && !change({QStringLiteral("--unset-all"), key}, done, error)))
            return done;
    }
    return done;
}

QStringList GitSettings::deviations() const
{
    QMap<QString, QString> wanted = m_settings;
    for (const Choice &choice : choices)
        wanted.insert(QLatin1String(choice.key), QLatin1String(toolName));
    QStringList found;
    for (auto setting = wanted.constBegin(); setting != wanted.constEnd(); ++setting) {
        const ChildRun run =
            m_git.run({QStringLiteral("config"), QStringLiteral("--null"), QStringLiteral("--get"), setting.key()});
        const QString value = QString::fromUtf8(run.output).section(QChar(u'\0'), 0, 0);
        if (value != setting.value())
            found.append(QStringLiteral("%1 is %2 and not %3")
                             .arg(setting.key(), value.isEmpty() ? QStringLiteral("not set") : shown(value),
                                  shown(setting.value())));
    }
    return found;
}

} // namespace velmora::cli
