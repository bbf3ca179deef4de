#include "cli/choices.h"
#include "cli/command.h"
#include "cli/git_config.h"
#include "cli/git_trial.h"
#include "cli/output_target.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QIODevice>

#include <array>
#include <memory>

namespace velmora::cli {

namespace {

const std::array setupOptions{
    OptionSpec{"global", nullptr, "for all repositories of this user; without this for the one of the current folder"},
    OptionSpec{"remove", nullptr, "take everything away again; what was set before comes back"},
    OptionSpec{"check", nullptr, "change nothing: look whether all is set, and try it in a repository made for that"},
    OptionSpec{"program", "FILE", "the desktop program; without this velmora beside this one, or on the search path"},
};

constexpr std::array formats{
    ChoiceOf<int>{{"summary", "one line for each step (the default)"}, 0},
};

constexpr const char *setupDetails =
    "Make Velmora the tool that git difftool and git mergetool open, and tell the commands that do it.\n"
    "A merge counts as solved only when it was saved without open conflicts.\n";

constexpr const char *setupStatus = "0 done, or all in order; 1 not set up as it should be; 2 trouble";

constexpr std::array examples{
    Example{"Look at differences and solve conflicts in Velmora from now on:",
            "velmora-cli git-setup --global\ngit difftool --dir-diff v1.0 v1.1\ngit mergetool"},
};

/// The desktop program; empty when there is none.
QString desktopProgram(const Arguments &arguments)
{
    if (const auto named = arguments.value("program"))
        return QFileInfo(*named).isFile() ? QFileInfo(*named).absoluteFilePath() : QString();
    const QFileInfo own(QCoreApplication::applicationFilePath());
    const QString name = own.suffix().isEmpty() ? QStringLiteral("velmora") : QStringLiteral("velmora.") + own.suffix();
    const QFileInfo beside(own.absoluteDir(), name);
    return beside.isFile() ? beside.absoluteFilePath() : findProgram(name, qEnvironmentVariable("PATH"));
}

struct Outcome {
    QStringList lines;
    QString error;
    bool inOrder = true;
};

Outcome check(const GitSettings &settings, const QString &program)
{
    const QStringList deviations = settings.deviations();
    TrialResult trial = tryGit(program);
    Outcome outcome{deviations + trial.lines, {}, deviations.isEmpty() && trial.ok};
    if (deviations.isEmpty())
        outcome.lines.prepend(QStringLiteral("ok: all is set"));
    return outcome;
}

Outcome carryOut(const Arguments &arguments)
{
    Outcome outcome;
    const Git git(QDir::currentPath());
    const QString program = desktopProgram(arguments);
    if (!arguments.paths().isEmpty())
        outcome.error = QStringLiteral("no paths are needed");
    else if (arguments.has("remove") && arguments.has("check"))
        outcome.error = QStringLiteral("either --remove or --check");
    else if (!git.isThere())
        outcome.error = QStringLiteral("git was not found");
    else if (program.isEmpty() && !arguments.has("remove"))
        outcome.error = QStringLiteral("the program velmora was not found; --program says where it is");
    if (!outcome.error.isEmpty())
        return outcome;
    const GitSettings settings(git, arguments.has("global"), program);
    if (arguments.has("check"))
        return check(settings, program);
    outcome.lines = arguments.has("remove") ? settings.remove(outcome.error) : settings.write(outcome.error);
    return outcome;
}

int runSetup(const Arguments &arguments, const Streams &streams)
{
    // Which asks the system for the path of this program.
    std::unique_ptr<QCoreApplication> application;
    if (!QCoreApplication::instance()) {
        static int count = 1;
        static char name[] = "velmora-cli";
        static char *names[] = {name, nullptr};
        application = std::make_unique<QCoreApplication>(count, names);
    }
    const Outcome outcome = carryOut(arguments);
    QByteArray text;
    for (const QString &line : outcome.lines)
        text += line.toUtf8() + '\n';
    const int status = writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{device.write(text) == text.size(), !outcome.inOrder};
    });
    return outcome.error.isEmpty() ? status : fail(streams, outcome.error);
}

} // namespace

Command gitSetupCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"git-setup",  "[OPTION]...", "make Velmora git's tool for differences and merges",
            setupDetails, formatChoices, setupOptions,
            examples,     runSetup,      setupStatus};
}

} // namespace velmora::cli
