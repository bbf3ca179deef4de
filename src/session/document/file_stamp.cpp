#include "session/document/file_stamp.h"

#include <QDateTime>
#include <QFileInfo>

namespace velmora {

FileStamp FileStamp::of(const QString &path)
{
    const QFileInfo info(path);
    if (path.isEmpty() || !info.isFile())
        return {};
    return {info.size(), info.lastModified().toMSecsSinceEpoch()};
}

} // namespace velmora
