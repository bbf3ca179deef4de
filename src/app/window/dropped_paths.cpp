#include "app/window/dropped_paths.h"

#include <QMimeData>
#include <QUrl>

namespace velmora {

QStringList droppedPaths(const QMimeData *data)
{
    QStringList paths;
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    }
    return paths;
}

} // namespace velmora
