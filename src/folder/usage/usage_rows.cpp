#include "folder/usage/usage_rows.h"

#include "core/natural_order.h"
#include "core/visible_name.h"
#include "session/diff_colours.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QBrush>
#include <QLocale>

namespace velmora {

QString usageSizeText(qint64 bytes)
{
    constexpr qint64 kilobyte = 1024;
    // The locale has no translation of this one unit.
    if (bytes < kilobyte)
        return Velmora::tr("%1 bytes").arg(bytes);
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

namespace {

QString growthText(qint64 bytes)
{
    if (bytes == 0)
        return {};
    return (bytes > 0 ? QStringLiteral("+") : QStringLiteral("−")) + usageSizeText(std::abs(bytes));
}

} // namespace

UsageRows::UsageRows(SharedUsage result) : m_result(std::move(result))
{
    m_expanded.resize(std::size_t(count()));
    if (count() > 0)
        m_expanded.front() = true;
}

QStringList UsageRows::headings() const
{
    return {Velmora::tr("Name"),       Velmora::tr("Size"),    Velmora::tr("Share %"), Velmora::tr("Files"),
            Velmora::tr("Subfolders"), Velmora::tr("On disk"), Velmora::tr("Growth")};
}

QString UsageRows::text(qint32 node, int column) const
{
    const UsageTree::Node &here = tree().node(node);
    switch (column) {
    case Name:
        return visibleName(tree().name(node));
    case Size:
        return usageSizeText(here.size);
    case Share:
        return shareText(tree().share(node));
    case Files:
        return here.isFolder ? QString::number(here.files) : QString();
    case Subfolders:
        return here.isFolder ? QString::number(here.folders) : QString();
    case OnDisk:
        return here.countsElsewhere ? QStringLiteral("—") : usageSizeText(here.allocated);
    case Growth:
        return m_result->growth.empty() ? QString() : growthText(m_result->growth[std::size_t(node)]);
    default:
        return {};
    }
}

Qt::Alignment UsageRows::alignment(int column) const
{
    return (column == Name ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter;
}

QString UsageRows::hint(qint32 node, int column) const
{
    const UsageTree::Node &here = tree().node(node);
    if (column != Name)
        return here.countsElsewhere && column == OnDisk
                   ? Velmora::tr("This file has several names; its room on the disk counts at another one")
                   : text(node, column);
    QStringList lines{shownPath(tree().path(node))};
    if (here.unreadable)
        lines.append(Velmora::tr("Could not be read, or not to its end"));
    return lines.join(u'\n');
}

RowPicture UsageRows::picture(qint32 node) const
{
    return tree().node(node).isFolder ? RowPicture::Folder : RowPicture::File;
}

QVariant UsageRows::data(qint32 node, int column, int role) const
{
    if (role == shareRole)
        return tree().share(node);
    if (role != Qt::ForegroundRole)
        return {};
    if (tree().node(node).unreadable)
        return QBrush(diffColour(DiffColour::RemovedStrong));
    return column == Name || column == Size ? QVariant() : QVariant(QBrush(diffColour(DiffColour::MutedText)));
}

qint64 UsageRows::number(qint32 node, int column) const
{
    const UsageTree::Node &here = tree().node(node);
    switch (column) {
    case Files:
        return here.files;
    case Subfolders:
        return here.folders;
    case OnDisk:
        return here.allocated;
    case Growth:
        return m_result->growth.empty() ? 0 : m_result->growth[std::size_t(node)];
    default:
        return here.size;
    }
}

bool UsageRows::isBefore(qint32 one, qint32 other, int column) const
{
    if (column == Name)
        return compareNatural(tree().name(one), tree().name(other)) < 0;
    return number(one, column) < number(other, column);
}

} // namespace velmora
