#include "vfs/git/git_content.h"

#include "core/path_names.h"
#include "vfs/safe_name.h"

#include <QFile>
#include <QTemporaryDir>

namespace velmora {

namespace {

/// A name that any system can hold, with the ending by which sessions tell types.
QString fileName(const QString &path)
{
    QString name = bareName(path);
    for (QChar &unit : name) {
        if (unit < u' ' || unit.isSurrogate() || QStringView(u"/\\:*?\"<>|").contains(unit))
            unit = u'_';
    }
    constexpr qsizetype longest = 80;
    name = name.right(longest);
    return canStandInFolder(name) && name != u".git" ? name : QStringLiteral("file-") + name + QStringLiteral("_");
}

/// The file of the disk that a side has the change in; empty where it is in none, or the name leads elsewhere.
QString pathOnDisk(const GitComparison &comparison, const GitChange &change, Side side)
{
    const GitSide &state = comparison.states[side].side;
    const GitEntry &entry = change.entries[side];
    if (leadsElsewhere(change.paths[side]) || entry.isLink() || entry.isSubmodule())
        return {};
    if (state.kind == GitSide::Kind::WorkTree)
        return joinedPath(comparison.repository.workTree, change.paths[side]);
    return state.kind == GitSide::Kind::Folder ? joinedPath(state.name, change.paths[side]) : QString();
}

GitReply contentOf(const GitComparison &comparison, const GitEntry &entry, const CancelFlag &cancel)
{
    if (entry.isSubmodule())
        return {"Subproject commit " + entry.name + '\n', {}, 0};
    return comparison.repository.caller().call(
        {QStringLiteral("cat-file"), QStringLiteral("blob"), QString::fromLatin1(entry.name)}, cancel,
        comparison.extras());
}

} // namespace

GitLaidOut layOutChange(const GitComparison &comparison, const GitChange &change, Side side, const QString &folder,
                        const CancelFlag &cancel)
{
    const QString onDisk = pathOnDisk(comparison, change, side);
    if (!onDisk.isEmpty())
        return {onDisk, {}};
    const GitReply content = contentOf(comparison, change.entries[side], cancel);
    if (content.fault.isError())
        return {{}, content.fault};
    QTemporaryDir own(folder + QLatin1String("/XXXXXX"));
    QFile file(own.filePath(fileName(change.paths[side])));
    const bool isWritten = own.isValid() && file.open(QIODevice::WriteOnly | QIODevice::NewOnly) &&
                           file.write(content.output) == content.output.size() && file.flush();
    if (!isWritten)
        return {{}, {GitFaultKind::UnreadableFile, file.fileName(), file.errorString()}};
    file.setPermissions(QFileDevice::ReadOwner);
    own.setAutoRemove(false);
    return {file.fileName(), {}};
}

} // namespace velmora
