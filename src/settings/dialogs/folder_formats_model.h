#pragma once

#include "settings/options/folder_session_options.h"

#include <QAbstractTableModel>

namespace velmora {

/// The file formats of a folder comparison, each with its name, its masks and a check that switches it on.
class FileFormatsModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Name, Mask, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void setGroups(const QList<FileFormatGroup> &groups);
    [[nodiscard]] const QList<FileFormatGroup> &groups() const { return m_groups; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

private:
    QList<FileFormatGroup> m_groups;
};

} // namespace velmora
