#include "platform/raw_file.h"
#include "support/files.h"

namespace velmora::test {

bool makeRawFolder(const QString &path)
{
    return QDir().mkdir(path);
}

bool makeRawFile(const QString &path, const QByteArray &bytes)
{
    return makeFile(path, bytes);
}

bool removeRawTree(const QString &path)
{
    return QDir(path).removeRecursively();
}

} // namespace velmora::test
