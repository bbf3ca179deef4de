#include "core/path_names.h"

namespace velmora {

QString bareName(const QString &path)
{
    return path.mid(path.lastIndexOf(u'/') + 1);
}

QString parentPath(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash > 0 ? path.left(slash) : path.left(slash + 1);
}

QString joinedPath(const QString &folder, const QString &name)
{
    return folder.isEmpty() || folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

bool isInside(const QString &path, const QString &folder)
{
    const QString start = joinedPath(folder, {});
    return path.size() > start.size() && path.startsWith(start);
}

} // namespace velmora
