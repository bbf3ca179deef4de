#include "platform/console.h"

#include <cstdio>

namespace velmora {

bool writeToConsole(const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit() + '\n';
    return std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout) ==
               static_cast<size_t>(bytes.size()) &&
           std::fflush(stdout) == 0;
}

} // namespace velmora
