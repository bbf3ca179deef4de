#include "folder/browse/archive_rows.h"

#include "core/natural_order.h"
#include "core/visible_name.h"
#include "folder/actions/action_words.h"
#include "folder/browse/archive_view_words.h"
#include "session/diff_colours.h"
#include "session/translate.h"

#include <QBrush>
#include <QDateTime>
#include <QLocale>

namespace velmora {

ArchiveRows::ArchiveRows(SharedListing listing) : m_listing(std::move(listing))
{
    const auto size = std::size_t(count());
    m_ends.resize(size);
    m_expanded.resize(size);
    m_failed.resize(size);
    for (qint32 node = count() - 1; node >= 0; --node) {
        qint32 &end = m_ends[std::size_t(node)];
        end = std::max(end, node + 1);
        if (const qint32 around = parent(node); around >= 0)
            m_ends[std::size_t(around)] = std::max(m_ends[std::size_t(around)], end);
    }
}

void ArchiveRows::takeTest(const ArchiveTest &test)
{
    m_test = test;
    std::fill(m_failed.begin(), m_failed.end(), false);
    for (const ArchiveProblem &problem : test.problems) {
        if (const qint32 node = m_listing->find(problem.path); node >= 0)
            m_failed[std::size_t(node)] = true;
    }
}

QStringList ArchiveRows::headings() const
{
    return {Velmora::tr("Name"),     Velmora::tr("Size"),   Velmora::tr("Packed"),   Velmora::tr("Ratio"),
            Velmora::tr("Modified"), Velmora::tr("Method"), Velmora::tr("Checksum"), Velmora::tr("Mode")};
}

QString ArchiveRows::nameText(qint32 node) const
{
    const ArchiveNode &here = m_listing->node(node);
    const QString name = visibleName(here.name);
    return here.target.isEmpty() ? name : name + QStringLiteral(" → ") + visibleName(here.target);
}

QString ArchiveRows::checksumText(qint32 node) const
{
    const ArchiveEntry *entry = m_listing->entry(node);
    if (!entry || entry->kind != ArchiveEntryKind::File)
        return {};
    std::optional<quint32> crc = entry->crc;
    if (const auto tested = m_test.checksums.find(m_listing->row(node).archive); tested != m_test.checksums.end()) {
        const auto found = tested->second.constFind(m_listing->node(node).entry);
        if (found != tested->second.constEnd())
            crc = *found;
    }
    return crc ? QStringLiteral("%1").arg(*crc, 8, 16, QLatin1Char('0')).toUpper() : QString();
}

QString ArchiveRows::text(qint32 node, int column) const
{
    const ListedEntry &row = m_listing->row(node);
    const ArchiveEntry *entry = m_listing->entry(node);
    switch (column) {
    case Name:
        return nameText(node);
    case Size:
        return row.size < 0 || (row.isFolder && row.size == 0) ? QString() : sizeText(row.size);
    case Packed:
        return row.packed < 0 || (row.isFolder && row.packed == 0) ? QString() : sizeText(row.packed);
    case Ratio:
        return ratioText(row.packed, row.size);
    case Modified:
        return entry && entry->modifiedMs != 0 ? QLocale().toString(QDateTime::fromMSecsSinceEpoch(entry->modifiedMs),
                                                                    QStringLiteral("yyyy-MM-dd HH:mm:ss"))
                                               : QString();
    case Method:
        return entry ? QString::fromLatin1(entry->method) : QString();
    case Checksum:
        return checksumText(node);
    case Mode:
        return entry ? modeText(*entry) : QString();
    default:
        return {};
    }
}

Qt::Alignment ArchiveRows::alignment(int column) const
{
    const bool isNumber = column == Size || column == Packed || column == Ratio;
    return (isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QString ArchiveRows::hint(qint32 node, int column) const
{
    if (column == Size && m_listing->row(node).size >= 0)
        return Velmora::tr("%1 bytes").arg(QLocale().toString(m_listing->row(node).size));
    if (column == Packed && m_listing->row(node).packed >= 0)
        return Velmora::tr("%1 bytes").arg(QLocale().toString(m_listing->row(node).packed));
    if (column == Checksum)
        return Velmora::tr("CRC-32; of formats that have none in their directory it is known after a test");
    if (column != Name)
        return text(node, column);
    QStringList lines{visibleName(m_listing->path(node))};
    const ArchiveEntry *entry = m_listing->entry(node);
    if (entry && entry->isEncrypted)
        lines.append(Velmora::tr("Encrypted"));
    if (hasFailed(node))
        lines.append(Velmora::tr("Could not be read, or not to its end"));
    return lines.join(u'\n');
}

RowPicture ArchiveRows::picture(qint32 node) const
{
    return m_listing->row(node).isFolder ? RowPicture::Folder : RowPicture::File;
}

QVariant ArchiveRows::data(qint32 node, int column, int role) const
{
    if (role != Qt::ForegroundRole)
        return {};
    if (hasFailed(node))
        return QBrush(diffColour(DiffColour::RemovedStrong));
    return column == Name || column == Size ? QVariant() : QVariant(QBrush(diffColour(DiffColour::MutedText)));
}

qint64 ArchiveRows::number(qint32 node, int column) const
{
    const ListedEntry &row = m_listing->row(node);
    const ArchiveEntry *entry = m_listing->entry(node);
    switch (column) {
    case Size:
        return row.size;
    case Packed:
        return row.packed;
    case Ratio:
        return row.packed < 0 || row.size <= 0 ? -1 : row.packed * 1000 / row.size;
    default:
        return entry ? entry->modifiedMs : 0;
    }
}

bool ArchiveRows::isBefore(qint32 one, qint32 other, int column) const
{
    if (column == Size || column == Packed || column == Ratio || column == Modified)
        return number(one, column) < number(other, column);
    return compareNatural(text(one, column), text(other, column)) < 0;
}

} // namespace velmora
