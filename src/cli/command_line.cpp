#include "cli/command_line.h"

#include "cli/command.h"

#include <QIODevice>

#include <algorithm>
#include <array>
#include <new>
#include <stdexcept>
#include <vector>

namespace velmora::cli {

namespace {

constexpr const char *programName = "velmora-cli";

// Known to every command and to the program itself.
constexpr std::array generalOptions{
    OptionSpec{"help", nullptr, "show this help and exit"},
    OptionSpec{"version", nullptr, "show the version and exit"},
};

constexpr const char *exitStatusText = "Exit status: 0 no differences, 1 differences, 2 trouble.\n";

/// Every command; a new one is a new row.
std::array<const Command *, 3> commands()
{
    return {&textCommand(), &folderCommand(), &systemCommand()};
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
    for (const Command *command : commands())
        width = std::max(width, qsizetype(qstrlen(command->name)));
    for (const Command *command : commands())
        text += "  " + QByteArray(command->name).leftJustified(width + 2) + command->summary + "\n";
    return text + "\nOptions:\n" + describeOptions(generalOptions) + "\n" + programName +
           " COMMAND --help tells about one command.\n" + exitStatusText;
}

/// The command's own options and those that every command has.
std::vector<OptionSpec> allOptions(const Command &command)
{
    std::vector<OptionSpec> options(command.options.begin(), command.options.end());
    options.insert(options.end(), generalOptions.begin(), generalOptions.end());
    return options;
}

QByteArray commandHelp(const Command &command)
{
    return QByteArray("Usage: ") + programName + " " + command.name + " " + command.synopsis + "\n" + command.details +
           "\nOptions:\n" + describeOptions(allOptions(command)) + "\n" + exitStatusText;
}

QByteArray versionText()
{
    return QByteArray(programName) + " " + VELMORA_VERSION + "\n";
}

int runCommand(const Command &command, const QStringList &rest, const Streams &streams)
{
    const std::vector<OptionSpec> options = allOptions(command);
    const Arguments arguments = Arguments::parse(rest, options);
    if (!arguments.error().isEmpty())
        return fail(streams, arguments.error());
    if (arguments.has("help"))
        return print(streams, commandHelp(command));
    if (arguments.has("version"))
        return print(streams, versionText());
    return command.run(arguments, streams);
}

int dispatch(const QStringList &arguments, const Streams &streams)
{
    if (arguments.isEmpty())
        return fail(streams, QStringLiteral("no command given; %1 --help lists them").arg(QLatin1String(programName)));
    const QString &first = arguments.first();
    for (const Command *command : commands()) {
        if (first == QLatin1String(command->name))
            return runCommand(*command, arguments.mid(1), streams);
    }
    if (first == QLatin1String("--help"))
        return print(streams, programHelp());
    if (first == QLatin1String("--version"))
        return print(streams, versionText());
    const QString kind = first.startsWith(u'-') ? QStringLiteral("option") : QStringLiteral("command");
    return fail(streams,
                QStringLiteral("unknown %1 \"%2\"; %3 --help lists them").arg(kind, first, QLatin1String(programName)));
}

} // namespace

void complain(const Streams &streams, const QString &message)
{
    // Paths may hold line feeds; an error stays one line.
    QString line = message;
    line.replace(u'\n', u' ');
    streams.errors.write((QLatin1String(programName) + QLatin1String(": ") + line + u'\n').toUtf8());
}

int fail(const Streams &streams, const QString &message)
{
    complain(streams, message);
    return Trouble;
}

int run(const QStringList &arguments, const Streams &streams)
{
    try {
        return dispatch(arguments, streams);
    } catch (const std::bad_alloc &) {
        return fail(streams, QStringLiteral("out of memory"));
    } catch (const std::length_error &) {
        return fail(streams, QStringLiteral("text too large"));
    }
}

} // namespace velmora::cli
