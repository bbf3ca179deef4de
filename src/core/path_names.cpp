#include "core/path_names.h"

#include <QDir>
#include <QStringBuilder>

#include <algorithm>

namespace velmora {

QString bareName(const QString &path)
{
    return path.mid(path.lastIndexOf(u'/') + 1);
}

QString parentPath(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash > 0 ? path.left(slash) : path.left(slash + 1);
}

QString joinedPath(const QString &folder, const QString &name)
{
    // At once, so that no room is left in paths of which there are many.
    return folder.isEmpty() || folder.endsWith(u'/') ? QString(folder % name) : QString(folder % u'/' % name);
}

bool isInside(const QString &path, const QString &folder)
{
    const QString start = joinedPath(folder, {});
    return path.size() > start.size() && path.startsWith(start);
}

bool isAddress(QStringView text)
{
    const auto isOfWord = [](QChar c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); };
    const auto end = std::find_if_not(text.begin(), text.end(), isOfWord);
    return end != text.end() && *end == u':' && end - text.begin() > 1;
}

QString nativePath(const QString &path)
{
    return isAddress(path) ? path : QDir::toNativeSeparators(path);
}

QString pathFromNative(const QString &text)
{
    return isAddress(text) ? text : QDir::fromNativeSeparators(text);
}

} // namespace velmora
