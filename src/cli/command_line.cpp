#include "cli/command_line.h"

#include "cli/command.h"
#include "cli/manual.h"
#include "core/visible_name.h"

#include <QIODevice>

#include <algorithm>
#include <array>
#include <new>
#include <stdexcept>
#include <vector>

namespace velmora::cli {

namespace {

constexpr std::array statuses{"no differences", "differences", "trouble; one line on standard error says what"};

constexpr OptionSpec outputOption{"output", "FILE",
                                  "write to FILE, which is replaced in one step, instead of standard output"};

// Known to every command and to the program itself.
constexpr std::array generalOptions{
    OptionSpec{"help", nullptr, "show this help and exit"},
    OptionSpec{"version", nullptr, "show the version and exit"},
};

QByteArray exitStatusText()
{
    return QByteArray("Exit status: 0 ") + statuses[0] + ", 1 " + statuses[1] + ", 2 " +
           QByteArray(statuses[2]).split(';').first() + ".\n";
}

int print(const Streams &streams, const QByteArray &text)
{
    if (streams.output.write(text) != text.size())
        return fail(streams, streams.output.errorString());
    return NoDifferences;
}

QByteArray programHelp()
{
    QByteArray text = QByteArray("Usage: ") + programName + " COMMAND [OPTION]... ARGUMENT...\n" +
                      "Compare files and folders without a window.\n\nCommands:\n";
    qsizetype width = 0;
    for (const Command &command : commands())
        width = std::max(width, qsizetype(qstrlen(command.name)));
    for (const Command &command : commands())
        text += "  " + QByteArray(command.name).leftJustified(width + 2) + command.summary + "\n";
    return text + "\nOptions:\n" + describeOptions(generalOptions) + "\n" + programName +
           " COMMAND --help tells about one command.\n" + exitStatusText();
}

QByteArray commandHelp(const Command &command)
{
    return QByteArray("Usage: ") + programName + " " + command.name + " " + command.synopsis + "\n" + command.details +
           "\nOptions:\n" + describeOptions(allOptions(command)) + "\n" +
           (command.exitStatus ? QByteArray("Exit status: ") + command.exitStatus + ".\n" : exitStatusText());
}

QByteArray versionText()
{
    return QByteArray(programName) + " " + VELMORA_VERSION + "\n";
}

/// Runs `work` and tells of memory that it lacks, with the exit status `trouble`.
template <typename Work>
int guarded(const Streams &streams, int trouble, Work work)
{
    try {
        return work();
    } catch (const std::bad_alloc &) {
        complain(streams, QStringLiteral("out of memory"));
    } catch (const std::length_error &) {
        complain(streams, QStringLiteral("text too large"));
    }
    return trouble;
}

int runCommand(const Command &command, const QStringList &rest, const Streams &streams)
{
    const std::vector<OptionSpec> options = allOptions(command);
    const Arguments arguments = Arguments::parse(rest, options);
    if (!arguments.error().isEmpty()) {
        complain(streams, arguments.error());
        return command.trouble;
    }
    if (arguments.has("help"))
        return print(streams, commandHelp(command));
    if (arguments.has("version"))
        return print(streams, versionText());
    return guarded(streams, command.trouble, [&] { return command.run(arguments, streams); });
}

int dispatch(const QStringList &arguments, const Streams &streams)
{
    if (arguments.isEmpty())
        return fail(streams, QStringLiteral("no command given; %1 --help lists them").arg(QLatin1String(programName)));
    const QString &first = arguments.first();
    for (const Command &command : commands()) {
        if (first == QLatin1String(command.name))
            return runCommand(command, arguments.mid(1), streams);
    }
    if (first == QLatin1String("--help"))
        return print(streams, programHelp());
    if (first == QLatin1String("--version"))
        return print(streams, versionText());
    // For those who build and install the program.
    if (first == QLatin1String("--man"))
        return print(streams, manualPage());
    if (first == QLatin1String("--bash-completion"))
        return print(streams, bashCompletion());
    const QString kind = first.startsWith(u'-') ? QStringLiteral("option") : QStringLiteral("command");
    return fail(streams,
                QStringLiteral("unknown %1 \"%2\"; %3 --help lists them").arg(kind, first, QLatin1String(programName)));
}

} // namespace

std::span<const Command> commands()
{
    static const std::array all{textCommand(),       folderCommand(), syncCommand(),     mergeFoldersCommand(),
                                snapshotCommand(),   usageCommand(),  binaryCommand(),   checksumCommand(),
                                duplicatesCommand(), imageCommand(),  mp3Command(),      mergeCommand(),
                                systemCommand(),     tableCommand(),  registryCommand(), versionCommand(),
                                archiveCommand(),    gitCommand(),    gitSetupCommand()};
    return all;
}

std::vector<OptionSpec> allOptions(const Command &command)
{
    std::vector<OptionSpec> options{{"format", "FORMAT", "", command.formats}};
    const bool hasOwnOutput = std::any_of(command.options.begin(), command.options.end(), [](const OptionSpec &option) {
        return QLatin1String(option.name) == QLatin1String(outputOption.name);
    });
    if (!hasOwnOutput)
        options.push_back(outputOption);
    options.insert(options.end(), command.options.begin(), command.options.end());
    options.insert(options.end(), generalOptions.begin(), generalOptions.end());
    return options;
}

std::span<const char *const> exitStatuses()
{
    return statuses;
}

void complain(const Streams &streams, const QString &message)
{
    // Paths may hold line feeds, or what a terminal obeys; an error stays one line.
    streams.errors.write((QLatin1String(programName) + QLatin1String(": ") + visibleName(message) + u'\n').toUtf8());
}

int fail(const Streams &streams, const QString &message)
{
    complain(streams, message);
    return Trouble;
}

int run(const QStringList &arguments, const Streams &streams)
{
    return guarded(streams, Trouble, [&] { return dispatch(arguments, streams); });
}

} // namespace velmora::cli
