#include "settings/dialogs/folder_formats_model.h"

#include "session/plain_text.h"
#include "session/translate.h"

namespace velmora {

void FileFormatsModel::setGroups(const QList<FileFormatGroup> &groups)
{
    beginResetModel();
    m_groups = groups;
    endResetModel();
}

void FileFormatsModel::setGroup(int row, const FileFormatGroup &group)
{
    m_groups[row] = group;
    Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

void FileFormatsModel::append(const QList<FileFormatGroup> &groups)
{
    if (groups.isEmpty())
        return;
    beginInsertRows({}, rowCount(), rowCount() + int(groups.size()) - 1);
    m_groups.append(groups);
    endInsertRows();
}

QList<FileFormatGroup> FileFormatsModel::missingDefaults() const
{
    QList<FileFormatGroup> missing = defaultFileFormats();
    const QStringList names = namesBut(-1);
    missing.removeIf([&names](const FileFormatGroup &group) { return names.contains(group.name); });
    return missing;
}

QStringList FileFormatsModel::namesBut(int row) const
{
    QStringList names;
    for (int i = 0; i < rowCount(); ++i) {
        if (i != row)
            names.append(m_groups[i].name);
    }
    return names;
}

bool FileFormatsModel::removeRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || count < 1 || row + count > rowCount())
        return false;
    beginRemoveRows({}, row, row + count - 1);
    m_groups.remove(row, count);
    endRemoveRows();
    return true;
}

int FileFormatsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_groups.size());
}

int FileFormatsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant FileFormatsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const FileFormatGroup &group = m_groups[index.row()];
    const QString &text = index.column() == Name ? group.name : group.mask;
    if (role == Qt::DisplayRole)
        return text;
    if (role == Qt::ToolTipRole)
        return plainToolTip(text);
    if (role == Qt::CheckStateRole && index.column() == Name)
        return int(group.on ? Qt::Checked : Qt::Unchecked);
    return {};
}

QVariant FileFormatsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Name ? Velmora::tr("Name") : Velmora::tr("Mask");
}

Qt::ItemFlags FileFormatsModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags shown = QAbstractTableModel::flags(index);
    return index.column() == Name ? shown | Qt::ItemIsUserCheckable : shown;
}

bool FileFormatsModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || index.column() != Name || role != Qt::CheckStateRole)
        return false;
    m_groups[index.row()].on = value.toInt() == Qt::Checked;
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

} // namespace velmora
