#pragma once

#include <QByteArray>

namespace velmora::cli {

/// The program's page for the Unix manual, made from the table of commands.
[[nodiscard]] QByteArray manualPage();

/// Completions for bash, made from the table of commands: commands, options, and the values that options can have. The
/// names of files come from bash.
[[nodiscard]] QByteArray bashCompletion();

} // namespace velmora::cli
