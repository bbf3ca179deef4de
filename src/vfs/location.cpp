#include "vfs/location.h"

#include <QDir>

namespace velmora {

Location Location::ofFolder(const QString &path)
{
    if (path.isEmpty())
        return {};
    const QString place = QDir::cleanPath(QDir(path).absolutePath());
    return {Kind::LocalFolder, place, QDir::toNativeSeparators(place)};
}

} // namespace velmora
