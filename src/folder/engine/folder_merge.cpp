#include "folder/engine/folder_merge.h"

#include "core/crew.h"
#include "core/path_names.h"
#include "platform/file_access.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <mutex>

namespace velmora {

namespace {

constexpr qint64 pieceLength = 256 * 1024;

struct ListedFile {
    QString path;
    qint64 size;
};
using Listing = std::vector<ListedFile>;

/// Lists the files below one root, sorted by path.
class TreeLister {
public:
    TreeLister(const QString &root, const CancelFlag &cancel, std::atomic<qint64> &entries)
        : m_root(root), m_cancel(cancel), m_entries(entries)
    {}

    [[nodiscard]] Listing list(QStringList &unreadable)
    {
        Listing files;
        QStringList open{QString()};
        while (!open.isEmpty() && !m_cancel.isCancelled()) {
            const QString folder = open.takeLast();
            const QString path = folder.isEmpty() ? m_root : joinedPath(m_root, folder);
            const FolderRead read = FileAccess::native().readFolder(path, [&](FolderEntry &&entry) {
                ++m_entries;
                const QString name = folder.isEmpty() ? entry.name : folder + u'/' + entry.name;
                if (entry.kind == EntryKind::File)
                    files.push_back({name, entry.size});
                else if (entry.kind == EntryKind::Folder && !entry.isLink)
                    open.append(name);
                return !m_cancel.isCancelled();
            });
            if (read == FolderRead::Unreadable || read == FolderRead::Missing)
                unreadable.append(path);
        }
        std::sort(files.begin(), files.end(),
                  [](const ListedFile &one, const ListedFile &other) { return one.path < other.path; });
        return files;
    }

private:
    QString m_root;
    CancelFlag m_cancel;
    std::atomic<qint64> &m_entries;
};

MergeVersions<Listing> listTrees(const MergeVersions<QString> &folders, const CancelFlag &cancel, Progress &progress,
                                 QStringList &unreadable)
{
    MergeVersions<Listing> listings;
    std::atomic<qint64> entries{0};
    std::atomic<std::size_t> next{0};
    std::mutex mutex;
    const int workers = std::min(int(allMergeVersions.size()), crewSize());
    const auto tell = [&] { progress.report(int(FolderPhase::Reading), entries, 0); };
    runCrew(
        workers,
        [&](int) {
            for (std::size_t i = next++; i < allMergeVersions.size(); i = next++) {
                QStringList bad;
                const MergeVersion version = allMergeVersions[i];
                listings[version] = TreeLister(folders[version], cancel, entries).list(bad);
                const std::lock_guard lock(mutex);
                unreadable += bad;
            }
        },
        tell);
    tell();
    unreadable.sort();
    return listings;
}

/// The union of three sorted listings, with the sizes that each has.
QList<FolderMergeFile> joined(const MergeVersions<Listing> &listings)
{
    QList<FolderMergeFile> files;
    MergeVersions<std::size_t> at;
    for (;;) {
        const QString *first = nullptr;
        for (const MergeVersion version : allMergeVersions) {
            const Listing &listing = listings[version];
            if (at[version] < listing.size() && (!first || listing[at[version]].path < *first))
                first = &listing[at[version]].path;
        }
        if (!first)
            return files;
        FolderMergeFile file{*first, {-1, -1, -1}, FolderMergeStatus::Unchanged};
        for (const MergeVersion version : allMergeVersions) {
            const Listing &listing = listings[version];
            if (at[version] < listing.size() && listing[at[version]].path == file.path)
                file.sizes[version] = listing[at[version]++].size;
        }
        files.append(file);
    }
}

/// Which versions of one file are the same: those of one number.
using Groups = MergeVersions<int>;

/// Compares the versions of one file after the other. For one thread.
class VersionComparer {
public:
    VersionComparer(const MergeVersions<QString> &folders, const CancelFlag &cancel)
        : m_folders(folders), m_cancel(cancel)
    {
        for (const MergeVersion version : allMergeVersions) {
            m_openers[version] = FileAccess::native().makeOpener();
            m_buffers[version].resize(std::size_t(pieceLength));
        }
    }

    /// A version that is absent has a number of its own.
    [[nodiscard]] Groups compare(const FolderMergeFile &file)
    {
        MergeVersions<std::unique_ptr<OpenFile>> files;
        MergeVersions<qint64> sizes;
        for (const MergeVersion version : allMergeVersions) {
            if (file.sizes[version] >= 0) {
                files[version] =
                    m_openers[version]->open(joinedPath(m_folders[version], file.path), OpenHint::ListedAsFile);
            }
            // What cannot be opened is like all else that cannot, and like nothing that can.
            sizes[version] =
                files[version] ? files[version]->size().value_or(-1) : -2 - qint64(file.sizes[version] < 0);
        }
        Groups groups = split({0, 0, 0}, [&](MergeVersion one, MergeVersion other) {
            return sizes[one] == sizes[other] && file.sizes[one] >= 0 && file.sizes[other] >= 0;
        });
        for (qint64 offset = 0; isUndecided(groups, files) && !m_cancel.isCancelled(); offset += pieceLength) {
            if (!readPieces(files, groups, offset))
                break;
            groups = split(groups, [this](MergeVersion one, MergeVersion other) { return isSamePiece(one, other); });
        }
        return groups;
    }

private:
    /// Splits groups further: those stay together that were and that `areSame`.
    template <typename AreSame>
    [[nodiscard]] static Groups split(const Groups &before, AreSame areSame)
    {
        Groups groups;
        for (std::size_t i = 0; i < allMergeVersions.size(); ++i) {
            const MergeVersion version = allMergeVersions[i];
            groups[version] = int(i);
            for (std::size_t k = i; k-- > 0;) {
                const MergeVersion earlier = allMergeVersions[k];
                if (before[earlier] == before[version] && areSame(earlier, version))
                    groups[version] = groups[earlier];
            }
        }
        return groups;
    }

    [[nodiscard]] static bool isShared(const Groups &groups, MergeVersion version)
    {
        return std::count_if(allMergeVersions.begin(), allMergeVersions.end(),
                             [&](MergeVersion other) { return groups[other] == groups[version]; }) > 1;
    }

    [[nodiscard]] static bool isUndecided(const Groups &groups, const MergeVersions<std::unique_ptr<OpenFile>> &files)
    {
        return std::any_of(allMergeVersions.begin(), allMergeVersions.end(),
                           [&](MergeVersion version) { return files[version] && isShared(groups, version); });
    }

    /// False when all files have ended.
    bool readPieces(const MergeVersions<std::unique_ptr<OpenFile>> &files, const Groups &groups, qint64 offset)
    {
        qint64 longest = 0;
        for (const MergeVersion version : allMergeVersions) {
            m_lengths[version] = -1 - int(version); // a piece like no other
            if (!files[version] || !isShared(groups, version))
                continue;
            m_lengths[version] = files[version]->readAt(offset, m_buffers[version].data(), pieceLength).length;
            longest = std::max(longest, m_lengths[version]);
        }
        return longest > 0;
    }

    [[nodiscard]] bool isSamePiece(MergeVersion one, MergeVersion other) const
    {
        return m_lengths[one] == m_lengths[other] &&
               std::memcmp(m_buffers[one].data(), m_buffers[other].data(), std::size_t(m_lengths[one])) == 0;
    }

    MergeVersions<QString> m_folders;
    CancelFlag m_cancel;
    MergeVersions<std::unique_ptr<FileOpener>> m_openers;
    MergeVersions<std::vector<char>> m_buffers;
    MergeVersions<qint64> m_lengths;
};

FolderMergeStatus statusByPresence(const FolderMergeFile &file)
{
    const bool left = file.sizes.left >= 0;
    const bool right = file.sizes.right >= 0;
    if (file.sizes.base < 0)
        return left ? FolderMergeStatus::LeftAdded : FolderMergeStatus::RightAdded;
    if (left)
        return FolderMergeStatus::RightDeleted;
    return right ? FolderMergeStatus::LeftDeleted : FolderMergeStatus::BothDeleted;
}

FolderMergeStatus statusByContent(const FolderMergeFile &file, const Groups &groups)
{
    const bool hasBase = file.sizes.base >= 0;
    const bool leftIsBase = hasBase && groups.left == groups.base;
    const bool rightIsBase = hasBase && groups.right == groups.base;
    if (leftIsBase)
        return rightIsBase ? FolderMergeStatus::Unchanged : FolderMergeStatus::RightChanged;
    if (rightIsBase)
        return FolderMergeStatus::LeftChanged;
    return groups.left == groups.right ? FolderMergeStatus::SameChange : FolderMergeStatus::Conflict;
}

void classify(QList<FolderMergeFile> &files, const MergeVersions<QString> &folders, const CancelFlag &cancel,
              Progress &progress)
{
    constexpr qsizetype filesAtOnce = 64; // of one folder mostly, which the openers hold on to
    std::atomic<qsizetype> next{0};
    FolderMergeFile *const all = files.data();
    const qsizetype count = files.size();
    const auto tell = [&] { progress.report(int(FolderPhase::Comparing), std::min(next.load(), count), count); };
    runCrew(
        crewSize(),
        [&](int worker) {
            VersionComparer comparer(folders, cancel);
            for (qsizetype i = next.fetch_add(filesAtOnce); i < count; i = next.fetch_add(filesAtOnce)) {
                for (qsizetype k = i; k < std::min(i + filesAtOnce, count) && !cancel.isCancelled(); ++k) {
                    FolderMergeFile &file = all[k];
                    file.status = file.sizes.left >= 0 && file.sizes.right >= 0
                                      ? statusByContent(file, comparer.compare(file))
                                      : statusByPresence(file);
                }
                if (worker == 0)
                    tell();
            }
        },
        tell);
}

} // namespace

std::optional<MergeVersion> mergeSourceOf(FolderMergeStatus status)
{
    switch (status) {
    case FolderMergeStatus::Unchanged:
        return MergeVersion::Base;
    case FolderMergeStatus::LeftChanged:
    case FolderMergeStatus::SameChange:
    case FolderMergeStatus::LeftAdded:
        return MergeVersion::Left;
    case FolderMergeStatus::RightChanged:
    case FolderMergeStatus::RightAdded:
        return MergeVersion::Right;
    case FolderMergeStatus::Conflict:
    case FolderMergeStatus::LeftDeleted:
    case FolderMergeStatus::RightDeleted:
    case FolderMergeStatus::BothDeleted:
        break;
    }
    return std::nullopt;
}

FolderMergeResult mergeFolderTrees(const MergeVersions<QString> &folders, const CancelFlag &cancel, Progress &progress)
{
    FolderMergeResult result;
    result.files = joined(listTrees(folders, cancel, progress, result.unreadable));
    classify(result.files, folders, cancel, progress);
    for (const FolderMergeFile &file : std::as_const(result.files)) {
        result.changed += file.status == FolderMergeStatus::Unchanged ? 0 : 1;
        result.conflicts += file.status == FolderMergeStatus::Conflict ? 1 : 0;
    }
    return result;
}

} // namespace velmora
