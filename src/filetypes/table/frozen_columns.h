#pragma once

#include <QWidget>

class QHeaderView;
class QPainter;
class QTableView;

namespace velmora {

/// The first columns of a grid, which stay while the others scroll: lies over the beginning of the grid, paints its
/// rows there, and hands on to it what the mouse does. Costs nothing for rows that are out of sight.
class FrozenColumns final : public QWidget {
    Q_OBJECT
public:
    /// `grid` has its model, delegate and selection already, and owns this.
    explicit FrozenColumns(QTableView &grid);

    /// Lies over the first `count` columns, hidden for none. To be called again when the grid has moved or changed.
    void cover(int count);

Q_SIGNALS:
    void columnMenuWanted(int column, QPoint globalPosition);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void connectHeader();
    void paintRow(QPainter &painter, int row) const;
    /// What is here as a point in the grid's viewport, where the same cell may be out of sight.
    [[nodiscard]] QPointF inGrid(QPointF here) const;

    QTableView &m_grid;
    QHeaderView *m_header;
    int m_count = 0;
};

} // namespace velmora
