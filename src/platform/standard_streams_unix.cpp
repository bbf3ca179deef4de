#include "platform/file_access.h"
#include "platform/standard_streams.h"

namespace velmora {

QStringList programArguments(int argc, char **argv)
{
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments.append(nameFromNative(argv[index]));
    return arguments;
}

void makeStandardStreamsBinary() {}

} // namespace velmora
