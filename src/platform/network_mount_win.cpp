#include "platform/network_mount.h"

#include <windows.h>

namespace velmora {

QString networkMountOf(const QString &path)
{
    if (path.size() < 2 || path[1] != u':')
        return {};
    const QString root = path.first(2) + u'\\';
    return GetDriveTypeW(root.toStdWString().c_str()) == DRIVE_REMOTE ? root : QString();
}

} // namespace velmora
