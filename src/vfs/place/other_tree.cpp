#include "vfs/place/other_tree.h"

#include "core/path_names.h"
#include "vfs/git/git_place.h"
#include "vfs/remote/remote_place.h"

#include <QFileInfo>

#include <optional>

namespace velmora {

bool isOtherTree(const QString &text)
{
    return isGitPlace(text) || isRemoteAddress(text);
}

QString otherTreeText(const QString &text, const QDir &folder)
{
    if (const std::optional<RemotePlace> place = remotePlaceOf(text))
        return remoteAddress(*place);
    const std::optional<GitPlace> place = gitPlaceOf(text, folder);
    return place ? gitPlaceText(*place) : QString();
}

QString otherTreeAround(const QString &text)
{
    if (std::optional<RemotePlace> place = remotePlaceOf(text)) {
        if (place->folder.isEmpty() || place->folder == u"/")
            return {};
        place->folder = parentPath(place->folder);
        return remoteAddress(*place);
    }
    const std::optional<GitPlace> place = gitPlaceOf(text);
    if (!place || QDir(place->path).isRoot())
        return {};
    return gitPlaceText({place->side, QFileInfo(place->path).path()});
}

QString otherTreeName(const QString &text)
{
    if (const std::optional<RemotePlace> place = remotePlaceOf(text))
        return bareName(place->folder);
    const std::optional<GitPlace> place = gitPlaceOf(text);
    return place ? QDir(place->path).dirName() : QString();
}

QString otherTreeTitle(const QString &text)
{
    const QString name = otherTreeName(text);
    const std::optional<RemotePlace> remote = remotePlaceOf(text);
    const std::optional<GitPlace> state = gitPlaceOf(text);
    const QString where = remote ? remote->host : state ? gitSideText(state->side) : QString();
    return name.isEmpty() ? where : QStringLiteral("%1 (%2)").arg(name, where);
}

} // namespace velmora
