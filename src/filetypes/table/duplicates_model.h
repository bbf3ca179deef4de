#pragma once

#include "filetypes/table/table_document.h"

#include <QAbstractTableModel>

#include <memory>

namespace velmora {

/// The duplicate keys of a comparison, a line for each.
class DuplicatesModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Key, OfSide, Count, Rows, ColumnsCount };

    explicit DuplicatesModel(std::shared_ptr<const TableDocument> document, QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] QString keyText(const DuplicateKey &key) const;

    std::shared_ptr<const TableDocument> m_document;
};

} // namespace velmora
