#include "vfs/git/git_repository.h"

#include <QDir>
#include <QFileInfo>

namespace velmora {

namespace {

/// The lines of a reply; nothing when there are not so many, as when a path holds a line feed.
QStringList linesOf(const GitReply &reply, qsizetype wanted)
{
    QStringList lines = nameFromNative({reply.output.constData(), std::size_t(reply.output.size())}).split(u'\n');
    if (lines.size() != wanted + 1 || !lines.takeLast().isEmpty())
        return {};
    return lines;
}

GitFault unknownTo(const GitReply &reply, const QString &path)
{
    GitFault fault = reply.fault;
    if (!fault.isError())
        fault = {GitFaultKind::NoRepository, {}, reply.words};
    fault.about = path;
    return fault;
}

} // namespace

GitOpening openRepository(const QString &path, const CancelFlag &cancel)
{
    const QFileInfo given(path);
    const QString folder = given.isDir() ? given.absoluteFilePath() : given.absolutePath();
    if (path.isEmpty() || !given.exists())
        return {{}, {GitFaultKind::NoRepository, path, {}}};
    GitCallExtras extras;
    extras.mayFail = true; // without a work tree it fails at the last question
    const GitReply reply = GitCaller(folder).call(
        {QStringLiteral("rev-parse"), QStringLiteral("--path-format=absolute"), QStringLiteral("--git-dir"),
         QStringLiteral("--git-path"), QStringLiteral("objects"), QStringLiteral("--show-object-format"),
         QStringLiteral("--is-inside-work-tree"), QStringLiteral("--show-toplevel")},
        cancel, extras);
    const QStringList lines = linesOf(reply, reply.exitCode == 0 ? 5 : 4);
    if (reply.fault.isError() || lines.isEmpty())
        return {{}, unknownTo(reply, path)};
    GitOpening opening;
    opening.repository.gitFolder = lines.at(0);
    opening.repository.objectsFolder = lines.at(1);
    if (lines.at(2) == u"sha256")
        opening.repository.algorithm = ContentIdentity::Algorithm::GitBlobSha256;
    opening.repository.workTree = lines.value(4);
    return opening;
}

} // namespace velmora
