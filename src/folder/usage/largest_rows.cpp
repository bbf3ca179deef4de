#include "folder/usage/largest_rows.h"

#include "core/path_names.h"
#include "core/visible_name.h"
#include "session/translate.h"

#include <QDir>

namespace velmora {

LargestRows::LargestRows(SharedUsage result)
    : FixedRowTree(std::vector<quint16>(std::size_t(result ? result->usage.largest.size() : 0), 0)),
      m_result(std::move(result))
{}

QStringList LargestRows::headings() const
{
    return {Velmora::tr("Name"), Velmora::tr("Size"), Velmora::tr("Folder")};
}

QString LargestRows::text(qint32 node, int column) const
{
    switch (column) {
    case Name:
        return visibleName(bareName(path(node)));
    case Size:
        return usageSizeText(file(node).size);
    default: {
        const QString folder = parentPath(path(node)).mid(m_result->usage.tree.rootPath().size());
        return visibleName(QDir::toNativeSeparators(folder.startsWith(u'/') ? folder.mid(1) : folder));
    }
    }
}

Qt::Alignment LargestRows::alignment(int column) const
{
    return (column == Size ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QString LargestRows::hint(qint32 node, int /*column*/) const
{
    return visibleName(QDir::toNativeSeparators(path(node)));
}

bool LargestRows::isBefore(qint32 one, qint32 other, int column) const
{
    return column == Size ? file(one).size < file(other).size : RowTree::isBefore(one, other, column);
}

} // namespace velmora
