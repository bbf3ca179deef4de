#include "folder/compare/folder_place.h"

#include "session/translate.h"
#include "vfs/git/git_place.h"
#include "vfs/location.h"

#include <QDir>
#include <QFileInfo>

namespace velmora {

namespace {

/// Empty when there is none.
QString parentFolder(const QString &folder)
{
    if (const std::optional<GitPlace> place = gitPlaceOf(folder)) {
        const QString around = parentFolder(place->path);
        return around.isEmpty() ? QString() : gitPlaceText({place->side, around});
    }
    const QString inner = Location::ofFolder(folder).place;
    const QString around = QFileInfo(inner).path();
    return inner.isEmpty() || QDir(inner).isRoot() || around == inner ? QString() : around;
}

/// Of a state the folder's name, and the state behind it.
QString folderName(const QString &path)
{
    if (const std::optional<GitPlace> place = gitPlaceOf(path))
        return QStringLiteral("%1 (%2)").arg(folderName(place->path), gitSideText(place->side));
    const QString name = QDir(path).dirName();
    return name.isEmpty() ? QDir::toNativeSeparators(path) : name;
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
    const std::optional<GitPlace> place = gitPlaceOf(from.left);
    m_origin = folderName(place ? place->path : Location::ofFolder(from.left).place);
    return above;
}

} // namespace velmora
