#include "core/aligned_buffer.h"
#include "core/crew.h"
#include "core/message_digest.h"
#include "core/path_names.h"
#include "folder/engine/folder_engine.h"
#include "folder/engine/folder_snapshot.h"
#include "folder/engine/folder_walk.h"
#include "platform/system_attribute.h"

#include <QDateTime>

#include <algorithm>
#include <atomic>
#include <mutex>

namespace velmora {

namespace {

using Entries = std::vector<FolderSnapshotEntry>;

constexpr qint64 pieceSize = 1024 * 1024;
/// How far the system may read ahead: as much as a disk brings while a few pieces are computed.
constexpr qint64 aheadSize = 8 * pieceSize;
/// Files that a thread takes at once: enough of one folder for the opener to hold on to it.
constexpr std::size_t filesInARow = 16;

/// The files that each worker of a walk finds.
class Finder {
public:
    using Test = bool (*)(const QString &path, const FolderEntry &file);

    /// Takes files that pass `isWanted`.
    Finder(const TreeFolder &folder, HiddenEntries hidden, Test isWanted, const CancelFlag &cancel)
        : m_isWanted(isWanted), m_cancel(cancel), m_found(std::size_t(crewSize()))
    {
        m_input.roots.left = folder;
        m_input.hidden = hidden;
    }

    Entries find(const FolderRunReport &report)
    {
        FolderWalk walk(m_input, crewSize(), m_cancel,
                        [this](int worker, WalkNode &node, Sides<FolderWalk::Entries> &entries) {
                            return visit(worker, node, entries.left);
                        });
        walk.run(report);
        Entries all = std::move(m_found.front());
        for (std::size_t i = 1; i < m_found.size(); ++i)
            std::move(m_found[i].begin(), m_found[i].end(), std::back_inserter(all));
        std::sort(all.begin(), all.end(), [](const auto &one, const auto &other) { return one.path < other.path; });
        return all;
    }

private:
    std::vector<WalkDescent> visit(int worker, WalkNode &node, const FolderWalk::Entries &entries)
    {
        std::vector<WalkDescent> folders;
        Entries &files = m_found[std::size_t(worker)];
        for (const FolderEntry &entry : entries) {
            QString path = joinedPath(node.name, entry.name);
            if (entry.kind == EntryKind::File) {
                if (m_isWanted(joinedPath(node.sides.left.path, entry.name), entry))
                    files.push_back({std::move(path), entry.size, entry.modifiedMs});
            } else if (entry.kind == EntryKind::Folder && !entry.isLink) {
                folders.push_back({std::move(path), {&entry, nullptr}});
            }
        }
        return folders;
    }

    FolderInput m_input;
    Test m_isWanted;
    CancelFlag m_cancel;
    std::vector<Entries> m_found; ///< one for each worker
};

/// Computes the digests of files on several threads.
class Hasher {
public:
    Hasher(const TreeFolder &folder, Entries &entries, const CancelFlag &cancel, Progress &progress)
        : m_folder(folder), m_entries(entries), m_cancel(cancel), m_progress(progress)
    {
        for (const FolderSnapshotEntry &entry : entries)
            m_total += entry.size;
    }

    QList<FolderProblem> run()
    {
        runCrew(
            crewSize(), [this](int worker) { work(worker); }, [this] { tell({}); });
        std::sort(m_unreadable.begin(), m_unreadable.end());
        return m_unreadable;
    }

private:
    void work(int worker)
    {
        const std::unique_ptr<FileOpener> opener = m_folder.source->makeOpener();
        const AlignedBuffer buffer(pieceSize);
        for (std::size_t begin = take(); begin < m_entries.size() && !m_cancel.isCancelled(); begin = take()) {
            const std::size_t end = std::min(begin + filesInARow, m_entries.size());
            for (std::size_t i = begin; i < end && !m_cancel.isCancelled(); ++i)
                read(m_entries[i], *opener, buffer, worker == 0);
        }
    }

    std::size_t take() { return m_next.fetch_add(filesInARow); }

    void read(FolderSnapshotEntry &entry, FileOpener &opener, const AlignedBuffer &buffer, bool tells)
    {
        const QString path = joinedPath(m_folder.path, entry.path);
        const std::unique_ptr<OpenFile> file = opener.open(path, OpenHint::ListedAsFile);
        bool isWhole = file != nullptr;
        MessageDigest digest(MessageDigest::Kind::Sha256);
        for (qint64 offset = 0; isWhole && !m_cancel.isCancelled();) {
            if (entry.size > pieceSize && offset % aheadSize == 0)
                file->expect(offset + aheadSize, aheadSize);
            const FilePiece piece = file->readAt(offset, buffer.data(), pieceSize);
            isWhole = !piece.failed;
            digest.update(QByteArrayView(buffer.data(), piece.length));
            offset += piece.length;
            m_done += piece.length;
            if (tells)
                tell(path);
            if (piece.length < pieceSize)
                break;
        }
        if (m_cancel.isCancelled())
            return;
        if (isWhole)
            entry.digest = digest.value();
        else
            note(path);
    }

    void tell(const QString &path) { m_progress.report(int(FolderSnapshotPhase::Hashing), m_done, m_total, path); }

    void note(const QString &path)
    {
        const std::lock_guard lock(m_mutex);
        m_unreadable.append({FolderProblem::Kind::UnreadableFile, path});
    }

    const TreeFolder &m_folder;
    Entries &m_entries;
    const CancelFlag &m_cancel;
    Progress &m_progress;
    qint64 m_total = 0;
    std::atomic<qint64> m_done{0};
    std::atomic<std::size_t> m_next{0};
    std::mutex m_mutex;
    QList<FolderProblem> m_unreadable; ///< guarded by the mutex
};

FolderSnapshotScan scanFiles(const TreeFolder &folder, HiddenEntries hidden, Finder::Test isWanted,
                             const CancelFlag &cancel, Progress &progress)
{
    static_assert(int(FolderSnapshotPhase::Walking) == int(FolderPhase::Reading)); // the walker reports it
    FolderSnapshotScan scan;
    scan.snapshot.root = folder.path;
    scan.snapshot.created = QDateTime::currentDateTime().toString(Qt::ISODate);
    scan.snapshot.entries = Finder(folder, hidden, isWanted, cancel).find({&progress, &scan.problems});
    scan.cancelled = cancel.isCancelled();
    return scan;
}

} // namespace

QList<FolderProblem> computeDigests(const TreeFolder &folder, std::vector<FolderSnapshotEntry> &entries,
                                    const CancelFlag &cancel, Progress &progress)
{
    return Hasher(folder, entries, cancel, progress).run();
}

FolderSnapshotScan scanFolderSnapshot(const TreeFolder &folder, FolderSnapshotDigests digests, const CancelFlag &cancel,
                                      Progress &progress)
{
    const auto isNoSystemFile = [](const QString &path, const FolderEntry &) { return !isSystemFile(path); };
    FolderSnapshotScan scan = scanFiles(folder, HiddenEntries::LeftOut, isNoSystemFile, cancel, progress);
    if (digests == FolderSnapshotDigests::Sha256)
        scan.problems += computeDigests(folder, scan.snapshot.entries, cancel, progress);
    scan.cancelled = cancel.isCancelled();
    return scan;
}

FolderSnapshotScan scanOwnFiles(const TreeFolder &folder, const CancelFlag &cancel, Progress &progress)
{
    const auto isNoLink = [](const QString &, const FolderEntry &file) { return !file.isLink; };
    return scanFiles(folder, HiddenEntries::Listed, isNoLink, cancel, progress);
}

} // namespace velmora
