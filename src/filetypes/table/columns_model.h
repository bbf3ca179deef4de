#pragma once

#include "filetypes/table/table_document.h"

#include <QAbstractTableModel>

#include <memory>
#include <vector>

namespace velmora {

/// The columns of a result, a line for each, with what is chosen for them, to be changed.
class ColumnsModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Name, LeftPlace, RightPlace, Key, Compared, Shown, Frozen, Rule, Changed, ColumnsCount };

    /// `choices` may have ones for columns that are not there; they stay.
    ColumnsModel(std::shared_ptr<const TableDocument> document, QList<ColumnChoice> choices,
                 const QList<ColumnRef> &keys, QObject *parent = nullptr);

    [[nodiscard]] QList<ColumnRef> keys() const;
    [[nodiscard]] QList<ColumnChoice> choices() const;

    [[nodiscard]] const ColumnRule &rule(int line) const { return m_lines[std::size_t(line)].choice.rule; }
    void setRule(int line, const ColumnRule &rule);
    /// Makes nothing chosen for any column.
    void clear();

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    struct Line {
        ColumnChoice choice;
        bool isKey = false;
    };

    [[nodiscard]] QString text(const QModelIndex &index) const;
    [[nodiscard]] bool isChecked(const QModelIndex &index) const;
    [[nodiscard]] bool canBeKey(int line) const;

    std::shared_ptr<const TableDocument> m_document;
    QList<ColumnChoice> m_choices; ///< as they were
    std::vector<Line> m_lines;     ///< by column
};

} // namespace velmora
