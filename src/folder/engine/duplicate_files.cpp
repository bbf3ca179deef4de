#include "folder/engine/duplicate_files.h"

#include "core/crew.h"
#include "core/path_names.h"
#include "folder/engine/folder_engine.h"
#include "folder/engine/folder_walk.h"

#include <QSet>

#include <algorithm>
#include <unordered_map>

namespace velmora {

namespace {

/// What a visitor has made of one folder.
struct Visited {
    std::vector<ScannedFile> files;
    QString names;
    std::size_t folders = 0; ///< to go on with
    bool isWhole = true;
};

/// Rooms exactly as large as what goes into them: there are very many.
void makeRoom(Visited &visited, const std::vector<FolderEntry> &entries)
{
    std::size_t files = 0;
    qsizetype letters = 0;
    for (const FolderEntry &entry : entries) {
        if (entry.kind == EntryKind::File) {
            ++files;
            letters += entry.name.size();
        }
    }
    visited.files.reserve(files);
    visited.names.reserve(letters);
}

void add(Visited &visited, const FolderEntry &entry)
{
    ScannedFile file;
    file.size = entry.size;
    file.modifiedMs = entry.modifiedMs;
    file.identity = entry.identity.value_or(FileIdentity());
    file.nameStart = quint32(visited.names.size());
    file.nameLength = quint32(entry.name.size());
    file.isLink = entry.isLink;
    visited.files.push_back(file);
    visited.names += entry.name;
}

/// Sorts the entries of each folder into files and folders to go on with, on the threads of the walk.
class Visits {
public:
    explicit Visits(int threads) : m_found(std::size_t(threads)) {}

    std::vector<WalkDescent> take(int worker, WalkNode &node, std::vector<FolderEntry> &entries)
    {
        std::sort(entries.begin(), entries.end(),
                  [](const FolderEntry &a, const FolderEntry &b) { return a.name < b.name; });
        Visited visited;
        makeRoom(visited, entries);
        std::vector<WalkDescent> descents;
        for (const FolderEntry &entry : entries) {
            if (entry.kind == EntryKind::File)
                add(visited, entry);
            else if (entry.kind == EntryKind::Folder && !entry.isLink &&
                     !isRecycleBin(joinedPath(node.sides.left.path, entry.name)))
                descents.push_back({entry.name, {&entry, nullptr}, descents.size()});
            else
                visited.isWhole = false;
        }
        visited.folders = descents.size();
        m_found[std::size_t(worker)].insert_or_assign(&node, std::move(visited));
        node.complete = true;
        return descents;
    }

    [[nodiscard]] Visited takeOut(const WalkNode *node)
    {
        for (auto &found : m_found) {
            const auto at = found.find(node);
            if (at != found.end())
                return std::move(at->second);
        }
        return {{}, {}, 0, false};
    }

private:
    std::vector<std::unordered_map<const WalkNode *, Visited>> m_found; ///< one for each worker
};

/// Puts what the walk has found into the table, from the root down.
class TableFiller {
public:
    /// `inner`: see `listForDuplicates`; `passedOver`: paths of folders and links that the walk has trouble with.
    TableFiller(ScannedFiles &table, Visits &visits, const QList<DuplicateRoot> &inner, QSet<QString> passedOver)
        : m_table(table), m_visits(visits), m_inner(inner), m_passedOver(std::move(passedOver))
    {}

    void fill(const WalkNode *top, qint32 root, bool isReference)
    {
        m_root = root;
        m_isReference = isReference;
        struct Waiting {
            const WalkNode *node;
            qint32 parent;
        };
        std::vector<Waiting> waiting{{top, -1}};
        while (!waiting.empty()) {
            const auto [node, parent] = waiting.back();
            waiting.pop_back();
            const qint32 index = add(*node, parent);
            for (auto child = node->children.rbegin(); child != node->children.rend(); ++child)
                waiting.push_back({child->node, index});
        }
    }

private:
    qint32 add(const WalkNode &node, qint32 parent)
    {
        const auto index = qint32(m_table.folders.size());
        Visited visited = m_visits.takeOut(&node);
        ScannedFolder folder;
        folder.path = node.sides.left.path;
        folder.parent = parent;
        folder.root = m_root;
        folder.isReference = roleOf(folder.path, parent);
        folder.isWhole = visited.isWhole && node.complete && visited.folders == node.children.size() &&
                         !m_passedOver.contains(folder.path);
        folder.files = std::move(visited.files);
        folder.names = std::move(visited.names);
        for (ScannedFile &file : folder.files)
            file.folder = index;
        m_table.folders.push_back(std::move(folder));
        return index;
    }

    [[nodiscard]] bool roleOf(const QString &path, qint32 parent) const
    {
        for (const DuplicateRoot &inner : m_inner) {
            if (inner.folder.path == path)
                return inner.isReference;
        }
        return parent < 0 ? m_isReference : m_table.folders[std::size_t(parent)].isReference;
    }

    ScannedFiles &m_table;
    Visits &m_visits;
    const QList<DuplicateRoot> &m_inner;
    QSet<QString> m_passedOver;
    qint32 m_root = 0;
    bool m_isReference = false;
};

} // namespace

QString ScannedFiles::pathOf(quint32 file) const
{
    const ScannedFolder &folder = folderOf(file);
    return joinedPath(folder.path, folder.nameOf(this->file(file)).toString());
}

void ScannedFiles::number()
{
    std::size_t count = 0;
    for (const ScannedFolder &folder : folders)
        count += folder.files.size();
    m_files.reserve(count);
    for (ScannedFolder &folder : folders) {
        folder.firstFile = quint32(m_files.size());
        for (const ScannedFile &file : folder.files)
            m_files.push_back(&file);
    }
}

ScannedFiles listForDuplicates(const DuplicateQuestion &question, const QList<DuplicateRoot> &inner,
                               DuplicateScan &scan, const CancelFlag &cancel, Progress &progress)
{
    ScannedFiles table;
    const int threads = question.threads > 0 ? question.threads : crewSize();
    for (qint32 root = 0; root < scan.roots.size() && !cancel.isCancelled(); ++root) {
        FolderInput input;
        input.roots.left = scan.roots.at(root).folder;
        input.hidden = question.hidden;
        Visits visits(threads);
        FolderWalk walk(input, threads, cancel, [&](int worker, WalkNode &node, Sides<FolderWalk::Entries> &entries) {
            return visits.take(worker, node, entries.left);
        });
        QList<FolderProblem> problems;
        const WalkNode *const top = walk.run({&progress, &problems});
        QSet<QString> passedOver;
        for (const FolderProblem &problem : std::as_const(problems))
            passedOver.insert(problem.path);
        TableFiller(table, visits, inner, std::move(passedOver)).fill(top, root, scan.roots.at(root).isReference);
        scan.problems.append(problems);
    }
    table.number();
    scan.files = qint64(table.fileCount());
    return table;
}

bool isRecycleBin(const QString &folder)
{
    const QString name = bareName(folder);
    for (const char *bin : {"$RECYCLE.BIN", "RECYCLER", "RECYCLED"}) {
        if (name.compare(QLatin1String(bin), Qt::CaseInsensitive) == 0)
            return true;
    }
    if (name == QLatin1String(".Trash") || name == QLatin1String(".Trashes") ||
        name.startsWith(QLatin1String(".Trash-")))
        return true;
    const QString data = qEnvironmentVariable("XDG_DATA_HOME");
    return name == QLatin1String("Trash") &&
           (folder.endsWith(QLatin1String("/.local/share/Trash")) || (!data.isEmpty() && parentPath(folder) == data));
}

} // namespace velmora
