#pragma once

#include <QStringList>

class QIODevice;

namespace velmora::cli {

/// What the program reads and writes beside files.
struct Streams {
    QIODevice &input;
    QIODevice &output;
    QIODevice &errors;
};

/// The program's exit status, as `diff` has it.
enum ExitStatus : int {
    NoDifferences = 0,
    DifferencesFound = 1,
    Trouble = 2,
};

/// Runs the program with `arguments`, its own name not among them. Errors are one line each on `streams.errors`.
[[nodiscard]] int run(const QStringList &arguments, const Streams &streams);

} // namespace velmora::cli
