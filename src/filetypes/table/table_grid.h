#pragma once

#include <QTableView>

namespace velmora {

class TableModel;

/// One side of a table comparison as a read-only grid, or a few words where there is nothing to show.
class TableGrid final : public QTableView {
    Q_OBJECT
public:
    explicit TableGrid(TableModel &rows, QWidget *parent = nullptr);

    /// What is said in place of rows.
    void setNotice(const QString &notice);

    /// How wide a column would be for its name and the first rows.
    [[nodiscard]] int wantedWidth(int column) const;

Q_SIGNALS:
    void contextMenuWanted(QPoint globalPosition);

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void fitRows();

    QString m_notice;
};

} // namespace velmora
