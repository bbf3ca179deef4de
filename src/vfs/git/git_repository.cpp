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
    if (fault.kind == GitFaultKind::Failed)
        fault.kind = GitFaultKind::NoRepository;
    fault.about = path;
    return fault;
}

} // namespace

GitOpening openRepository(const QString &path, const CancelFlag &cancel)
{
    const QFileInfo given(path);
    QString folder = given.isDir() ? given.absoluteFilePath() : given.absolutePath();
    if (path.isEmpty() || !given.exists())
        return {{}, {GitFaultKind::NoRepository, path, {}}};
    const GitReply reply =
        GitCaller(folder).call({QStringLiteral("rev-parse"), QStringLiteral("--path-format=absolute"),
                                QStringLiteral("--git-dir"), QStringLiteral("--git-path"), QStringLiteral("objects"),
                                QStringLiteral("--show-object-format"), QStringLiteral("--is-inside-work-tree")},
                               cancel);
    const QStringList lines = linesOf(reply, 4);
    if (reply.fault.isError() || lines.isEmpty())
        return {{}, unknownTo(reply, path)};
    GitOpening opening;
    opening.repository.gitFolder = lines.at(0);
    opening.repository.objectsFolder = lines.at(1);
    if (lines.at(2) == u"sha256")
        opening.repository.algorithm = ContentIdentity::Algorithm::GitBlobSha256;
    if (lines.at(3) != u"true")
        return opening;
    const GitReply top = GitCaller(folder).call(
        {QStringLiteral("rev-parse"), QStringLiteral("--path-format=absolute"), QStringLiteral("--show-toplevel")},
        cancel);
    opening.fault = unknownTo(top, path);
    if (top.fault.kind == GitFaultKind::None)
        opening.fault = {};
    opening.repository.workTree = linesOf(top, 1).value(0);
    return opening;
}

} // namespace velmora
