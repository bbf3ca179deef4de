#include "platform/file_layer.h"

#include <QList>

namespace velmora {

std::unique_ptr<FolderHandle> FolderHandle::openBelow(const QString &relative, FileError &error)
{
    std::unique_ptr<FolderHandle> reached;
    for (const QStringView name : QStringView(relative).split(u'/')) {
        reached = (reached ? *reached : *this).openFolder(name.toString(), error);
        if (!reached)
            return nullptr;
    }
    return reached;
}

} // namespace velmora
