#pragma once

#include <QString>

namespace velmora {

enum class ConsoleStream { Output, Errors };

/// What became of a text for the console.
enum class ConsoleResult {
    Written,
    Failed,    ///< there is a console, or a file in its place, that did not take it
    NoConsole, ///< as for a windowed program started from a desktop: the text must be shown in another way
};

/// Writes `text` and a line end to the console that the process was started from. Needs no application object.
ConsoleResult writeToConsole(const QString &text, ConsoleStream stream = ConsoleStream::Output);

} // namespace velmora
