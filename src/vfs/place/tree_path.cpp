#include "vfs/place/tree_path.h"

#include "core/crew.h"
#include "core/path_names.h"
#include "vfs/local_folder.h"

#include <QDir>

#include <optional>
#include <utility>
#include <variant>

namespace velmora {

namespace {

TreeAt treeOf(OtherOpening &&other)
{
    TreeAt result;
    result.folder = folderOf(other);
    const bool isMissing = std::holds_alternative<SnapshotOpening>(other) && !result.folder.isThere();
    result.opening = {archiveOf(other), isMissing ? ArchiveFault::Missing : ArchiveFault::None, {}, problemsOf(other)};
    result.other = std::move(other);
    return result;
}

} // namespace

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

TreeAt treeAt(const ArchiveRequest &request, const CancelFlag &cancel, Progress &progress)
{
    if (OtherOpening other = openOther(request.path, {}, cancel, progress, request.limits); isThere(other))
        return treeOf(std::move(other));
    TreeAt result;
    const QString path = QDir::cleanPath(QDir(QDir::fromNativeSeparators(request.path)).absolutePath());
    const std::optional<FolderEntry> entry = FileAccess::native().describe(path);
    if (entry && entry->kind == EntryKind::Folder) {
        result.folder = localFolder(path);
        result.isFolder = true;
        return result;
    }
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
