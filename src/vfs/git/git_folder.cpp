#include "core/path_names.h"
#include "platform/file_layer.h"
#include "vfs/git/git_disk.h"
#include "vfs/git/git_hashing.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr std::size_t mostFiles = 2'000'000;
constexpr int deepestFolder = 200;

/// All files of a folder.
class FolderScan {
public:
    FolderScan(QString root, const GitScratch &scratch, const CancelFlag &cancel)
        : m_root(std::move(root)), m_scratch(scratch), m_cancel(cancel)
    {}

    GitFault scan(Progress &progress)
    {
        FileError error;
        const std::unique_ptr<FolderHandle> handle = FileLayer::native().openRoot(m_root, error);
        if (!handle)
            return {GitFaultKind::UnreadableFile, m_root, error.reason};
        scanFolder(*handle, {}, 0, progress);
        return m_fault;
    }

    std::vector<GitFile> files;
    std::vector<UnnamedFile> unnamed;

private:
    void scanFolder(FolderHandle &folder, const QString &path, int depth, Progress &progress)
    {
        QStringList within;
        progress.report(0, 0, 0, joinedPath(m_root, path));
        const FileError listed = folder.list([&](const QString &name, const NodeState &node) {
            take(folder, name, joinedPath(path, name), node, within);
            return !m_fault.isError();
        });
        if (listed.isError() && listed.kind != FileErrorKind::Stopped && !m_fault.isError())
            m_fault = {GitFaultKind::UnreadableFile, joinedPath(m_root, path), listed.reason};
        for (const QString &name : within) {
            if (m_fault.isError())
                return;
            FileError error;
            const std::unique_ptr<FolderHandle> inner = folder.openFolder(name, error);
            if (!inner)
                m_fault = {GitFaultKind::UnreadableFile, joinedPath(m_root, joinedPath(path, name)), error.reason};
            else if (depth >= deepestFolder)
                m_fault = {GitFaultKind::TooMuch, joinedPath(m_root, path), {}};
            else
                scanFolder(*inner, joinedPath(path, name), depth + 1, progress);
        }
    }

    void take(FolderHandle &folder, const QString &name, const QString &path, const NodeState &node,
              QStringList &within)
    {
        if (m_cancel.isCancelled())
            m_fault = {GitFaultKind::Stopped, {}, {}};
        else if (files.size() >= mostFiles)
            m_fault = {GitFaultKind::TooMuch, m_root, {}};
        if (m_fault.isError() || name.compare(QLatin1String(".git"), Qt::CaseInsensitive) == 0)
            return;
        if (node.kind == NodeKind::Folder)
            within.append(name);
        else if (node.kind == NodeKind::Link)
            takeLink(folder, name, path);
        else if (node.kind == NodeKind::File) {
            unnamed.push_back({files.size(), joinedPath(m_root, path), {}});
            files.push_back({path, {gitModeOf(node), {}}});
        }
    }

    void takeLink(FolderHandle &folder, const QString &name, const QString &path)
    {
        QString target;
        const FileError error = folder.linkTarget(name, target);
        const std::optional<QByteArray> made =
            error.isError() ? std::nullopt : m_scratch.objects().write(linkContent(target));
        if (made)
            files.push_back({path, {GitMode::link, *made}});
        else
            m_fault = {GitFaultKind::UnreadableFile, joinedPath(m_root, path), error.reason};
    }

    QString m_root;
    const GitScratch &m_scratch;
    const CancelFlag &m_cancel;
    GitFault m_fault;
};

} // namespace

quint32 gitModeOf(const NodeState &node)
{
    constexpr quint32 ownerMayRun = 0100;
    return node.permissions & ownerMayRun ? GitMode::program : GitMode::plain;
}

QByteArray linkContent(const QString &target)
{
    const std::string bytes = nativeName(target);
    return {bytes.data(), qsizetype(bytes.size())};
}

GitFiles folderFiles(const GitRepository &repository, const GitScratch &scratch, const QString &folder,
                     const CancelFlag &cancel, Progress &progress)
{
    FolderScan scan(folder, scratch, cancel);
    GitFiles result;
    result.fault = scan.scan(progress);
    if (!result.fault.isError())
        result.fault =
            nameContents(scan.files, scan.unnamed, repository, scratch, LineEnds::AsTheyAre, cancel, progress);
    result.files = std::move(scan.files);
    std::sort(result.files.begin(), result.files.end(),
              [](const GitFile &one, const GitFile &other) { return one.path < other.path; });
    return result;
}

} // namespace velmora
