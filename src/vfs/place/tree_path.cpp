#include "vfs/place/tree_path.h"

#include "core/crew.h"
#include "core/path_names.h"
#include "vfs/local_folder.h"
#include "vfs/place/remote_source.h"
#include "vfs/place/state_source.h"

#include <QDir>

#include <optional>
#include <utility>

namespace velmora {

namespace {

/// The path of the file that `path` is or goes through; empty when there is none.
QString fileOnTheWay(QString path)
{
    while (!path.isEmpty()) {
        if (const auto entry = FileAccess::native().describe(path))
            return entry->kind == EntryKind::File ? path : QString();
        const QString above = parentPath(path);
        if (above == path)
            break;
        path = above;
    }
    return {};
}

TreeAt stateAt(const GitPlace &place, const ArchiveRequest &request, const CancelFlag &cancel)
{
    StateOpening opened = openState(place, {}, cancel, request.limits);
    TreeAt result;
    result.isState = true;
    result.gitFault = std::move(opened.fault);
    if (!result.gitFault.isError())
        result.folder = {opened.source, opened.inside.isEmpty() ? QStringLiteral("/") : opened.inside};
    result.opening = {std::move(opened.source), ArchiveFault::None, {}, std::move(opened.problems)};
    return result;
}

TreeAt remoteAt(const RemotePlace &place, const ArchiveRequest &request, const CancelFlag &cancel, Progress &progress)
{
    RemoteOpening opened = openRemote(place, cancel, progress, request.limits);
    TreeAt result;
    result.remoteFault = std::move(opened.fault);
    if (opened.source)
        result.folder = {opened.source, QStringLiteral("/")};
    result.opening = {std::move(opened.source), ArchiveFault::None, {}, std::move(opened.problems)};
    return result;
}

TreeAt snapshotAt(const SnapshotPlace &place, const ArchiveRequest &request, const CancelFlag &cancel,
                  Progress &progress)
{
    TreeAt result;
    result.snapshot = openSnapshot(place, {}, cancel, progress, request.limits);
    result.folder = result.snapshot->folder();
    result.opening = {
        nullptr, result.folder.isThere() ? ArchiveFault::None : ArchiveFault::Missing, {}, result.snapshot->problems};
    return result;
}

} // namespace

TreeAt treeAt(const ArchiveRequest &request, const CancelFlag &cancel, Progress &progress)
{
    if (const std::optional<GitPlace> place = gitPlaceOf(request.path))
        return stateAt(*place, request, cancel);
    if (const std::optional<RemotePlace> place = remotePlaceOf(request.path))
        return remoteAt(*place, request, cancel, progress);
    TreeAt result;
    const QString path = QDir::cleanPath(QDir(QDir::fromNativeSeparators(request.path)).absolutePath());
    const std::optional<FolderEntry> entry = FileAccess::native().describe(path);
    if (entry && entry->kind == EntryKind::Folder) {
        result.folder = localFolder(path);
        result.isFolder = true;
        return result;
    }
    if (const std::optional<SnapshotPlace> place = snapshotPlaceOf(request.path))
        return snapshotAt(*place, request, cancel, progress);
    ArchiveRequest archive = request;
    archive.path = fileOnTheWay(path);
    if (archive.path.isEmpty()) {
        result.opening.fault = entry ? ArchiveFault::NoArchive : ArchiveFault::Missing;
        return result;
    }
    const QString inside = path.sliced(archive.path.size());
    if (!inside.isEmpty())
        archive.nested = NestedArchives::BecomeFolders;
    result.opening = openArchive(archive, cancel, progress);
    if (!result.opening.source)
        return result;
    const std::optional<FolderEntry> found = result.opening.source->describe(inside, HiddenEntries::Listed);
    if (inside.isEmpty() || (found && found->kind == EntryKind::Folder))
        result.folder = {result.opening.source, inside.isEmpty() ? QStringLiteral("/") : inside};
    else
        result.opening.fault = ArchiveFault::Missing;
    return result;
}

Sides<TreeAt> treesAt(const Sides<ArchiveRequest> &requests, const CancelFlag &cancel, Progress &progress)
{
    Sides<TreeAt> trees;
    const auto open = [&](int worker) {
        Progress silent; // that of the run belongs to its thread
        if (worker == 0)
            trees.left = treeAt(requests.left, cancel, progress);
        else
            trees.right = treeAt(requests.right, cancel, silent);
    };
    runCrew(2, open, [] {});
    return trees;
}

} // namespace velmora
