#pragma once

#include <QTableView>

namespace velmora {

class FrozenColumns;
class TableModel;

/// One side of a table comparison as a read-only grid, or a few words where there is nothing to show.
class TableGrid final : public QTableView {
    Q_OBJECT
public:
    TableGrid(TableModel &rows, const QString &objectName, QWidget *parent = nullptr);

    /// What is said in place of rows.
    void setNotice(const QString &notice);

    /// How wide a column would be for its name and what is in sight of it.
    [[nodiscard]] int wantedWidth(int column) const;
    /// Lets the first columns stay where they are when the others scroll.
    void freeze(int columns);

    /// A cell of the columns that scroll comes to stand beside those that stay.
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;

Q_SIGNALS:
    void contextMenuWanted(QPoint globalPosition);
    void columnMenuWanted(int column, QPoint globalPosition);

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void updateGeometries() override;

private:
    void fitRows();

    QString m_notice;
    FrozenColumns *m_frozen = nullptr;
    int m_frozenCount = 0;
};

} // namespace velmora
