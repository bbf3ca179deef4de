#include "vfs/git/git_side.h"

#include <QDir>

#include <algorithm>

namespace velmora {

namespace {

QString folderAt(const QString &path)
{
    return QDir::cleanPath(QDir(QDir::fromNativeSeparators(path)).absolutePath());
}

bool looksLikeFolder(const QString &text)
{
    const QString path = QDir::fromNativeSeparators(text);
    return QDir::isAbsolutePath(path) || path == u"." || path == u".." || path.startsWith(u"./") ||
           path.startsWith(u"../");
}

} // namespace

GitSide gitSideOf(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (trimmed == u":index")
        return {GitSide::Kind::Index};
    if (trimmed == u":worktree")
        return {GitSide::Kind::WorkTree};
    if (trimmed.startsWith(u":folder:"))
        return {GitSide::Kind::Folder, folderAt(trimmed.sliced(8))};
    if (looksLikeFolder(trimmed))
        return {GitSide::Kind::Folder, folderAt(trimmed)};
    return {GitSide::Kind::Revision, trimmed};
}

QString gitSideText(const GitSide &side)
{
    switch (side.kind) {
    case GitSide::Kind::Index:
        return QStringLiteral(":index");
    case GitSide::Kind::WorkTree:
        return QStringLiteral(":worktree");
    case GitSide::Kind::Folder:
        return QStringLiteral(":folder:") + side.name;
    case GitSide::Kind::Revision:
        break;
    }
    return side.name;
}

bool canBeRevision(const QString &name)
{
    return !name.isEmpty() && std::none_of(name.begin(), name.end(), [](QChar unit) { return unit < u' '; });
}

} // namespace velmora
