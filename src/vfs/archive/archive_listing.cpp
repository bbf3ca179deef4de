#include "vfs/archive/archive_listing.h"

#include "core/natural_order.h"

#include <algorithm>
#include <span>
#include <utility>

namespace velmora {

namespace {

bool isFolderAt(const ArchiveSource &archive, qint32 node)
{
    return archive.tree().node(node).kind == ArchiveEntryKind::Folder || archive.within(node);
}

/// A sum of which one part is not known is not known.
void addKnown(qint64 &sum, qint64 part)
{
    sum = sum < 0 || part < 0 ? -1 : sum + part;
}

} // namespace

ArchiveListing::ArchiveListing(std::shared_ptr<const ArchiveSource> source) : m_source(std::move(source))
{
    m_totals.packed = 0;
    addFolder(*m_source, ArchiveTree::root, -1, 0);
}

void ArchiveListing::addFolder(const ArchiveSource &archive, qint32 folder, qint32 parent, quint16 depth)
{
    const std::span<const qint32> all = archive.tree().children(folder);
    std::vector<qint32> children(all.begin(), all.end());
    std::sort(children.begin(), children.end(), [&archive](qint32 left, qint32 right) {
        const bool leftIsFolder = isFolderAt(archive, left);
        if (leftIsFolder != isFolderAt(archive, right))
            return leftIsFolder;
        return compareNatural(archive.tree().node(left).name, archive.tree().node(right).name) < 0;
    });
    for (const qint32 child : children)
        addRow(archive, child, parent, depth);
}

void ArchiveListing::addRow(const ArchiveSource &archive, qint32 node, qint32 parent, quint16 depth)
{
    const auto number = qint32(m_rows.size());
    const bool isPlainFolder = archive.tree().node(node).kind == ArchiveEntryKind::Folder;
    const ArchiveEntry *entry = archive.entryOf(node);
    ListedEntry row{&archive, node, parent, depth, isFolderAt(archive, node), 0, 0};
    if (!isPlainFolder) {
        row.size = entry->size;
        row.packed = entry->packed;
    }
    m_rows.push_back(row);
    if (const ArchiveSource *inner = archive.within(node))
        addFolder(*inner, ArchiveTree::root, number, quint16(depth + 1));
    else if (isPlainFolder)
        addFolder(archive, node, number, quint16(depth + 1));
    addTotals(number);
}

void ArchiveListing::addTotals(qint32 row)
{
    const ListedEntry added = m_rows[std::size_t(row)];
    const bool isPlainFolder = node(row).kind == ArchiveEntryKind::Folder;
    (isPlainFolder ? m_totals.folders : m_totals.files) += 1;
    const bool isLink = node(row).kind == ArchiveEntryKind::Link || node(row).kind == ArchiveEntryKind::HardLink;
    if (added.parent >= 0 && m_rows[std::size_t(added.parent)].archive == added.archive) {
        ListedEntry &around = m_rows[std::size_t(added.parent)];
        if (!isLink)
            addKnown(around.size, added.size);
        addKnown(around.packed, isLink ? std::max<qint64>(added.packed, 0) : added.packed);
    } else if (added.archive == m_source.get()) {
        if (!isLink)
            addKnown(m_totals.size, added.size);
        addKnown(m_totals.packed, isLink ? std::max<qint64>(added.packed, 0) : added.packed);
    }
}

const ArchiveNode &ArchiveListing::node(qint32 row) const
{
    const ListedEntry &listed = m_rows[std::size_t(row)];
    return listed.archive->tree().node(listed.node);
}

const ArchiveEntry *ArchiveListing::entry(qint32 row) const
{
    const ListedEntry &listed = m_rows[std::size_t(row)];
    return listed.archive->entryOf(listed.node);
}

QString ArchiveListing::path(qint32 row) const
{
    QString path;
    for (; row >= 0; row = m_rows[std::size_t(row)].parent)
        path.prepend(u'/' + node(row).name);
    return path;
}

qint32 ArchiveListing::find(const QString &path) const
{
    qint32 around = -1;
    for (const QStringView part : QStringView(path).tokenize(u'/', Qt::SkipEmptyParts)) {
        qint32 at = around + 1;
        while (at < count() && row(at).parent >= around && (row(at).parent != around || node(at).name != part))
            ++at;
        if (at == count() || row(at).parent < around)
            return -1;
        around = at;
    }
    return around;
}

} // namespace velmora
