#include "settings/dialogs/folder_formats_model.h"

#include "session/translate.h"

namespace velmora {

void FileFormatsModel::setGroups(const QList<FileFormatGroup> &groups)
{
    beginResetModel();
    m_groups = groups;
    endResetModel();
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
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return index.column() == Name ? group.name : group.mask;
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
