#include "platform/memory_size.h"

#include <qt_windows.h>

namespace velmora {

qint64 availableMemory()
{
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof status;
    return GlobalMemoryStatusEx(&status) ? qint64(status.ullAvailPhys) : 0;
}

} // namespace velmora
