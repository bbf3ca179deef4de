#pragma once

#include <QTableView>

namespace velmora {

/// The columns of a grid that stay while the others scroll: a view of the same rows that lies over the beginning of the
/// grid. It shows the grid's first columns, from the first on as far as it is wide, with the grid's own selection.
class FrozenColumns final : public QTableView {
    Q_OBJECT
public:
    /// `grid` has its model, delegate and selection already, and owns this.
    explicit FrozenColumns(QTableView &grid);

    /// Lies over the first `count` columns, hidden for none. To be called again when the grid has moved or changed.
    void cover(int count);

    /// Nothing: what scrolls is the grid.
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    QTableView &m_grid;
};

} // namespace velmora
