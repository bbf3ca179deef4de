#include "platform/console.h"

#include <cstdio>

namespace velmora {

ConsoleResult writeToConsole(const QString &text, ConsoleStream stream)
{
    std::FILE *const file = stream == ConsoleStream::Output ? stdout : stderr;
    const QByteArray bytes = text.toLocal8Bit() + '\n';
    const auto size = static_cast<size_t>(bytes.size());
    const bool written = std::fwrite(bytes.constData(), 1, size, file) == size && std::fflush(file) == 0;
    return written ? ConsoleResult::Written : ConsoleResult::Failed;
}

} // namespace velmora
