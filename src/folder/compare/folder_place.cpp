#include "folder/compare/folder_place.h"

#include "core/path_names.h"
#include "session/translate.h"
#include "vfs/location.h"
#include "vfs/place/other_tree.h"

#include <QDir>
#include <QFileInfo>

namespace velmora {

namespace {

/// Empty when there is none.
QString parentFolder(const QString &folder)
{
    if (isOtherTree(folder))
        return otherTreeAround(folder);
    const QString inner = Location::ofFolder(folder).place;
    const QString around = QFileInfo(inner).path();
    return inner.isEmpty() || QDir(inner).isRoot() || around == inner ? QString() : around;
}

/// Of a state or a host the folder's name, and which it is behind it.
QString folderName(const QString &path)
{
    if (isOtherTree(path))
        return otherTreeTitle(path);
    const QString name = QDir(path).dirName();
    return name.isEmpty() ? nativePath(path) : name;
}

} // namespace

bool FolderPlace::enter(const SessionPaths &folders)
{
    return std::exchange(m_folders, folders) != folders;
}

QString FolderPlace::title() const
{
    return Velmora::tr("%1 <-> %2").arg(folderName(m_folders.left), folderName(m_folders.right));
}

std::optional<SessionPaths> FolderPlace::goUp(const SessionPaths &from)
{
    const SessionPaths above{parentFolder(from.left), parentFolder(from.right), {}};
    if (above.left.isEmpty() || above.right.isEmpty())
        return std::nullopt;
    m_origin = isOtherTree(from.left) ? otherTreeName(from.left) : folderName(Location::ofFolder(from.left).place);
    return above;
}

} // namespace velmora
