#include "vfs/location.h"

#include <QDir>
#include <QFileInfo>

namespace velmora {

Location Location::ofFolder(const QString &path)
{
    if (path.isEmpty())
        return {};
    // QDir leaves what begins at the root of no drive in particular as it is: "/folder" on Windows.
    const QString place = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    return {Kind::LocalFolder, place, QDir::toNativeSeparators(place)};
}

} // namespace velmora
