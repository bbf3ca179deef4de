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

bool isCleanRelative(QStringView relative)
{
    for (qsizetype begin = 0, end = 0; begin <= relative.size(); begin = end + 1) {
        end = relative.indexOf(u'/', begin);
        end = end < 0 ? relative.size() : end;
        const QStringView part = relative.mid(begin, end - begin);
        if (part.isEmpty() || part == QLatin1String(".") || part == QLatin1String("..") || part.contains(QChar(u'\0')))
            return false;
    }
    return true;
}

} // namespace velmora
