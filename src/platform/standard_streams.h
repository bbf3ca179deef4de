#pragma once

#include <QStringList>

namespace velmora {

/// The arguments that the program was started with, without its own name, in full Unicode. Needs no application object.
[[nodiscard]] QStringList programArguments(int argc, char **argv);

/// Keeps the C library from changing line ends on standard input and output.
void makeStandardStreamsBinary();

} // namespace velmora
