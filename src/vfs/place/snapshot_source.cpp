#include "vfs/place/snapshot_source.h"

#include "platform/system_attribute.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>
#include <vector>

namespace velmora {

namespace {

class NothingOpener final : public FileOpener {
public:
    std::unique_ptr<OpenFile> open(const QString &, OpenHint) override { return nullptr; }
};

QStringView relative(QStringView path)
{
    while (path.startsWith(u'/'))
        path = path.sliced(1);
    while (path.endsWith(u'/'))
        path.chop(1);
    return path;
}

FolderEntry folderEntry()
{
    FolderEntry entry;
    entry.kind = EntryKind::Folder;
    return entry;
}

FolderEntry fileEntry(const FolderSnapshotEntry &recorded)
{
    FolderEntry entry;
    entry.size = recorded.size;
    entry.modifiedMs = recorded.modifiedMs.value_or(0);
    return entry;
}

bool isLeftOut(QStringView name, HiddenEntries hidden)
{
    return hidden == HiddenEntries::LeftOut && dotHides() && name.startsWith(u'.');
}

QStringView parentOf(QStringView path)
{
    return path.first(std::max<qsizetype>(path.lastIndexOf(u'/'), 0));
}

bool isAtOrBelow(QStringView path, QStringView folder)
{
    return path.startsWith(folder) && (path.size() == folder.size() || path[folder.size()] == u'/');
}

using Entries = std::vector<FolderSnapshotEntry>;

/// Takes out entries that stand in nobody's tree.
class Sifter {
public:
    Sifter(Entries &entries, QList<ArchiveProblem> &problems) : m_entries(entries), m_problems(problems) {}

    void run(int mostFolders)
    {
        std::vector<bool> drops(m_entries.size(), false);
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            const QString &path = m_entries[i].path;
            if (path.count(u'/') > mostFolders) {
                drops[i] = true;
                noteProblem(m_problems, ArchiveProblem::Kind::TooDeep, path);
                continue;
            }
            // Files of one folder mostly stand together.
            const QStringView folder = parentOf(path);
            const QStringView last = std::exchange(m_last, folder);
            if (folder != last)
                dropFilesOnTheWay(folder, last, drops);
        }
        std::size_t kept = 0;
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            if (!drops[i] && kept++ != i)
                m_entries[kept - 1] = std::move(m_entries[i]);
        }
        m_entries.resize(kept);
    }

private:
    /// A path that others go through is a folder.
    void dropFilesOnTheWay(QStringView folder, QStringView seen, std::vector<bool> &drops)
    {
        for (; !folder.isEmpty() && !isAtOrBelow(seen, folder); folder = parentOf(folder)) {
            const auto found = std::lower_bound(m_entries.begin(), m_entries.end(), folder,
                                                [](const auto &entry, QStringView path) { return entry.path < path; });
            const std::size_t at = std::size_t(found - m_entries.begin());
            if (found == m_entries.end() || found->path != folder || drops[at])
                continue;
            drops[at] = true;
            noteProblem(m_problems, ArchiveProblem::Kind::SameName, found->path);
        }
    }

    Entries &m_entries;
    QList<ArchiveProblem> &m_problems;
    QStringView m_last;
};

bool sameStamp(const std::optional<FolderEntry> &left, const std::optional<FolderEntry> &right)
{
    return left && right && left->size == right->size && left->modifiedMs == right->modifiedMs &&
           left->identity == right->identity;
}

void load(SnapshotOpening &opening, const SnapshotPlace &place, const CancelFlag &cancel, Progress &progress,
          const ArchiveLimits &limits)
{
    opening.reading = loadFolderSnapshot(place.file, cancel, progress);
    FolderSnapshotReading &reading = opening.reading;
    if (!reading.ok())
        return;
    if (reading.repeated > 0) {
        noteProblem(opening.problems, ArchiveProblem::Kind::SameName, reading.firstRepeated);
        opening.problems.last().count = reading.repeated;
    }
    Sifter(reading.snapshot.entries, opening.problems).run(limits.depth);
    Location location = Location::ofFolder(place.file);
    location.kind = Location::Kind::OtherTree;
    opening.source =
        std::make_shared<const SnapshotSource>(std::move(location), std::exchange(reading.snapshot, FolderSnapshot()));
}

} // namespace

SnapshotSource::SnapshotSource(Location location, FolderSnapshot snapshot)
    : TreeSource(std::move(location)),
      m_snapshot(std::move(snapshot)),
      m_access(m_snapshot.hasDigests() ? ContentAccess::NamesOnly : ContentAccess::None)
{}

std::size_t SnapshotSource::lowerBound(QStringView path, std::size_t from) const
{
    const Entries &entries = m_snapshot.entries;
    const auto found = std::lower_bound(entries.begin() + std::ptrdiff_t(from), entries.end(), path,
                                        [](const auto &entry, QStringView sought) { return entry.path < sought; });
    return std::size_t(found - entries.begin());
}

std::size_t SnapshotSource::endOf(QStringView prefix, std::size_t from) const
{
    const Entries &entries = m_snapshot.entries;
    const auto found = std::partition_point(entries.begin() + std::ptrdiff_t(from), entries.end(),
                                            [prefix](const auto &entry) { return entry.path.startsWith(prefix); });
    return std::size_t(found - entries.begin());
}

const FolderSnapshotEntry *SnapshotSource::find(QStringView path) const
{
    const std::size_t at = lowerBound(path);
    const Entries &entries = m_snapshot.entries;
    return at < entries.size() && entries[at].path == path ? &entries[at] : nullptr;
}

FolderRead SnapshotSource::readFolder(const QString &path, HiddenEntries hidden, const FileAccess::Sink &sink) const
{
    QString prefix = relative(path).toString();
    if (!prefix.isEmpty())
        prefix += u'/';
    const std::size_t begin = lowerBound(prefix);
    const std::size_t end = endOf(prefix, begin);
    if (begin == end && !prefix.isEmpty())
        return FolderRead::Missing;
    for (std::size_t at = begin; at < end;) {
        const FolderSnapshotEntry &recorded = m_snapshot.entries[at];
        const QStringView below = QStringView(recorded.path).sliced(prefix.size());
        const qsizetype slash = below.indexOf(u'/');
        const QStringView name = slash < 0 ? below : below.first(slash);
        FolderEntry entry = slash < 0 ? fileEntry(recorded) : folderEntry();
        entry.name = name.toString();
        at = slash < 0 ? at + 1 : endOf(QStringView(recorded.path).first(prefix.size() + slash + 1), at);
        if (!isLeftOut(name, hidden) && !sink(std::move(entry)))
            return FolderRead::Stopped;
    }
    return FolderRead::Complete;
}

std::optional<FolderEntry> SnapshotSource::describe(const QString &path, HiddenEntries hidden) const
{
    const QStringView inside = relative(path);
    if (inside.isEmpty())
        return folderEntry();
    if (isLeftOut(inside.sliced(inside.lastIndexOf(u'/') + 1), hidden))
        return std::nullopt;
    if (const FolderSnapshotEntry *recorded = find(inside))
        return fileEntry(*recorded);
    const QString prefix = inside.toString() + u'/';
    const std::size_t at = lowerBound(prefix);
    const bool isFolder = at < m_snapshot.entries.size() && m_snapshot.entries[at].path.startsWith(prefix);
    return isFolder ? std::optional(folderEntry()) : std::nullopt;
}

std::unique_ptr<FileOpener> SnapshotSource::makeOpener() const
{
    return std::make_unique<NothingOpener>();
}

std::optional<ContentIdentity> SnapshotSource::contentIdentity(const QString &path) const
{
    const FolderSnapshotEntry *recorded = find(relative(path));
    if (!recorded || recorded->digest.isEmpty())
        return std::nullopt;
    return ContentIdentity{ContentIdentity::Algorithm::Sha256, recorded->digest};
}

std::optional<ContentIdentity::Algorithm> SnapshotSource::identityKind() const
{
    return m_access == ContentAccess::NamesOnly ? std::optional(ContentIdentity::Algorithm::Sha256) : std::nullopt;
}

// Opening -------------------------------------------------------------------------------------------------------------

std::optional<SnapshotPlace> snapshotPlaceOf(const QString &path)
{
    if (!path.contains(folderSnapshotSuffix, Qt::CaseInsensitive))
        return std::nullopt;
    const QString clean = Location::ofFolder(path).place;
    for (qsizetype at = 0; at >= 0;) {
        at = clean.indexOf(folderSnapshotSuffix, at, Qt::CaseInsensitive);
        if (at < 0)
            break;
        at += folderSnapshotSuffix.size();
        if ((at == clean.size() || clean[at] == u'/') && QFileInfo(clean.first(at)).isFile())
            return SnapshotPlace{clean.first(at), clean.sliced(at)};
    }
    return std::nullopt;
}

TreeFolder SnapshotOpening::folder() const
{
    return source ? TreeFolder{source, inside.isEmpty() ? QStringLiteral("/") : inside} : TreeFolder();
}

SnapshotOpening openSnapshot(const SnapshotPlace &place, const SnapshotOpening &before, const CancelFlag &cancel,
                             Progress &progress, const ArchiveLimits &limits)
{
    SnapshotOpening opening;
    opening.stamp = FileAccess::native().describe(place.file);
    if (before.source && before.source->location().place == place.file && sameStamp(before.stamp, opening.stamp))
        opening = before;
    else
        load(opening, place, cancel, progress, limits);
    opening.inside = place.inside;
    const std::optional<FolderEntry> folder =
        opening.source ? opening.source->describe(place.inside, HiddenEntries::Listed) : std::nullopt;
    if (!folder || folder->kind != EntryKind::Folder)
        opening.source = nullptr;
    return opening;
}

} // namespace velmora
