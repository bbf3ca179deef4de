#include "platform/standard_streams.h"

#include <QFile>

namespace velmora {

QStringList programArguments(int argc, char **argv)
{
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments.append(QFile::decodeName(argv[index]));
    return arguments;
}

void makeStandardStreamsBinary() {}

} // namespace velmora
