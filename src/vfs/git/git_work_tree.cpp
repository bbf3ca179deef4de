#include "core/path_names.h"
#include "platform/file_layer.h"
#include "vfs/git/git_disk.h"
#include "vfs/git/git_hashing.h"
#include "vfs/git/git_index.h"

#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace velmora {

namespace {

constexpr int mostSubmodules = 500;

/// What the settings of a repository say of files on the disk.
struct DiskHabits {
    bool hasModes = true;
    bool hasLinks = true;
    LineEnds ends = LineEnds::AsTheyAre;
};

GitFault readHabits(const GitRepository &repository, const CancelFlag &cancel, DiskHabits &habits)
{
    GitCallExtras extras;
    extras.mayFail = true; // none of them is set
    const GitReply reply =
        repository.caller().call({QStringLiteral("config"), QStringLiteral("-z"), QStringLiteral("--get-regexp"),
                                  QStringLiteral("^core\\.(autocrlf|filemode|symlinks)$")},
                                 cancel, extras);
    for (const QByteArray &line : reply.output.split('\0')) {
        const QByteArray value = line.mid(line.indexOf('\n') + 1).toLower();
        const bool isOff = value == "false" || value == "no" || value == "off" || value == "0";
        if (line.startsWith("core.autocrlf\n"))
            habits.ends = isOff ? LineEnds::AsTheyAre : LineEnds::TurnedWhenAdded;
        else if (line.startsWith("core.filemode\n"))
            habits.hasModes = !isOff;
        else if (line.startsWith("core.symlinks\n"))
            habits.hasLinks = !isOff;
    }
    return reply.fault;
}

/// Finds what stands at paths of a folder without following links. Quick for paths in their order.
class FolderStack {
public:
    explicit FolderStack(const QString &root)
    {
        FileError error;
        push({}, FileLayer::native().openRoot(root, error));
    }

    /// Null when there is nothing.
    const NodeState *find(const QString &path)
    {
        enter(parentPath(path));
        const auto found = m_open.back().nodes.constFind(bareName(path));
        return m_open.back().path == parentPath(path) && found != m_open.back().nodes.constEnd() ? &*found : nullptr;
    }

    /// The folder that the path found last is in.
    FolderHandle &folder() { return *m_open.back().handle; }

private:
    struct Open {
        QString path;
        std::unique_ptr<FolderHandle> handle; ///< null when it cannot be opened
        QHash<QString, NodeState> nodes;
    };

    void push(const QString &path, std::unique_ptr<FolderHandle> handle)
    {
        m_open.push_back({path, std::move(handle), {}});
        Open &made = m_open.back();
        if (!made.handle)
            return;
        const FileError listed = made.handle->list([&made](const QString &name, const NodeState &node) {
            made.nodes.insert(name, node);
            return true;
        });
        if (listed.isError())
            made.nodes.clear();
    }

    /// Opens what leads to a folder as far as it is there.
    void enter(const QString &path)
    {
        while (m_open.size() > 1 && m_open.back().path != path && !isInside(path, m_open.back().path))
            m_open.pop_back();
        while (m_open.back().path != path) {
            const QString &here = m_open.back().path;
            const qsizetype from = here.isEmpty() ? 0 : here.size() + 1;
            const qsizetype end = path.indexOf(u'/', from);
            const QString next = end < 0 ? path : path.first(end);
            FileError error;
            std::unique_ptr<FolderHandle> handle =
                m_open.back().handle ? m_open.back().handle->openFolder(next.sliced(from), error) : nullptr;
            if (!handle)
                return;
            push(next, std::move(handle));
        }
    }

    std::vector<Open> m_open;
};

/// The files beside a repository, one after the other.
class WorkTreeScan {
public:
    WorkTreeScan(const GitRepository &repository, const GitScratch &scratch, const DiskHabits &habits,
                 const CancelFlag &cancel)
        : m_repository(repository),
          m_scratch(scratch),
          m_habits(habits),
          m_cancel(cancel),
          m_folders(repository.workTree)
    {
        const QFileInfo index(repository.gitFolder + QLatin1String("/index"));
        m_indexNs = index.lastModified().toMSecsSinceEpoch() * 1'000'000;
    }

    GitFault add(const GitIndexEntry &known)
    {
        if (known.isHeldToMatch) {
            m_result.files.push_back({known.path, known.entry});
            return {};
        }
        const NodeState *node = m_folders.find(known.path);
        if (!node)
            return {};
        if (node->kind == NodeKind::Folder)
            return known.entry.isSubmodule() ? addSubmodule(known) : GitFault();
        if (node->kind == NodeKind::Link)
            return addLink(known.path);
        if (node->kind != NodeKind::File)
            return {};
        GitFile file{known.path, known.entry};
        const bool isLinkHere = !m_habits.hasLinks && known.entry.isLink();
        if (!isLinkHere && (m_habits.hasModes || !known.entry.isThere() || known.entry.isLink()))
            file.entry.mode = m_habits.hasModes ? gitModeOf(*node) : GitMode::plain;
        if (!isAsAdded(known, *node))
            m_unnamed.push_back({m_result.files.size(), m_repository.workTree + u'/' + known.path, known.entry.name});
        m_result.files.push_back(std::move(file));
        return {};
    }

    GitFiles finish(Progress &progress)
    {
        m_result.fault =
            nameContents(m_result.files, m_unnamed, m_repository, m_scratch, m_habits.ends, m_cancel, progress);
        return std::move(m_result);
    }

private:
    /// Whether the file is as it was when it was added. One that was written while the index was may have changed
    /// without another time.
    [[nodiscard]] bool isAsAdded(const GitIndexEntry &known, const NodeState &node) const
    {
        return known.stage == 0 && known.entry.isThere() && !known.entry.isSubmodule() &&
               known.modifiedNs == node.modifiedNs && known.size == quint32(node.size) && known.modifiedNs < m_indexNs;
    }

    GitFault addLink(const QString &path)
    {
        QString target;
        const bool isRead = !m_folders.folder().linkTarget(bareName(path), target).isError();
        const std::optional<QByteArray> name = isRead ? m_scratch.objects().write(linkContent(target)) : std::nullopt;
        if (!name)
            return {GitFaultKind::UnreadableFile, m_repository.workTree + u'/' + path, {}};
        m_result.files.push_back({path, {GitMode::link, *name}});
        return {};
    }

    /// The commit that is checked out there, or the one that is known when nothing is.
    GitFault addSubmodule(const GitIndexEntry &known)
    {
        GitFile file{known.path, known.entry};
        const bool isCheckedOut = m_folders.find(known.path + QLatin1String("/.git")) != nullptr;
        if (isCheckedOut && ++m_submodules <= mostSubmodules) {
            GitCallExtras extras;
            extras.mayFail = true;
            const GitReply head = GitCaller(m_repository.workTree + u'/' + known.path)
                                      .call({QStringLiteral("rev-parse"), QStringLiteral("--verify"),
                                             QStringLiteral("--quiet"), QStringLiteral("HEAD")},
                                            m_cancel, extras);
            const QByteArray name = head.output.trimmed();
            if (head.fault.kind == GitFaultKind::None && name.size() == m_repository.nameLength())
                file.entry.name = name;
        }
        m_result.files.push_back(std::move(file));
        return {};
    }

    const GitRepository &m_repository;
    const GitScratch &m_scratch;
    DiskHabits m_habits;
    const CancelFlag &m_cancel;
    FolderStack m_folders;
    qint64 m_indexNs = 0;
    int m_submodules = 0;
    GitFiles m_result;
    std::vector<UnnamedFile> m_unnamed;
};

GitFault listIndex(const GitRepository &repository, const CancelFlag &cancel, std::vector<GitIndexEntry> &entries)
{
    const GitReply reply = repository.caller().call(
        {QStringLiteral("ls-files"), QStringLiteral("--stage"), QStringLiteral("--debug"), QStringLiteral("-z")},
        cancel);
    if (reply.fault.isError())
        return reply.fault;
    std::optional<std::vector<GitIndexEntry>> parsed = parseIndexListing(reply.output);
    if (!parsed)
        return {GitFaultKind::Failed, {}, QStringLiteral("git ls-files")};
    entries = std::move(*parsed);
    return {};
}

/// One entry for each path: of a file that a merge has left open, our version, else theirs, else the base.
std::vector<GitIndexEntry> settled(std::vector<GitIndexEntry> entries, qint64 &conflicts)
{
    const auto rank = [](const GitIndexEntry &entry) { return entry.stage == 1 ? 4 : entry.stage; };
    std::stable_sort(entries.begin(), entries.end(), [&rank](const GitIndexEntry &one, const GitIndexEntry &other) {
        return one.path != other.path ? one.path < other.path : rank(one) < rank(other);
    });
    const auto end =
        std::unique(entries.begin(), entries.end(),
                    [](const GitIndexEntry &one, const GitIndexEntry &other) { return one.path == other.path; });
    entries.erase(end, entries.end());
    conflicts = std::count_if(entries.begin(), entries.end(), [](const auto &entry) { return entry.stage != 0; });
    return entries;
}

GitFault listUntracked(const GitRepository &repository, const CancelFlag &cancel, std::vector<GitIndexEntry> &entries)
{
    const GitReply reply = repository.caller().call({QStringLiteral("ls-files"), QStringLiteral("--others"),
                                                     QStringLiteral("--exclude-standard"), QStringLiteral("-z")},
                                                    cancel);
    for (const QByteArray &path : reply.output.split('\0')) {
        if (path.isEmpty() || path.endsWith('/')) // another repository
            continue;
        GitIndexEntry entry;
        entry.path = nameFromNative({path.constData(), std::size_t(path.size())});
        entries.push_back(std::move(entry));
    }
    return reply.fault;
}

} // namespace

GitFiles indexFiles(const GitRepository &repository, const CancelFlag &cancel)
{
    GitFiles result;
    std::vector<GitIndexEntry> entries;
    result.fault = listIndex(repository, cancel, entries);
    for (GitIndexEntry &entry : settled(std::move(entries), result.conflicts))
        result.files.push_back({std::move(entry.path), std::move(entry.entry)});
    return result;
}

GitFiles workTreeFiles(const GitRepository &repository, const GitScratch &scratch, UntrackedFiles untracked,
                       const CancelFlag &cancel, Progress &progress)
{
    DiskHabits habits;
    std::vector<GitIndexEntry> entries;
    qint64 conflicts = 0;
    if (repository.workTree.isEmpty())
        return {{}, 0, {GitFaultKind::NoWorkTree, {}, {}}};
    GitFault fault = readHabits(repository, cancel, habits);
    if (!fault.isError())
        fault = listIndex(repository, cancel, entries);
    if (!fault.isError() && untracked == UntrackedFiles::Listed)
        fault = listUntracked(repository, cancel, entries);
    entries = settled(std::move(entries), conflicts);
    WorkTreeScan scan(repository, scratch, habits, cancel);
    for (const GitIndexEntry &entry : entries) {
        if (cancel.isCancelled())
            fault = {GitFaultKind::Stopped, {}, {}};
        if (fault.isError())
            return {{}, 0, fault};
        fault = scan.add(entry);
    }
    if (fault.isError())
        return {{}, 0, fault};
    GitFiles result = scan.finish(progress);
    result.conflicts = conflicts;
    return result;
}

} // namespace velmora
