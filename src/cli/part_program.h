#pragma once

#include "cli/command.h"

#include <QStringList>

namespace velmora::cli {

// Commands that need a large library are carried out by programs of their own, which this one starts: loading the
// library would make every other command several times slower to start.

/// Starts a part of this program, which lies beside it or where packages put what nobody starts by hand, and passes on
/// what it writes. `purpose`: what it does, for the error when it is not there. Returns the exit status.
[[nodiscard]] int runPart(const QString &name, const QString &purpose, const QStringList &arguments,
                          const Streams &streams);

/// The arguments as the part takes them: those of `options` that have a value, of `flags` those that are there, and the
/// paths.
[[nodiscard]] QStringList passedOn(const Arguments &arguments, const QStringList &options,
                                   const QStringList &flags = {});

/// The `main` of such a part: parses its arguments as those of `command` and runs `work`.
[[nodiscard]] int partMain(int argc, char *argv[], const Command &command,
                           int (*work)(const Arguments &arguments, const Streams &streams));

} // namespace velmora::cli
