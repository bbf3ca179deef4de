#include "platform/long_path_win.h"
#include "platform/system_attribute.h"

#include <windows.h>

namespace velmora {

bool isSystemFile(const QString &path)
{
    const DWORD attributes = ::GetFileAttributesW(longPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_SYSTEM) != 0 &&
           (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool dotHides() noexcept
{
    return false;
}

} // namespace velmora
