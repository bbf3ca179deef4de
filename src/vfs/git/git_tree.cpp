#include "vfs/git/git_tree.h"

#include "core/path_names.h"
#include "vfs/git/git_disk.h"

#include <QFileInfo>

#include <optional>
#include <utility>

namespace velmora {

namespace {

/// The nearest of `path` and the folders around it that is there, links resolved; empty when none is.
QString nearestOnDisk(QString path)
{
    while (!path.isEmpty()) {
        if (const QFileInfo info(path); info.exists())
            return path;
        const QString above = parentPath(path);
        path = above == path ? QString() : above;
    }
    return {};
}

GitFault openAround(const GitPlace &place, const CancelFlag &cancel, GitTree &tree)
{
    const QString near = nearestOnDisk(place.path);
    GitOpening opening = openRepository(near.isEmpty() ? place.path : near, cancel);
    if (opening.fault.isError())
        return opening.fault;
    tree.repository = std::move(opening.repository);
    // Git tells of the repository without the links that may have led there.
    const QString real = QFileInfo(near).canonicalFilePath() + place.path.sliced(near.size());
    const QString root = QFileInfo(tree.repository.place()).canonicalFilePath();
    if (isInside(real, root))
        tree.inside = real.sliced(root.size());
    return {};
}

/// Of a commit its tree and time; of the name of a tree that itself.
GitFault findRevision(const QString &name, const CancelFlag &cancel, GitTree &tree)
{
    const GitCaller caller = tree.repository.caller();
    GitCallExtras extras;
    extras.mayFail = true;
    const QString endOfOptions = QStringLiteral("--end-of-options");
    GitReply reply = caller.call({QStringLiteral("rev-list"), QStringLiteral("--max-count=1"),
                                  QStringLiteral("--format=%T %ct"), endOfOptions, name, QStringLiteral("--")},
                                 cancel, extras);
    const QList<QByteArray> facts = reply.output.split('\n').value(1).split(' ');
    tree.name = facts.value(0);
    tree.timeMs = facts.value(1).toLongLong() * 1000;
    if (reply.fault.isError() || tree.name.size() == tree.repository.nameLength())
        return reply.fault;
    reply = caller.call({QStringLiteral("rev-parse"), QStringLiteral("--verify"), QStringLiteral("--quiet"),
                         endOfOptions, name + QLatin1String("^{tree}")},
                        cancel, extras);
    tree.name = reply.output.split('\n').value(0);
    if (!reply.fault.isError() && tree.name.size() != tree.repository.nameLength()) // older ones repeat the option
        tree.name = reply.output.split('\n').value(1);
    const bool isKnown = tree.name.size() == tree.repository.nameLength();
    return reply.fault.isError() || isKnown ? reply.fault : GitFault{GitFaultKind::UnknownState, name, {}};
}

/// The index and the files beside the repository become a tree first.
GitFault makeTree(GitSide::Kind kind, const CancelFlag &cancel, GitTree &tree)
{
    const auto scratch = std::make_shared<GitScratch>(tree.repository);
    if (!scratch->isValid())
        return {GitFaultKind::UnreadableFile, scratch->filesFolder(), {}};
    Progress silent;
    const GitFiles files = kind == GitSide::Kind::Index
                               ? indexFiles(tree.repository, cancel)
                               : workTreeFiles(tree.repository, *scratch, UntrackedFiles::Listed, cancel, silent);
    if (files.fault.isError())
        return files.fault;
    const GitReply made = scratch->makeTree(tree.repository, files.files, cancel);
    tree.name = made.output;
    tree.scratch = scratch;
    return made.fault;
}

} // namespace

GitCallExtras GitTree::extras() const
{
    GitCallExtras extras;
    if (scratch)
        extras.variables = scratch->variables();
    return extras;
}

GitTree findGitTree(const GitPlace &place, const CancelFlag &cancel)
{
    GitTree tree;
    tree.fault = openAround(place, cancel, tree);
    if (!tree.fault.isError())
        tree.fault = place.side.kind == GitSide::Kind::Revision ? findRevision(place.side.name, cancel, tree)
                                                                : makeTree(place.side.kind, cancel, tree);
    return tree;
}

GitFault findContentSizes(const GitRepository &repository, const GitCallExtras &extras, const CancelFlag &cancel,
                          QHash<QByteArray, qint64> &sizes)
{
    if (extras.input.isEmpty())
        return {};
    const GitReply reply = repository.caller().call(
        {QStringLiteral("cat-file"), QStringLiteral("--batch-check=%(objectname) %(objectsize)")}, cancel, extras);
    for (const QByteArray &line : reply.output.split('\n')) {
        const qsizetype blank = line.indexOf(' ');
        bool ok = false;
        const qint64 size = line.mid(blank + 1).toLongLong(&ok);
        if (blank > 0 && ok)
            sizes.insert(line.first(blank), size);
    }
    return reply.fault;
}

GitTreeFiles listGitTree(const GitTree &tree, const CancelFlag &cancel)
{
    GitCallExtras extras = tree.extras();
    // A tree that holds itself many times over has as many names as it likes.
    extras.mostOutput = qint64(256) * 1024 * 1024;
    // Asked for sizes as well, it would fail where a content is lacking.
    const GitReply reply =
        tree.repository.caller().call({QStringLiteral("ls-tree"), QStringLiteral("-r"), QStringLiteral("-z"),
                                       QStringLiteral("--full-tree"), QString::fromLatin1(tree.name)},
                                      cancel, extras);
    if (reply.fault.isError())
        return {{}, reply.fault};
    std::optional<std::vector<GitFile>> files = parseTreeListing(reply.output);
    if (!files)
        return {{}, {GitFaultKind::Failed, {}, QStringLiteral("git ls-tree")}};
    QHash<QByteArray, qint64> sizes;
    for (const GitFile &file : *files) {
        if (!file.entry.isSubmodule())
            extras.input += file.entry.name + '\n';
    }
    GitTreeFiles result;
    result.fault = findContentSizes(tree.repository, extras, cancel, sizes);
    result.files.reserve(files->size());
    for (GitFile &file : *files) {
        const qint64 size = sizes.value(file.entry.name, -1);
        result.files.push_back({std::move(file), size});
    }
    return result;
}

} // namespace velmora
