#pragma once

#include "cli/arguments.h"
#include "cli/command_line.h"

#include <span>
#include <vector>

namespace velmora::cli {

/// A command line to learn from.
struct Example {
    const char *text; ///< what it does
    const char *line; ///< as it is typed; may be several lines
};

/// One subcommand of the program: what is parsed, and what help, manual page and completion are made of.
struct Command {
    const char *name;
    const char *synopsis;                ///< what follows the name on the command line
    const char *summary;                 ///< one line for the list of commands
    const char *details;                 ///< the help's text between synopsis and options
    std::span<const Choice> formats;     ///< of `--format`, which every command has; the first is the default
    std::span<const OptionSpec> options; ///< its own; those of all commands come with every command
    std::span<const Example> examples;
    int (*run)(const Arguments &arguments, const Streams &streams);
    const char *exitStatus = nullptr; ///< what its exit statuses mean, where they are not those of a comparison
    int trouble = Trouble;            ///< the exit status of an error
};

/// All commands, in the order of the help.
[[nodiscard]] std::span<const Command> commands();

/// Every option of a command: `--format`, those of its own, and those that every command has.
[[nodiscard]] std::vector<OptionSpec> allOptions(const Command &command);

/// What the exit statuses of all commands mean, in their order.
[[nodiscard]] std::span<const char *const> exitStatuses();

inline constexpr const char *programName = "velmora-cli";

/// Writes "velmora-cli: message" and a line end to the error stream.
void complain(const Streams &streams, const QString &message);

/// The same, and returns the exit status of an error.
[[nodiscard]] int fail(const Streams &streams, const QString &message);

// The rows of the table, each beside what it runs.
[[nodiscard]] Command archiveCommand();
[[nodiscard]] Command binaryCommand();
[[nodiscard]] Command checksumCommand();
[[nodiscard]] Command duplicatesCommand();
[[nodiscard]] Command folderCommand();
[[nodiscard]] Command imageCommand();
[[nodiscard]] Command gitCommand();
[[nodiscard]] Command gitSetupCommand();
[[nodiscard]] Command mergeCommand();
[[nodiscard]] Command mergeFoldersCommand();
[[nodiscard]] Command mp3Command();
[[nodiscard]] Command snapshotCommand();
[[nodiscard]] Command registryCommand();
[[nodiscard]] Command syncCommand();
[[nodiscard]] Command systemCommand();
[[nodiscard]] Command tableCommand();
[[nodiscard]] Command textCommand();
[[nodiscard]] Command usageCommand();
[[nodiscard]] Command versionCommand();

} // namespace velmora::cli
