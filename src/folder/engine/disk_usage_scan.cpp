#include "folder/engine/disk_usage_scan.h"

#include "core/path_names.h"
#include "core/progress.h"
#include "core/work_stack.h"
#include "platform/space_listing.h"

#include <QElapsedTimer>
#include <QHash>

#include <algorithm>
#include <array>
#include <atomic>
#include <deque>
#include <mutex>
#include <utility>
#include <vector>

namespace velmora {

namespace {

constexpr std::size_t mostLargest = 200;
constexpr int deepest = 0xFFFF; ///< what a node can hold; nobody but an attacker nests further

struct ScannedFile {
    qsizetype nameStart = 0;
    quint16 nameLength = 0;
    bool isShared = false; ///< has further names
    qint64 size = 0;
    qint64 allocated = 0;
    FileIdentity identity;
};

struct ScannedFolder {
    ScannedFolder *parent = nullptr;
    QString name; ///< of the root its path
    int depth = 0;
    bool unreadable = false;
    qint64 links = 0;
    QString fileNames;
    std::vector<ScannedFile> files;
    std::vector<ScannedFolder *> folders;
    // Of all that is in it, once it is added up:
    qint64 size = 0;
    qint64 fileCount = 0;
    qint64 folderCount = 0;
    std::array<qint64, fileKindCount> kinds{};

    [[nodiscard]] QStringView nameOf(const ScannedFile &file) const
    {
        return QStringView(fileNames).mid(file.nameStart, file.nameLength);
    }

    [[nodiscard]] QString path() const
    {
        std::vector<const ScannedFolder *> way;
        for (const ScannedFolder *folder = this; folder; folder = folder->parent)
            way.push_back(folder);
        QString path = way.back()->name;
        for (auto folder = way.rbegin() + 1; folder != way.rend(); ++folder)
            path = joinedPath(path, (*folder)->name);
        return path;
    }
};

/// Reads all folders into memory.
class Reader {
public:
    Reader(const DiskUsageRequest &request, const CancelFlag &cancel, Progress &progress)
        : m_request(request), m_cancel(cancel), m_progress(progress)
    {}

    /// The root, and every folder behind the one around it.
    [[nodiscard]] std::deque<ScannedFolder> &run()
    {
        ScannedFolder &root = m_folders.emplace_back();
        root.name = m_request.folder;
        QString latest; // of the calling thread
        const auto tell = [&] { m_progress.report(0, m_entries, 0, latest); };
        WorkStack<ScannedFolder *> stack;
        stack.push({&root});
        stack.workOff(
            crewSize(),
            [&](int worker, ScannedFolder *folder) {
                const QString path = folder->path();
                if (worker == 0) {
                    latest = path;
                    tell();
                }
                read(*folder, path, stack);
            },
            tell);
        return m_folders;
    }

private:
    void read(ScannedFolder &folder, const QString &path, WorkStack<ScannedFolder *> &stack)
    {
        if (m_cancel.isCancelled())
            return;
        const bool enters = folder.depth < (m_request.maxDepth == 0 ? deepest : m_request.maxDepth);
        QStringList inside;
        const FolderRead end = readSpace(path, m_request.withHidden, [&](SpaceEntry &&entry) {
            if (m_cancel.isCancelled())
                return false;
            if (entry.kind == SpaceEntry::Kind::File)
                takeFile(folder, entry);
            else if (entry.kind == SpaceEntry::Kind::Link)
                ++folder.links;
            else if (enters)
                inside.append(entry.name);
            return true;
        });
        folder.unreadable = end == FolderRead::Unreadable || end == FolderRead::Missing;
        m_entries += qint64(folder.files.size());
        addFolders(folder, inside);
        stack.push(folder.folders);
    }

    void addFolders(ScannedFolder &folder, const QStringList &names)
    {
        const std::lock_guard lock(m_mutex);
        for (const QString &name : names) {
            ScannedFolder &next = m_folders.emplace_back();
            next.parent = &folder;
            next.name = name;
            next.depth = folder.depth + 1;
            folder.folders.push_back(&next);
        }
    }

    static void takeFile(ScannedFolder &folder, const SpaceEntry &entry)
    {
        ScannedFile file;
        file.nameStart = folder.fileNames.size();
        file.nameLength = quint16(std::min<qsizetype>(entry.name.size(), 0xFFFF));
        file.isShared = entry.links > 1;
        file.size = entry.size;
        file.allocated = entry.allocated;
        file.identity = entry.identity;
        folder.fileNames += entry.name;
        folder.files.push_back(file);
        folder.size += entry.size;
        folder.kinds[std::size_t(fileKind(entry.name))] += entry.size;
    }

    const DiskUsageRequest &m_request;
    const CancelFlag &m_cancel;
    Progress &m_progress;
    std::mutex m_mutex; ///< guards the folders
    std::deque<ScannedFolder> m_folders;
    std::atomic<qint64> m_entries{0};
};

void addUp(std::deque<ScannedFolder> &folders)
{
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder) {
        folder->fileCount += qint64(folder->files.size());
        ScannedFolder *const around = folder->parent;
        if (!around)
            continue;
        around->size += folder->size;
        around->fileCount += folder->fileCount;
        around->folderCount += folder->folderCount + 1;
        for (std::size_t kind = 0; kind < folder->kinds.size(); ++kind)
            around->kinds[kind] += folder->kinds[kind];
    }
}

/// Makes the tree of what was read, from the root down.
class TreeMaker {
public:
    TreeMaker(const DiskUsageRequest &request, DiskUsage &result) : m_request(request), m_result(result) {}

    void make(const ScannedFolder &root)
    {
        m_result.tree = UsageTree(m_request.folder);
        m_waiting.push_back({&root, nullptr, -1});
        while (!m_waiting.empty()) {
            const Entry entry = m_waiting.back();
            m_waiting.pop_back();
            if (entry.file)
                appendFile(entry);
            else
                appendFolder(entry);
        }
        m_result.tree.complete();
    }

private:
    /// A folder, or a file in one.
    struct Entry {
        const ScannedFolder *folder;
        const ScannedFile *file;
        qint32 parent;

        [[nodiscard]] qint64 size() const { return file ? file->size : folder->size; }
        [[nodiscard]] QStringView name() const { return file ? folder->nameOf(*file) : QStringView(folder->name); }
        /// Last comes what is to be appended first.
        [[nodiscard]] bool comesLater(const Entry &other) const
        {
            return size() != other.size() ? size() < other.size() : other.name() < name();
        }
    };

    /// What a file takes on the medium, if none of its names had it before.
    qint64 roomOf(const ScannedFile &file, bool &countsElsewhere)
    {
        if (file.isShared && std::exchange(m_seen[{file.identity.volume, file.identity.number}], true)) {
            ++m_result.sharedFiles;
            countsElsewhere = true;
            return 0;
        }
        return file.allocated;
    }

    void appendFile(const Entry &entry)
    {
        UsageTree::Node node;
        node.size = entry.file->size;
        node.parent = entry.parent;
        node.isFolder = false;
        node.kind = fileKind(entry.name());
        node.allocated = roomOf(*entry.file, node.countsElsewhere);
        m_result.tree.append(node, entry.name());
    }

    void appendFolder(const Entry &entry)
    {
        const ScannedFolder &folder = *entry.folder;
        UsageTree::Node node;
        node.size = folder.size;
        node.files = qint32(folder.fileCount);
        node.folders = qint32(folder.folderCount);
        node.parent = entry.parent;
        node.unreadable = folder.unreadable;
        node.kind = FileKind(std::max_element(folder.kinds.begin(), folder.kinds.end()) - folder.kinds.begin());
        if (!m_request.listsFiles) {
            for (const ScannedFile &file : folder.files)
                node.allocated += roomOf(file, node.countsElsewhere);
            node.countsElsewhere = false; // said of files only
        }
        const qint32 self = m_result.tree.size();
        const QString rootName = bareName(m_request.folder);
        m_result.tree.append(node, self > 0             ? QStringView(folder.name)
                                   : rootName.isEmpty() ? m_request.folder
                                                        : rootName);
        m_result.links += folder.links;
        if (folder.unreadable)
            m_result.unreadable.append(folder.path());
        const auto first = qsizetype(m_waiting.size());
        for (const ScannedFolder *inside : folder.folders)
            m_waiting.push_back({inside, nullptr, self});
        for (std::size_t i = 0; m_request.listsFiles && i < folder.files.size(); ++i)
            m_waiting.push_back({&folder, &folder.files[i], self});
        std::sort(m_waiting.begin() + first, m_waiting.end(),
                  [](const Entry &one, const Entry &other) { return one.comesLater(other); });
    }

    const DiskUsageRequest &m_request;
    DiskUsage &m_result;
    std::vector<Entry> m_waiting;                ///< the next one last
    QHash<QPair<quint64, quint64>, bool> m_seen; ///< files with several names
};

QList<LargeFile> largestFiles(const std::deque<ScannedFolder> &folders)
{
    struct Found {
        const ScannedFolder *folder;
        const ScannedFile *file;
    };
    std::vector<Found> found; // a heap with the smallest on top
    const auto isLarger = [](const Found &one, const Found &other) { return one.file->size > other.file->size; };
    for (const ScannedFolder &folder : folders) {
        for (const ScannedFile &file : folder.files) {
            const Found here{&folder, &file};
            if (found.size() == mostLargest && !isLarger(here, found.front()))
                continue;
            found.push_back(here);
            std::push_heap(found.begin(), found.end(), isLarger);
            if (found.size() > mostLargest) {
                std::pop_heap(found.begin(), found.end(), isLarger);
                found.pop_back();
            }
        }
    }
    QList<LargeFile> files;
    for (const Found &one : found)
        files.append({joinedPath(one.folder->path(), one.folder->nameOf(*one.file).toString()), one.file->size});
    std::sort(files.begin(), files.end(), [](const LargeFile &one, const LargeFile &other) {
        return one.size != other.size ? one.size > other.size : one.path < other.path;
    });
    return files;
}

} // namespace

DiskUsage scanDiskUsage(const DiskUsageRequest &request, const CancelFlag &cancel, Progress &progress)
{
    QElapsedTimer clock;
    clock.start();
    DiskUsage result;
    Reader reader(request, cancel, progress);
    std::deque<ScannedFolder> &folders = reader.run();
    addUp(folders);
    TreeMaker(request, result).make(folders.front());
    result.largest = largestFiles(folders);
    result.unreadable.sort();
    result.cancelled = cancel.isCancelled();
    result.milliseconds = clock.elapsed();
    return result;
}

} // namespace velmora
