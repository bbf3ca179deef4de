#include "platform/standard_streams.h"

#include <cstdio>

#include <windows.h>
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace velmora {

QStringList programArguments(int, char **)
{
    QStringList arguments;
    int count = 0;
    wchar_t **list = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int index = 1; list && index < count; ++index)
        arguments.append(QString::fromWCharArray(list[index]));
    LocalFree(list);
    return arguments;
}

void makeStandardStreamsBinary()
{
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
}

} // namespace velmora
