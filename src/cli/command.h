#pragma once

#include "cli/arguments.h"
#include "cli/command_line.h"

#include <span>

namespace velmora::cli {

/// One subcommand of the program.
struct Command {
    const char *name;
    const char *synopsis; ///< what follows the name on the command line
    const char *summary;  ///< one line for the list of commands
    const char *details;  ///< the help's text between synopsis and options
    std::span<const OptionSpec> options;
    int (*run)(const Arguments &arguments, const Streams &streams);
};

/// Writes "velmora-cli: message" and a line end to the error stream.
void complain(const Streams &streams, const QString &message);

/// The same, and returns the exit status of an error.
[[nodiscard]] int fail(const Streams &streams, const QString &message);

/// Compares two folders.
[[nodiscard]] const Command &folderCommand();

/// Compares two snapshots of system state.
[[nodiscard]] const Command &systemCommand();

/// Compares two texts.
[[nodiscard]] const Command &textCommand();

} // namespace velmora::cli
