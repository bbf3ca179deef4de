#include "platform/raw_file.h"

#include <QDir>

namespace velmora::test {

bool makeRawFolder(const QString &path)
{
    return QDir().mkdir(path);
}

bool makeRawFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool removeRawTree(const QString &path)
{
    return QDir(path).removeRecursively();
}

} // namespace velmora::test
