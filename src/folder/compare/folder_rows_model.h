#pragma once

#include "folder/engine/folder_rows.h"

#include <QAbstractTableModel>

namespace velmora {

class FolderComparison;

/// What a side shows of its entries.
enum class FolderColumn { LeftName, LeftSize, LeftTime, Sign, RightName, RightSize, RightTime };

inline constexpr int folderColumnCount = int(FolderColumn::RightTime) + 1;

/// The rows of a folder comparison as views see them: one flat list, in which open folders are followed by what is in
/// them. The three panes show different columns of it.
///
/// Follows the comparison, which outlives it. Nothing is kept for a row but its node, and texts are made when they are
/// asked for. What changes without moving other rows is told as rows that come or go; anything else as a reset.
class FolderRowsModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit FolderRowsModel(FolderComparison &comparison, QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    [[nodiscard]] const FolderTree &tree() const;
    [[nodiscard]] const FolderRow &row(int row) const { return m_rows[std::size_t(row)]; }
    /// The node of a row, -1 for no row.
    [[nodiscard]] qint32 nodeAt(int row) const;
    /// The row of a node, or of the nearest folder around it that has one; -1 when there is none.
    [[nodiscard]] int rowOf(qint32 node) const;

    [[nodiscard]] RowsView view() const noexcept { return m_view; }
    void setView(RowsView view);

    void setExpanded(int row, bool expanded);
    void setAllExpanded(bool expanded);
    /// Opens all folders around a node.
    void reveal(qint32 node);

    /// The next or previous node that differs and is no folder that leads to one, from `node` on, also in closed
    /// folders; -1 when there is none. A folder on one side counts as one difference.
    [[nodiscard]] qint32 nextDifference(qint32 node, bool forward) const;

    /// Shows the rows anew in another theme or locale.
    void refresh();

private:
    /// Works out the rows anew; `places` as `FolderComparison::treeChanged` has them, null when no number changed.
    void update(const std::vector<qint32> *places = nullptr);
    void rebuild();
    [[nodiscard]] QString text(qint32 node, FolderColumn column) const;
    [[nodiscard]] QString hint(qint32 node, FolderColumn column) const;

    FolderComparison &m_comparison;
    std::vector<FolderRow> m_rows;
    RowsView m_view = RowsView::All;
};

/// The side whose column it is. Not for `Sign`.
[[nodiscard]] constexpr Side sideOf(FolderColumn column)
{
    return column < FolderColumn::Sign ? Side::Left : Side::Right;
}

/// What one side of an entry is called: its own name there, which an alignment may pair with another.
[[nodiscard]] QString sideName(const FolderDiffItem &item, Side side);

/// The sign of a row between the two sides, and what it means in words.
[[nodiscard]] QString stateSign(const FolderTree &tree, qint32 node);
[[nodiscard]] QString stateWords(const FolderTree &tree, qint32 node);

} // namespace velmora
