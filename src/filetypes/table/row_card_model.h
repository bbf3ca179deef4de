#pragma once

#include "core/sides.h"
#include "filetypes/table/table_scene.h"
#include "text/engine/line_diff_engine.h"

#include <QAbstractTableModel>

#include <unordered_map>
#include <vector>

namespace velmora {

/// The columns of one row of a table comparison, a line for each: its name and both values.
class RowCardModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum class Order { OfTable, DifferentFirst, DifferentOnly };
    enum Column { Name, Left, Right };
    enum Role {
        ColourRole = Qt::UserRole, ///< a TableColour
        ChangesRole,               ///< a QList<CharRange> of the text: the characters that the other value has not
    };

    explicit RowCardModel(TableScene &scene, QObject *parent = nullptr);

    /// -1 for no row.
    void showRow(qint32 row);
    [[nodiscard]] qint32 row() const noexcept { return m_row; }
    void setOrder(Order order);
    [[nodiscard]] Order order() const noexcept { return m_order; }
    /// How many columns differ.
    [[nodiscard]] qsizetype differing() const;
    /// A line as name and both whole values with tabs between.
    [[nodiscard]] QString line(int place) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void rebuild();
    [[nodiscard]] const TableScene::Cell &cell(qint32 column) const;
    [[nodiscard]] bool differs(qint32 column) const;
    [[nodiscard]] QString text(qint32 column, Side side) const;
    [[nodiscard]] const QList<CharRange> &changes(qint32 column, Side side) const;

    TableScene &m_scene;
    qint32 m_row = -1;
    Order m_order = Order::OfTable;
    std::vector<qint32> m_columns;                                         ///< of the result, line by line
    mutable std::unordered_map<qint32, Sides<QList<CharRange>>> m_changes; ///< by column, of those that were in sight
};

} // namespace velmora
