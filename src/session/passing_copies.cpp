#include "session/passing_copies.h"

#include "core/passing_folder.h"
#include "session/session_record.h"

#include <QFile>
#include <QHash>
#include <QMutex>
#include <QMutexLocker>

namespace velmora {

namespace {

struct Origins {
    QMutex mutex; ///< workers put paths into words, too
    QHash<QString, QString> byCopy;
};

Origins &origins()
{
    static Origins all;
    return all;
}

} // namespace

void noteOrigin(const QString &path, const QString &origin)
{
    if (!isInPassingFolder(path))
        return;
    const QMutexLocker locker(&origins().mutex);
    origins().byCopy.insert(path, origin);
}

void noteCopy(const QString &path, const QString &origin)
{
    if (isInPassingFolder(path))
        QFile::setPermissions(path, QFileDevice::ReadOwner);
    noteOrigin(path, origin);
}

QString originOfCopy(const QString &path)
{
    const QMutexLocker locker(&origins().mutex);
    return origins().byCopy.value(path);
}

bool isOnCopies(const SessionPaths &paths)
{
    return isInPassingFolder(paths.left) || isInPassingFolder(paths.right) || isInPassingFolder(paths.base);
}

} // namespace velmora
