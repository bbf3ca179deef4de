#include "vfs/archive/archive_source.h"

#include "platform/system_attribute.h"
#include "vfs/archive/archive_layout.h"

#include <QTemporaryDir>

#include <algorithm>

namespace velmora {

/// Opens entries by their paths.
class ArchiveSource::Opener final : public FileOpener {
public:
    explicit Opener(const ArchiveSource &archive) : m_archive(archive) {}

    std::unique_ptr<OpenFile> open(const QString &path, OpenHint) override
    {
        const Spot spot = m_archive.find(path);
        const bool isFile = spot.isThere() && spot.archive->tree().node(spot.node).kind == ArchiveEntryKind::File;
        return isFile ? spot.archive->m_parts.contents->openForward(spot.archive->tree().node(spot.node).entry)
                      : nullptr;
    }

private:
    const ArchiveSource &m_archive;
};

ArchiveSource::ArchiveSource(ArchiveParts parts) : TreeSource(parts.location), m_parts(std::move(parts)) {}

ArchiveSource::~ArchiveSource() = default;

const ArchiveEntry *ArchiveSource::entryOf(qint32 node) const
{
    const qint32 entry = tree().node(node).entry;
    return entry < 0 ? nullptr : &(*m_parts.entries)[std::size_t(entry)];
}

const ArchiveSource *ArchiveSource::within(qint32 node) const
{
    const auto found = m_parts.within.find(node);
    return found == m_parts.within.end() ? nullptr : found->second.get();
}

bool ArchiveSource::isEncrypted() const
{
    return std::any_of(m_parts.entries->begin(), m_parts.entries->end(),
                       [](const ArchiveEntry &entry) { return entry.isEncrypted; });
}

ArchiveSource::Spot ArchiveSource::entered(qint32 node) const
{
    const qint32 reached = tree().behind(node);
    if (const ArchiveSource *inner = reached < 0 ? nullptr : within(reached))
        return {inner, ArchiveTree::root};
    return {this, reached};
}

ArchiveSource::Spot ArchiveSource::find(const QString &path) const
{
    Spot spot{this, ArchiveTree::root};
    for (const QStringView part : QStringView(path).tokenize(u'/', Qt::SkipEmptyParts)) {
        const qint32 child = spot.archive->tree().child(spot.node, part);
        spot = child < 0 ? Spot() : spot.archive->entered(child);
        if (!spot.isThere())
            return {};
    }
    return spot;
}

std::optional<FolderEntry> ArchiveSource::listed(qint32 node) const
{
    const Spot spot = entered(node);
    if (!spot.isThere() || spot.archive->tree().node(spot.node).kind == ArchiveEntryKind::Special)
        return std::nullopt;
    // A root has no entry: of an archive within, its own file is told.
    const ArchiveSource &owner = spot.archive == this ? *this : *spot.archive;
    const qint32 shown = spot.archive == this ? spot.node : tree().behind(node);
    const ArchiveEntry *entry = entryOf(shown);
    FolderEntry result;
    result.name = tree().node(node).name;
    result.kind = owner.tree().node(spot.node).kind == ArchiveEntryKind::Folder ? EntryKind::Folder : EntryKind::File;
    result.isLink = tree().node(node).kind == ArchiveEntryKind::Link;
    result.size = entry ? std::max<qint64>(entry->size, 0) : 0;
    result.modifiedMs = entry ? entry->modifiedMs : 0;
    result.identity = FileIdentity{quint64(reinterpret_cast<quintptr>(&owner)), quint64(spot.node)};
    return result;
}

FolderRead ArchiveSource::readFolder(const QString &path, HiddenEntries hidden, const FileAccess::Sink &sink) const
{
    const Spot spot = find(path);
    if (!spot.isThere())
        return FolderRead::Missing;
    if (const ArchiveEntry *folder = spot.archive->entryOf(spot.node); folder && folder->cannotList)
        return FolderRead::Unreadable;
    const bool leavesOut = hidden == HiddenEntries::LeftOut && dotHides();
    for (const qint32 child : spot.archive->tree().children(spot.node)) {
        if (leavesOut && spot.archive->tree().node(child).name.startsWith(u'.'))
            continue;
        std::optional<FolderEntry> entry = spot.archive->listed(child);
        if (entry && !sink(std::move(*entry)))
            return FolderRead::Stopped;
    }
    return FolderRead::Complete;
}

std::optional<FolderEntry> ArchiveSource::describe(const QString &path, HiddenEntries hidden) const
{
    const Spot spot = find(path);
    const bool leavesOut = hidden == HiddenEntries::LeftOut && dotHides();
    if (!spot.isThere() || (leavesOut && path.sliced(path.lastIndexOf(u'/') + 1).startsWith(u'.')))
        return std::nullopt;
    std::optional<FolderEntry> entry = spot.archive->listed(spot.node);
    if (entry)
        entry->name.clear();
    return entry;
}

std::unique_ptr<FileOpener> ArchiveSource::makeOpener() const
{
    return std::make_unique<Opener>(*this);
}

std::optional<ContentIdentity> ArchiveSource::contentIdentity(const QString &path) const
{
    const Spot spot = find(path);
    const ArchiveEntry *entry = spot.isThere() ? spot.archive->entryOf(spot.node) : nullptr;
    if (!entry || entry->kind != ArchiveEntryKind::File)
        return std::nullopt;
    const ArchiveParts &parts = spot.archive->m_parts;
    const auto digest = parts.digests.constFind(spot.archive->tree().node(spot.node).entry);
    if (digest != parts.digests.constEnd())
        return ContentIdentity{parts.digestKind, *digest};
    if (!entry->crc)
        return parts.contents->identity(spot.archive->tree().node(spot.node).entry);
    QByteArray value(4, '\0');
    for (int i = 0; i < 4; ++i)
        value[i] = char((*entry->crc >> (24U - 8U * unsigned(i))) & 0xFFU);
    return ContentIdentity{ContentIdentity::Algorithm::Crc32, value};
}

std::optional<ContentIdentity::Algorithm> ArchiveSource::identityKind() const
{
    return m_parts.digests.isEmpty() ? std::nullopt : std::optional(m_parts.digestKind);
}

std::vector<std::optional<ContentIdentity>> ArchiveSource::contentIdentities(const QStringList &paths,
                                                                             ContentIdentity::Algorithm algorithm,
                                                                             const CancelFlag &cancel) const
{
    std::vector<std::optional<ContentIdentity>> known(std::size_t(paths.size()));
    std::vector<qint32> asked;
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < known.size(); ++i) {
        const Spot spot = find(paths.at(qsizetype(i)));
        const bool isFile = spot.archive == this && tree().node(spot.node).kind == ArchiveEntryKind::File;
        if (isFile && tree().node(spot.node).entry >= 0) {
            asked.push_back(tree().node(spot.node).entry);
            places.push_back(i);
        }
    }
    const std::vector<std::optional<ContentIdentity>> found = m_parts.contents->identities(asked, algorithm, cancel);
    for (std::size_t i = 0; i < found.size(); ++i)
        known[places[i]] = found[i];
    return known;
}

LaidOutFile ArchiveSource::layOut(const QString &path, const QString &folder, const CancelFlag &cancel) const
{
    QTemporaryDir own(folder + QLatin1String("/XXXXXX"));
    if (!own.isValid())
        return {{}, own.errorString()};
    Progress silent;
    const LayOutResult result = layOutEntries(*this, {path}, own.path(), cancel, silent);
    if (result.laidOut.size() != 1 || !result.error.isEmpty())
        return {{}, result.error};
    own.setAutoRemove(false);
    return {result.laidOut.first(), {}};
}

} // namespace velmora
