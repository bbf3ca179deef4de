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

    /// Precondition: there is such a row.
    void setGroup(int row, const FileFormatGroup &group);
    void append(const QList<FileFormatGroup> &groups);
    /// Those of the default formats whose names are not in the list.
    [[nodiscard]] QList<FileFormatGroup> missingDefaults() const;
    /// The names but that of row `row`; all of them for -1.
    [[nodiscard]] QStringList namesBut(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool removeRows(int row, int count, const QModelIndex &parent = {}) override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

private:
    QList<FileFormatGroup> m_groups;
};

} // namespace velmora
